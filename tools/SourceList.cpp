#include "tools/SourceList.h"

#include "match/ReadingOrder.h"
#include "tools/PatternEditDlg.h"
#include "tools/SourcePreview.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QTableWidget>

#include <algorithm>

namespace ormalux {

namespace {

struct KindTexts
{
    const char* add;
    const char* remove;
    const char* list;
    const char* title;
    const char* filter; ///< with the pattern that the toolkit matches behind the text that is shown
};
constexpr KindTexts texts[] = {
    {QT_TRANSLATE_NOOP("ormalux::SourceList", "패턴 Source 추가"),
     QT_TRANSLATE_NOOP("ormalux::SourceList", "패턴 Source 제거"),
     QT_TRANSLATE_NOOP("ormalux::SourceList", "Pattern Source"),
     QT_TRANSLATE_NOOP("ormalux::SourceList", "Pattern Match Source"),
     QT_TRANSLATE_NOOP("ormalux::SourceList", "Pattern Match Source Files (*.mcs) (*.mcs)")},
    {QT_TRANSLATE_NOOP("ormalux::SourceList", "Source Char 추가"),
     QT_TRANSLATE_NOOP("ormalux::SourceList", "Source Char 제거"),
     QT_TRANSLATE_NOOP("ormalux::SourceList", "OCR Char Source"),
     QT_TRANSLATE_NOOP("ormalux::SourceList", "OCR Match Source"),
     QT_TRANSLATE_NOOP("ormalux::SourceList", "Ocr Match Source Files (*.ocs) (*.ocs)")}};

const KindTexts& textsOf(SourceKind kind)
{
    return texts[kind == SourceKind::Character];
}

constexpr QSize iconRoom(32, 22);
constexpr int rowsSeen = 4; ///< without scrolling

QImage pictureOf(const _stMatchSource& source)
{
    return source.data && source.width > 0 && source.height > 0
               ? QImage(source.data, source.width, source.height, source.width, QImage::Format_Grayscale8)
               : QImage();
}

/// The whole template, smaller where it must be, and not tinted in a selected row.
QIcon iconOf(const QImage& picture, qreal ratio)
{
    const QSize room = iconRoom * ratio;
    const bool shrunk = picture.width() > room.width() || picture.height() > room.height();
    QPixmap pixmap =
        shrunk ? QPixmap::fromImage(picture.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation))
               : enlarged(picture, iconRoom, ratio);
    pixmap.setDevicePixelRatio(1);
    QPainter painter(&pixmap);
    painter.setPen(Qt::gray);
    painter.drawRect(pixmap.rect().adjusted(0, 0, -1, -1)); // white ones end somewhere
    painter.end();
    pixmap.setDevicePixelRatio(ratio);
    QIcon icon(pixmap);
    icon.addPixmap(pixmap, QIcon::Selected);
    return icon;
}

QString keyText(const _stMatchSource& source, SourceKind kind)
{
    return kind == SourceKind::Character ? QString::fromStdString(characterText(source.key))
                                         : QString::number(source.key);
}

} // namespace

QString refusedMessage(const std::vector<std::string>& files)
{
    QStringList lines;
    for (const std::string& file : files)
        lines << QCoreApplication::translate("ormalux::SourceList",
                                             "읽을 수 없거나 Match 소스가 아닙니다: %1")
                     .arg(QString::fromStdString(file));
    return lines.join(QLatin1Char('\n'));
}

SourceList::SourceList(QWidget* parent) : QWidget(parent), m_list(new QTableWidget(0, 6, this))
{
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(m_list, 0, 0, 1, 6);
    m_list->setObjectName(QStringLiteral("sources"));
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setAlternatingRowColors(true);
    m_list->setTabKeyNavigation(false);
    m_list->setIconSize(iconRoom);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setWordWrap(false);
    m_list->verticalHeader()->hide();
    m_list->verticalHeader()->setDefaultSectionSize(iconRoom.height() + 4);
    m_list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_list->horizontalHeader()->setHighlightSections(false);
    m_list->setMinimumHeight((rowsSeen + 1) * m_list->verticalHeader()->defaultSectionSize() + 4);
    m_list->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_list->horizontalHeader()->setSectionResizeMode(pathColumn, QHeaderView::Stretch);
    m_list->installEventFilter(this);
    m_add = addButton("addSource", &SourceList::askForFiles);
    m_remove = addButton("removeSource", &SourceList::removeSelected);
    m_edit = addButton("editPattern", &SourceList::editSelected);
    grid->setColumnStretch(3, 1);
    m_up = addButton("sourceUp", &SourceList::moveUp);
    m_down = addButton("sourceDown", &SourceList::moveDown);
    int column = 0;
    for (QPushButton* const button : {m_add, m_remove, m_edit, m_up, m_down}) {
        grid->addWidget(button, 1, column);
        column += button == m_edit ? 2 : 1;
    }
    connect(m_list, &QTableWidget::itemSelectionChanged, this, &SourceList::enableButtons);
    connect(m_list, &QTableWidget::cellDoubleClicked, this, &SourceList::editSelected);
}

QPushButton* SourceList::addButton(const char* name, void (SourceList::*act)())
{
    auto* const button = new QPushButton(this);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, act);
    return button;
}

