#include "tools/ToolDialog.h"

#include "platform/Stdlib.h"
#include "tools/DialogKeys.h"
#include "tools/LatestJob.h"
#include "tools/RecipeFile.h"
#include "tools/ResultTable.h"
#include "tools/ToolButtonRow.h"

#include <QEvent>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHash>
#include <QScreen>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace ormalux {

namespace {

constexpr std::chrono::milliseconds moment(80); ///< what the operator does not feel as waiting
/// How far beside a small result a click still means it, in screen pixels.
constexpr double clickReach = 4;

/// Where the operator left each dialog, for as long as the program runs.
QHash<QString, QPoint>& places()
{
    static QHash<QString, QPoint> remembered;
    return remembered;
}

} // namespace

ToolDialog::ToolDialog(ToolHost& host, const char* layer, QWidget* parent)
    : QDialog(parent), m_host(host), m_layer(layer), m_background(new LatestJob(this))
{
    setModal(false);
    const auto again = [this] {
        if (isVisible())
            refresh();
    };
    connect(&host, &ToolHost::pictureChanged, this, again);
    connect(&host, &ToolHost::areaChanged, this, again);
}

ToolDialog::~ToolDialog()
{
    if (isVisible())
        leave();
}

void ToolDialog::attach(const char* className, ToolButtonRow* buttons, ResultTable* results)
{
    setObjectName(QLatin1String(className));
    m_buttons = buttons;
    m_results = results;
    new DialogKeys(*this);
    connect(buttons, &ToolButtonRow::scriptAsked, this,
            [this] { CStdlib::CopyToClipboard(this, read().script(sceneOf(m_host))); });
    connect(buttons, &ToolButtonRow::programAsked, this,
            [this] { CStdlib::CopyToClipboard(this, read().program(sceneOf(m_host))); });
    connect(buttons, &ToolButtonRow::recipeAsked, this, &ToolDialog::askForRecipe);
    connect(buttons, &ToolButtonRow::applyAsked, this, [this] {
        if (apply())
            close();
    });
    connect(buttons, &ToolButtonRow::closeAsked, this, &QWidget::close);
    connect(buttons, &ToolButtonRow::cancelAsked, m_background, &LatestJob::cancel);
    connect(m_background, &LatestJob::runningChanged, buttons, &ToolButtonRow::setBusy);
    if (!results)
        return;
    connect(results, &ResultTable::resultSelected, this, &ToolDialog::chooseResult);
    connect(&m_host, &ToolHost::pixelClicked, this, [this](int x, int y) {
        const int reach = int(std::ceil(clickReach / m_host.zoom()));
        if (isVisible() && m_results->selectAt(x, y, reach) >= 0)
            resultChosen(m_results->selectedResult());
    });
}

bool ToolDialog::runSoon(std::function<std::function<void()>()> job)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_background->start(std::move(job), moment);
    QGuiApplication::restoreOverrideCursor();
    return !m_background->isRunning();
}

void ToolDialog::setMessage(const QString& message)
{
    m_buttons->setMessage(message);
}

void ToolDialog::setMessageOfGrayForm(const QString& message)
{
    QStringList lines{grayFormNote(), message};
    lines.removeAll(QString());
    setMessage(lines.join(QLatin1Char('\n')));
}

QString ToolDialog::grayFormNote() const
{
    return m_host.isColor() ? tr("컬러 영상은 회색조 (R + G + B) / 3 으로 처리합니다.") : QString();
}

void ToolDialog::chooseResult(int index)
{
    m_host.reveal(m_results->results().rows[std::size_t(index)].box);
    resultChosen(index);
}

void ToolDialog::askForRecipe()
{
    auto* const dialog = new QFileDialog(this, tr("Add to Recipe"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(QStringLiteral("recipeFile"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setOption(QFileDialog::DontConfirmOverwrite); // the steps are appended
    dialog->setDefaultSuffix(QStringLiteral("json"));
    dialog->setNameFilter(tr("Recipe (*.json)"));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
        const QString wrong = appendToRecipe(path, read().recipeSteps(sceneOf(m_host)));
        setMessage(wrong.isEmpty() ? tr("레시피에 추가했습니다: %1").arg(path) : wrong);
    });
    dialog->open();
}

/// At the window's right, beside it where the screen has the room: the picture stays seen. Each further
/// dialog leaves the titles of those below it seen.
QPoint ToolDialog::firstPlace() const
{
    const QWidget* const view = parentWidget();
    if (!view || !screen())
        return pos();
    const QRect room = screen()->availableGeometry();
    const QRect window = view->window()->frameGeometry();
    const int title = style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const QSize own = size() + QSize(2, title);
    int others = 0;
    for (const ToolDialog* const other : view->findChildren<ToolDialog*>(Qt::FindDirectChildrenOnly))
        others += other != this && other->isVisible() ? 1 : 0;
    const bool beside = window.right() + own.width() <= room.right();
    const int left = beside ? window.right() + 1 : std::min(window.right(), room.right()) - own.width();
    const int top = view->mapToGlobal(QPoint(0, title)).y(); // the frame may lie above it
    const QPoint place = QPoint(left, top) + others * QPoint(-title, title);
    return {std::max(room.left(), place.x()),
            std::clamp(place.y(), room.top(), std::max(room.top(), room.bottom() - own.height()))};
}

void ToolDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!m_placed)
        move(places().value(objectName(), firstPlace()));
    m_placed = true;
    setMessage({});
    refresh();
}

void ToolDialog::hideEvent(QHideEvent* event)
{
    places()[objectName()] = pos();
    leave();
    QDialog::hideEvent(event);
}

void ToolDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange && m_buttons) {
        retranslate();
        if (isVisible())
            refresh();
    }
    QDialog::changeEvent(event);
}

void ToolDialog::leave()
{
    m_background->cancel();
    m_host.endPreview(this);
    if (m_layer)
        m_host.clearLayer(m_layer);
    m_host.repaint();
}

} // namespace ormalux
