#include "tools/ResultTable.h"

#include "platform/File.h"
#include "tools/ResultModel.h"

#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QScopedValueRollback>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <tuple>
#include <utility>
#include <vector>

namespace ormalux {

ResultTable::ResultTable(QWidget* parent) : QTableView(parent), m_model(new ResultModel(this))
{
    setObjectName(QStringLiteral("results"));
    setModel(m_model);
    setSelectionBehavior(SelectRows);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false); // Tab leaves the list
    setContextMenuPolicy(Qt::CustomContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    connect(m_model, &QAbstractItemModel::layoutChanged, this, &ResultTable::fitColumns);
    connect(this, &QWidget::customContextMenuRequested, this, &ResultTable::openMenu);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const int index = selectedResult();
        if (!m_quiet && index >= 0)
            Q_EMIT resultSelected(index);
    });
}

void ResultTable::setResults(ResultList results, const QStringList& titles)
{
    setSortingEnabled(false);
    m_model->setResults(std::move(results), titles);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder); // as given until a header is clicked
    setSortingEnabled(true);
    fitColumns();
}

/// As wide as what they show; what is left of the width is shared, so that numbers stay near each other.
void ResultTable::fitColumns()
{
    const int columns = m_model->columnCount();
    std::vector<int> widths;
    for (int i = 0; i < columns; ++i)
        widths.push_back(std::max(sizeHintForColumn(i), horizontalHeader()->sectionSizeHint(i)));
    const int spare = std::max(0, viewport()->width() - std::accumulate(widths.begin(), widths.end(), 0));
    for (int i = 0; i < columns; ++i)
        setColumnWidth(i, widths[std::size_t(i)] + spare * (i + 1) / columns - spare * i / columns);
}

void ResultTable::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    fitColumns();
}

void ResultTable::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitColumns();
}

const ResultList& ResultTable::results() const
{
    return m_model->results();
}

int ResultTable::selectedResult() const
{
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : m_model->resultAt(rows.front().row());
}

void ResultTable::selectResult(int index)
{
    const QScopedValueRollback quiet(m_quiet, true);
    const int row = m_model->rowOf(index);
    if (row < 0)
        return clearSelection();
    selectRow(row);
    scrollTo(m_model->index(row, 0));
}

int ResultTable::selectAt(int x, int y, int reach)
{
    int best = -1;
    // Distance to the box, its size, distance to twice its middle.
    std::tuple<long long, long long, long long> least{reach, std::numeric_limits<long long>::max(), 0};
    const auto& rows = results().rows;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const CRect& box = rows[i].box;
        const long long besideX = std::max({box.left - x, x - box.right, 0});
        const long long besideY = std::max({box.top - y, y - box.bottom, 0});
        const long long offX = std::abs(2ll * x - box.left - box.right);
        const long long offY = std::abs(2ll * y - box.top - box.bottom);
        const std::tuple here{std::max(besideX, besideY),
                              (1ll + box.right - box.left) * (1ll + box.bottom - box.top), offX + offY};
        if (here < least) {
            least = here;
            best = int(i);
        }
    }
    if (best >= 0)
        selectResult(best);
    return best;
}

QString ResultTable::copyText() const
{
    QStringList cells;
    const int columns = m_model->columnCount();
    for (int column = 0; column < columns; ++column)
        cells << m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    QString text = cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    const bool all = selectedResult() < 0;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (!all && !selectionModel()->isRowSelected(row, {}))
            continue;
        cells.clear();
        for (int column = 0; column < columns; ++column)
            cells << m_model->data(m_model->index(row, column), Qt::DisplayRole).toString().simplified();
        text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return text;
}

void ResultTable::copy()
{
    QGuiApplication::clipboard()->setText(copyText());
}

bool ResultTable::exportCsv(const QString& path) const
{
    ResultList sorted;
    sorted.columns = results().columns;
    for (int row = 0; row < m_model->rowCount(); ++row)
        sorted.rows.push_back(results().rows[std::size_t(m_model->resultAt(row))]);
    const std::string text = resultCsv(sorted);
    return writeFile(path.toUtf8().constData(),
                     {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

void ResultTable::askAndExport()
{
    auto* const dialog = new QFileDialog(this, tr("CSV로 내보내기"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(QStringLiteral("exportFile"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("csv"));
    dialog->setNameFilter(QStringLiteral("CSV (*.csv)"));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
        if (exportCsv(path))
            return;
        auto* const box =
            new QMessageBox(QMessageBox::Warning, tr("CSV로 내보내기"),
                            tr("파일을 저장할 수 없습니다: %1").arg(path), QMessageBox::Ok, this);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
    });
    dialog->open();
}

void ResultTable::openMenu(const QPoint& at)
{
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* const copying = menu->addAction(tr("제목과 함께 복사"), this, &ResultTable::copy);
    copying->setShortcut(QKeySequence::Copy);
    copying->setObjectName(QStringLiteral("copyResults"));
    menu->addAction(tr("CSV로 내보내기 ..."), this, &ResultTable::askAndExport)
        ->setObjectName(QStringLiteral("exportResults"));
    for (QAction* const action : menu->actions())
        action->setEnabled(m_model->rowCount() > 0);
    menu->addSeparator();
    for (QAction* const action : actions()) {
        action->setEnabled(selectedResult() >= 0);
        menu->addAction(action);
    }
    menu->popup(viewport()->mapToGlobal(at));
}

void ResultTable::keyPressEvent(QKeyEvent* event)
{
    if (event == QKeySequence::Copy) {
        copy();
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

} // namespace ormalux