void SourceList::setKind(SourceKind kind)
{
    m_kind = kind;
    retranslate();
    enableButtons();
}

void SourceList::retranslate()
{
    const KindTexts& named = textsOf(m_kind);
    m_add->setText(tr(named.add));
    m_remove->setText(tr(named.remove));
    m_edit->setText(tr("패턴 편집"));
    m_up->setText(tr("위로"));
    m_down->setText(tr("아래로"));
    m_list->setAccessibleName(tr(named.list));
    m_list->setHorizontalHeaderLabels(
        {tr("No."), tr("Key"), tr("Width"), tr("Height"), tr("Threshold"), tr("File")});
}

std::vector<std::string> SourceList::paths() const
{
    std::vector<std::string> paths;
    for (int row = 0; row < m_list->rowCount(); ++row)
        paths.push_back(m_list->item(row, pathColumn)->text().toStdString());
    return paths;
}

void SourceList::add(const QStringList& files)
{
    std::vector<std::string> wrong;
    for (const QString& file : files) {
        const std::string path = file.toStdString();
        if (!loadSource(path)) {
            wrong.push_back(path);
            continue;
        }
        const int row = m_list->rowCount();
        m_list->insertRow(row);
        showRow(row, path);
        m_list->selectRow(row);
    }
    enableButtons();
    if (wrong.size() < std::size_t(files.size()))
        Q_EMIT changed();
    if (!wrong.empty())
        Q_EMIT refused(refusedMessage(wrong));
}

void SourceList::showRow(int row, const std::string& path)
{
    const auto source = loadSource(path);
    const QString missing = QStringLiteral("-");
    const QStringList cells = {QString::number(row + 1),
                               source ? keyText(*source, m_kind) : missing,
                               source ? QString::number(source->width) : missing,
                               source ? QString::number(source->height) : missing,
                               source ? QString::number(source->threshold) : missing,
                               QString::fromStdString(path)};
    const QImage picture = source ? pictureOf(*source) : QImage();
    for (int column = 0; column < int(cells.size()); ++column) {
        auto* const item = new QTableWidgetItem(cells[column]);
        if (column != pathColumn)
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        item->setToolTip(source ? tr("%1\nBlack %2, White %3")
                                      .arg(cells[pathColumn])
                                      .arg(source->black_count)
                                      .arg(source->white_count)
                                : refusedMessage({path}));
        m_list->setItem(row, column, item);
    }
    if (!picture.isNull())
        m_list->item(row, 0)->setIcon(iconOf(picture, devicePixelRatioF()));
}

void SourceList::reload()
{
    const std::vector<std::string> files = paths();
    for (std::size_t row = 0; row < files.size(); ++row)
        showRow(int(row), files[row]);
}

void SourceList::askForFiles()
{
    const KindTexts& named = textsOf(m_kind);
    auto* const dialog = new QFileDialog(this, tr(named.title));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(QStringLiteral("openSource"));
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setNameFilter(tr(named.filter));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& file) { add({file}); });
    connect(dialog, &QFileDialog::filesSelected, this, [this](const QStringList& files) {
        if (files.size() != 1) // one alone has been told by fileSelected
            add(files);
    });
    dialog->open();
}

void SourceList::removeSelected()
{
    const QModelIndexList selected = m_list->selectionModel()->selectedRows();
    std::vector<int> rows;
    for (const QModelIndex& index : selected)
        rows.push_back(index.row());
    if (rows.empty())
        return;
    std::sort(rows.rbegin(), rows.rend());
    for (const int row : rows)
        m_list->removeRow(row);
    reload(); // the numbers
    if (m_list->rowCount() > 0)
        m_list->selectRow(std::min(rows.back(), m_list->rowCount() - 1));
    enableButtons();
    Q_EMIT changed();
}

void SourceList::moveSelected(int step)
{
    const int row = m_list->currentRow();
    const int target = row + step;
    if (row < 0 || target < 0 || target >= m_list->rowCount())
        return;
    const std::vector<std::string> files = paths();
    showRow(row, files[std::size_t(target)]);
    showRow(target, files[std::size_t(row)]);
    m_list->selectRow(target);
    enableButtons();
    Q_EMIT changed();
}

void SourceList::editSelected()
{
    const int row = m_list->currentRow();
    if (row < 0)
        return;
    auto* const editor = new CPatternEditDlg(m_list->item(row, pathColumn)->text(), window());
    editor->setAttribute(Qt::WA_DeleteOnClose);
    connect(editor, &CPatternEditDlg::saved, this, [this] {
        reload();
        Q_EMIT changed();
    });
    editor->show();
}

void SourceList::enableButtons()
{
    const QModelIndexList selected = m_list->selectionModel()->selectedRows();
    const int row = selected.size() == 1 ? selected.front().row() : -1;
    m_remove->setEnabled(!selected.isEmpty());
    m_edit->setEnabled(row >= 0);
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row >= 0 && row + 1 < m_list->rowCount());
}

/// Delete removes, Alt with an arrow moves.
bool SourceList::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Delete) {
            removeSelected();
            return true;
        }
        if (key->modifiers().testFlag(Qt::AltModifier) &&
            (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down)) {
            moveSelected(key->key() == Qt::Key_Up ? -1 : 1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace ormalux
