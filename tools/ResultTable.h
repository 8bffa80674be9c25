#pragma once

#include "tools/Tool.h"

#include <QTableView>

namespace ormalux {

class ResultModel;

/// A list of results, named `results`: sorts by a click on a header, copies the selected rows (all when none
/// is selected) with the headers by Ctrl+C or its menu, and exports all as CSV. Actions added to
/// the widget are for the selected result and stand in the menu too. Results are known by their
/// index in the list given, however they are sorted.
class ResultTable : public QTableView
{
    Q_OBJECT

public:
    explicit ResultTable(QWidget* parent = nullptr);

    /// Shows a list in its own order; the columns show these titles, or their names.
    void setResults(ResultList results, const QStringList& titles = {});
    const ResultList& results() const;
    /// Selects and shows a result; -1 selects none. Tells nobody.
    void selectResult(int index);
    /// Selects the result whose box holds the pixel, or comes nearest to it within reach pixels: the smallest
    /// box, of equal ones that with the nearest middle. Returns its index, -1 if there is none.
    int selectAt(int x, int y, int reach = 0);
    int selectedResult() const;
    /// Tab separated with the headers: the selected rows, or all.
    QString copyText() const;
    /// Writes all rows as they are sorted; false when the file cannot be written.
    bool exportCsv(const QString& path) const;

    void copy();
    /// Asks for a file and exports to it; says so when that fails.
    void askAndExport();

Q_SIGNALS:
    /// The operator selected a result.
    void resultSelected(int index);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fitColumns();
    void openMenu(const QPoint& at);

    ResultModel* m_model;
    bool m_quiet = false;
};

} // namespace ormalux
