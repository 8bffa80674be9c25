#include "view/Toolbar.h"

#include "view/IconPixmap.h"
#include "view/TipWindow.h"

#include <QMenu>

#include <algorithm>

namespace ormalux {

namespace {

// Even numbers: they fall on whole pixels of a screen at 150 % too.
constexpr int margin = 4;
constexpr int wideGap = 10;
constexpr int narrowGap = 6;
constexpr int overflowWidth = 20;
constexpr int widestTitle = 180; ///< of a menu within the menu of the hidden buttons

QString keysOf(const ToolbarCommand& command)
{
    return QString::fromLatin1(command.shortcut);
}

} // namespace

Toolbar::Toolbar(QWidget& window, std::function<void(int)> send)
    : m_window(window), m_send(std::move(send)), m_tip(new CTipWnd(&window))
{
    for (const ToolbarCommand& command : toolbarCommands()) {
        auto* const button = new CDrawButton2(&window);
        button->Init(command.icon, command.caption, command.command);
        button->SetTipWindow(m_tip);
        if (command.kind == CommandKind::Menu)
            addMenu(*button);
        else
            QObject::connect(button, &CDrawButton2::clicked, &window,
                             [this, number = command.command] { m_send(number); });
        m_buttons.push_back(button);
    }
    m_overflow = new CDrawButton2(&window);
    m_overflow->Init("more", nullptr, 0);
    m_overflow->setObjectName(QStringLiteral("moreCommands"));
    m_overflow->SetTipWindow(m_tip);
    auto* const rest = new QMenu(m_overflow);
    rest->setObjectName(QStringLiteral("moreMenu"));
    QObject::connect(rest, &QMenu::aboutToShow, &window, [this] { fillOverflow(); });
    m_overflow->SetPopupMenu(rest);
    translate();
}

void Toolbar::addMenu(CDrawButton2& button)
{
    auto* const menu = new QMenu(&button);
    menu->setObjectName(QStringLiteral("menu_%1").arg(button.GetCommand()));
    for (const MenuCommand& item : menuCommands(button.GetCommand())) {
        QAction* const action = item.command ? menu->addAction(QString()) : menu->addSeparator();
        if (!item.command)
            continue;
        action->setObjectName(QStringLiteral("command_%1").arg(item.command));
        action->setData(item.command);
        QObject::connect(action, &QAction::triggered, &m_window,
                         [this, number = item.command] { m_send(number); });
        m_actions.push_back(action);
    }
    button.SetPopupMenu(menu);
}

void Toolbar::translate()
{
    auto action = m_actions.begin();
    for (std::size_t i = 0; i < m_buttons.size(); ++i) {
        const ToolbarCommand& command = toolbarCommands()[i];
        const auto given = m_tips.find(command.command);
        const QString text = given == m_tips.end() ? windowText(command.tip) : given->second;
        m_buttons[i]->SetTooltipText(text, keysOf(command));
        if (QMenu* const menu = m_buttons[i]->menu())
            menu->setTitle(m_window.fontMetrics().elidedText(
                QStringLiteral("%1  (%2)").arg(QString::fromLatin1(command.caption), text), Qt::ElideRight,
                widestTitle));
        for (const MenuCommand& item : menuCommands(command.command))
            if (item.command)
                (*action++)->setText(windowText(item.text));
    }
    m_overflow->SetTooltipText(windowText(QT_TRANSLATE_NOOP("CKestWnd", "나머지 버튼")));
}

void Toolbar::setTip(int command, const QString& tip)
{
    if (tip.isEmpty())
        m_tips.erase(command);
    else
        m_tips[command] = tip;
    translate();
}

int Toolbar::widthOf(int buttonWidth, int gap) const
{
    const auto commands = toolbarCommands();
    const auto groups = std::count_if(commands.begin(), commands.end(),
                                      [](const ToolbarCommand& command) { return command.startsGroup; });
    return 2 * margin + int(commands.size()) * buttonWidth + int(groups) * gap;
}

void Toolbar::layOut(QSize strip)
{
    const bool wide = widthOf(CDrawButton2::Size, wideGap) <= strip.width();
    const int width = wide ? CDrawButton2::Size : CDrawButton2::NarrowWidth;
    const int gap = wide ? wideGap : narrowGap;
    const bool all = widthOf(width, gap) <= strip.width();
    const int end = strip.width() - margin - (all ? 0 : overflowWidth);
    const int top = (strip.height() - CDrawButton2::Size) / 2;
    int x = margin;
    bool room = !strip.isEmpty();
    for (std::size_t i = 0; i < m_buttons.size(); ++i) {
        x += toolbarCommands()[i].startsGroup ? gap : 0;
        room = room && x + width <= end;
        m_buttons[i]->setVisible(room);
        m_buttons[i]->setGeometry(x, top, width, CDrawButton2::Size);
        x += width;
    }
    m_overflow->setVisible(!all && !strip.isEmpty());
    m_overflow->setGeometry(std::max(margin, end), top, overflowWidth, CDrawButton2::Size);
}

/// The commands without a visible button, in their order.
void Toolbar::fillOverflow()
{
    QMenu& menu = *m_overflow->menu();
    menu.clear();
    const QColor ink = m_window.palette().color(QPalette::Active, QPalette::WindowText);
    for (std::size_t i = 0; i < m_buttons.size(); ++i) {
        CDrawButton2* const button = m_buttons[i];
        const ToolbarCommand& command = toolbarCommands()[i];
        if (!button->isHidden())
            continue;
        if (command.startsGroup && !menu.isEmpty())
            menu.addSeparator();
        QAction* const action =
            button->menu() ? menu.addMenu(button->menu()) : menu.addAction(button->toolTip());
        action->setEnabled(button->isEnabled());
        action->setObjectName(QStringLiteral("more_%1").arg(command.command));
        if (button->menu())
            continue;
        action->setCheckable(button->isCheckable());
        action->setChecked(button->isChecked());
        if (command.shortcut) // shown, not taken: the window itself looks at its keys
            action->setText(action->text() + QLatin1Char('\t') + keysOf(command));
        action->setIcon(iconPixmap(QString::fromLatin1(command.icon), ink, 24, m_window.devicePixelRatioF()));
        QObject::connect(action, &QAction::triggered, &m_window,
                         [this, number = command.command] { m_send(number); });
    }
}

CDrawButton2* Toolbar::buttonOf(int command) const
{
    const auto found =
        std::find_if(m_buttons.begin(), m_buttons.end(),
                     [command](const CDrawButton2* button) { return button->GetCommand() == command; });
    return found == m_buttons.end() ? nullptr : *found;
}

void Toolbar::openMenu(int command)
{
    CDrawButton2* const button = buttonOf(command);
    if (!button || !button->menu())
        return;
    if (button->isHidden() && !m_overflow->isHidden())
        button->menu()->popup(m_overflow->mapToGlobal(QPoint(0, m_overflow->height())));
    else
        button->OpenMenu();
}

void Toolbar::enable(const std::function<bool(int)>& possible)
{
    for (CDrawButton2* const button : m_buttons)
        button->setEnabled(possible(button->GetCommand()));
    for (QAction* const action : m_actions)
        action->setEnabled(possible(action->data().toInt()));
}

void Toolbar::setChecked(int command, bool checked)
{
    if (CDrawButton2* const button = buttonOf(command)) {
        button->setCheckable(true);
        button->setChecked(checked);
    }
}

QWidget* Toolbar::firstButton() const
{
    return m_buttons.front();
}

} // namespace ormalux
