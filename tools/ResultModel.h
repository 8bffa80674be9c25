#pragma once

#include "tools/Tool.h"

#include <QAbstractTableModel>
#include <QStringList>

#include <vector>

namespace ormalux {

/// The rows of a result list in an order that a column chooses; costs nothing per cell, so that a hundred
/// thousand rows are shown at once.
class ResultModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /// In the order given; titles stand for the first columns' names.
    void setResults(ResultList results, const QStringList& titles);
    const ResultList& results() const { return m_results; }
    /// The result shown in a row, and the row that shows a result; -1 outside.
    int resultAt(int row) const;
    int rowOf(int result) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Stable; numbers as numbers. A column below 0 gives the order of the list.
    void sort(int column, Qt::SortOrder order) override;

private:
    ResultList m_results;
    QStringList m_titles;
    std::vector<int> m_order; ///< the result of each row
    std::vector<int> m_rows;  ///< the row of each result
};

} // namespace ormalux
