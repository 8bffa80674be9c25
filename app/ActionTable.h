#pragma once

#include <QCoreApplication>

#include <span>

namespace ormalux::viewer {

class MainWindow;

/// When an action can be chosen.
enum class Needs
{
    Nothing,
    Picture,
    Region,
    Pages,
    File
};

/// A menu and the one that it stands in; null stands in the menu bar.
struct MenuRow
{
    const char* name;
    const char* parent;
    const char* text;
};

/// An entry of a menu: a command that is sent to the image window, or something that the viewer does itself.
struct ActionRow
{
    const char* menu;
    const char* name; ///< null for a separator
    const char* text;
    const char* shortcut;
    Needs needs;
    int command;
    void (MainWindow::*run)();
    bool checkable = false;
};

/// Everything that the menus hold.
struct Menus
{
    Q_DECLARE_TR_FUNCTIONS(Menus)

public:
    static std::span<const MenuRow> rows();
    static std::span<const ActionRow> actions();

    /// The languages and themes: what is remembered and the text. Languages are named in their own.
    static constexpr const char* languages[][2] = {{"ko", "한국어"}, {"en", "English"}};
    static std::span<const char* const[2]> themes();
};

} // namespace ormalux::viewer
