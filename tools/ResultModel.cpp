#include "tools/ResultModel.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace ormalux {

namespace {

/// Texts are equal to numbers here; a column never mixes the two.
bool less(const ResultValue& a, const ResultValue& b)
{
    if (const auto* const left = std::get_if<std::string>(&a))
        if (const auto* const right = std::get_if<std::string>(&b))
            return *left < *right;
    const auto number = [](const ResultValue& value) {
        if (const auto* const whole = std::get_if<long long>(&value))
            return double(*whole);
        const auto* const real = std::get_if<double>(&value);
        return real ? *real : 0.0;
    };
    return number(a) < number(b);
}

} // namespace

void ResultModel::setResults(ResultList results, const QStringList& titles)
{
    beginResetModel();
    m_results = std::move(results);
    m_titles = titles;
    for (int i = int(m_titles.size()); i < columnCount(); ++i)
        m_titles << QString::fromStdString(m_results.columns[std::size_t(i)]);
    m_order.resize(m_results.rows.size());
    std::iota(m_order.begin(), m_order.end(), 0);
    m_rows = m_order;
    endResetModel();
}

int ResultModel::resultAt(int row) const
{
    return row >= 0 && row < rowCount() ? m_order[std::size_t(row)] : -1;
}

int ResultModel::rowOf(int result) const
{
    return result >= 0 && result < rowCount() ? m_rows[std::size_t(result)] : -1;
}

int ResultModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_order.size());
}

int ResultModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_results.columns.size());
}

QVariant ResultModel::data(const QModelIndex& index, int role) const
{
    const int result = resultAt(index.row());
    if (result < 0)
        return {};
    const ResultValue& value = m_results.rows[std::size_t(result)].values[std::size_t(index.column())];
    if (role == Qt::DisplayRole)
        return QString::fromStdString(resultText(value));
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignVCenter |
                   (std::holds_alternative<std::string>(value) ? Qt::AlignLeft : Qt::AlignRight));
    return {};
}

QVariant ResultModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section < m_titles.size())
        return m_titles[section];
    return {};
}

void ResultModel::sort(int column, Qt::SortOrder order)
{
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::vector<int> results;
    for (const QModelIndex& index : before)
        results.push_back(resultAt(index.row()));

    std::iota(m_order.begin(), m_order.end(), 0);
    const auto value = [&](int result) -> const ResultValue& {
        return m_results.rows[std::size_t(result)].values[std::size_t(column)];
    };
    if (column >= 0 && column < columnCount())
        std::stable_sort(m_order.begin(), m_order.end(), [&](int a, int b) {
            return order == Qt::AscendingOrder ? less(value(a), value(b)) : less(value(b), value(a));
        });
    for (std::size_t row = 0; row < m_order.size(); ++row)
        m_rows[std::size_t(m_order[row])] = int(row);

    for (qsizetype i = 0; i < before.size(); ++i)
        changePersistentIndex(before[i], index(rowOf(results[std::size_t(i)]), before[i].column()));
    Q_EMIT layoutChanged();
}

} // namespace ormalux
