#include "app/MainWindow.h"

#include "app/ActionTable.h"
#include "app/StatusLine.h"
#include "view/ImageViewWnd.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QMenuBar>
#include <QStatusBar>

#include <cstring>

namespace ormalux::viewer {

namespace {

constexpr char choiceProperty[] = "choice";
constexpr int openCommand = 5500;
constexpr int saveCommand = 5501;
constexpr int turnLeftCommand = 6605;
constexpr int turnRightCommand = 6606;

bool isSubmenu(const ActionRow& row)
{
    return row.name && !row.text;
}

} // namespace

QMenu* MainWindow::menu(const char* name) const
{
    return findChild<QMenu*>(QStringLiteral("menu_") + QLatin1String(name));
}

void MainWindow::buildMenus()
{
    for (const MenuRow& row : Menus::rows()) {
        QMenu* const made = row.parent ? new QMenu(this) : menuBar()->addMenu(QString());
        made->setObjectName(QStringLiteral("menu_") + QLatin1String(row.name));
        if (!made->parent())
            made->setParent(this);
    }
    for (const ActionRow& row : Menus::actions()) {
        QMenu* const in = menu(row.menu);
        if (!row.name) {
            in->addSeparator();
            continue;
        }
        if (isSubmenu(row)) {
            in->addMenu(menu(row.name));
            continue;
        }
        QAction* const action = in->addAction(QString());
        action->setObjectName(QLatin1String(row.name));
        action->setCheckable(row.checkable);
        QList<QKeySequence> keys;
        for (const QString& key : QString::fromLatin1(row.shortcut).split(u';', Qt::SkipEmptyParts))
            keys << QKeySequence(key, QKeySequence::PortableText);
        action->setShortcuts(keys);
        connect(action, &QAction::triggered, this, [this, &row] { trigger(row); });
        m_actions.append({action, &row});
    }
    buildChoice("language", Menus::languages, int(std::size(Menus::languages)), &MainWindow::setLanguage);
    buildChoice("theme", Menus::themes().data(), int(Menus::themes().size()), &MainWindow::setTheme);
    connect(menu("recent"), &QMenu::aboutToShow, this, &MainWindow::fillRecent);
}

void MainWindow::buildChoice(const char* name, const char* const (*choices)[2], int count,
                             void (MainWindow::*choose)(const QString&))
{
    auto* const group = new QActionGroup(this);
    for (int i = 0; i < count; ++i) {
        const QString value = QLatin1String(choices[i][0]);
        QAction* const action = menu(name)->addAction(QString::fromUtf8(choices[i][1]));
        action->setObjectName(QLatin1String(name) + u'_' + value);
        action->setProperty(choiceProperty, QByteArray(choices[i][1]));
        action->setCheckable(true);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, choose, value] { (this->*choose)(value); });
    }
}

void MainWindow::trigger(const ActionRow& row)
{
    if (row.command)
        m_window->SendCommand(row.command);
    else if (row.run)
        (this->*row.run)();
    else
        close();
    updateActions();
}

/// Commands of the window that the viewer does better, from its buttons as from the menus.
bool MainWindow::runOwn(int command)
{
    switch (command) {
    case openCommand:
        return open(), true;
    case saveCommand:
        return save(), true;
    case turnLeftCommand:
        return turn(-1), true;
    case turnRightCommand:
        return turn(1), true;
    default:
        return false;
    }
}

void MainWindow::retranslate()
{
    m_window->SetCommandTip(openCommand, tr("그림 파일 열기"));
    m_window->SetCommandTip(saveCommand, tr("그림 파일 저장"));
    for (const MenuRow& row : Menus::rows())
        menu(row.name)->setTitle(Menus::tr(row.text));
    for (const auto& [action, row] : m_actions)
        action->setText(Menus::tr(row->text));
    for (QAction* const action : menu("theme")->actions())
        action->setText(Menus::tr(action->property(choiceProperty).toByteArray().constData()));
    m_status->retranslate();
    updateActions();
}

void MainWindow::updateActions()
{
    const bool picture = m_window->GetImagePtr() != nullptr;
    const bool region = picture && m_window->IsTrackerMode();
    const auto met = [&](Needs needs) {
        switch (needs) {
        case Needs::Picture:
            return picture;
        case Needs::Region:
            return region;
        case Needs::Pages:
            return m_files.size() > 1;
        case Needs::File:
            return m_index >= 0;
        default:
            return true;
        }
    };
    for (const auto& [action, row] : m_actions) {
        action->setEnabled(met(row->needs));
        if (row->command)
            m_window->EnableCommand(row->command, met(row->needs)); // its button is the menu's entry
    }
    const std::pair<const char*, bool> checks[] = {{"overlays", m_window->GetView()->IsOverlayVisible() == 1},
                                                   {"toolBar", m_preferences.toolBar},
                                                   {"statusBar", m_preferences.statusBar}};
    for (const auto& [name, checked] : checks)
        findChild<QAction*>(QLatin1String(name))->setChecked(checked);
    for (const QString& chosen : {"language_" + m_preferences.language, "theme_" + m_preferences.theme})
        findChild<QAction*>(chosen)->setChecked(true);
}

void MainWindow::fillRecent()
{
    QMenu* const recent = menu("recent");
    recent->clear();
    int number = 1;
    for (const QString& file : m_preferences.recent) {
        QString name = QDir::toNativeSeparators(file);
        QAction* const action = recent->addAction(
            QStringLiteral("&%1  %2").arg(number++ % 10).arg(name.replace(u'&', QLatin1String("&&"))));
        action->setObjectName(QStringLiteral("recentFile"));
        connect(action, &QAction::triggered, this, [this, file] { openFiles({file}); });
    }
    if (m_preferences.recent.isEmpty())
        recent->addAction(tr("없음"))->setEnabled(false);
    recent->addSeparator();
    QAction* const clear = recent->addAction(tr("목록 지우기(&C)"));
    clear->setObjectName(QStringLiteral("clearRecent"));
    clear->setEnabled(!m_preferences.recent.isEmpty());
    connect(clear, &QAction::triggered, this, [this] {
        m_preferences.recent.clear();
        m_preferences.write();
    });
}

} // namespace ormalux::viewer
