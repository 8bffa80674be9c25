#pragma once

#include <span>

class QString;

namespace ormalux {

/// What a command of the window does, for those who show it.
enum class CommandKind
{
    View,    ///< files, zoom and region: always possible
    Picture, ///< needs a picture
    Menu,    ///< opens a menu of commands that need a picture
    Tool     ///< opens a tool dialog
};

/// A button of the window's strip.
struct ToolbarCommand
{
    int command;
    CommandKind kind;
    const char* icon;     ///< the name of a drawing in res/icons; null shows the caption
    const char* caption;  ///< null with an icon
    const char* tip;      ///< translatable in the context CKestWnd
    const char* shortcut; ///< null for none
    bool startsGroup;     ///< a gap stands before it
};

/// An item of a button's menu; command 0 is a separator.
struct MenuCommand
{
    int command;
    CommandKind kind;
    const char* text; ///< translatable in the context CKestWnd
};

/// The buttons from left to right.
std::span<const ToolbarCommand> toolbarCommands();
/// The items behind a button of the kind Menu; empty for any other command.
std::span<const MenuCommand> menuCommands(int command);
/// The kind of any command of the window; View for an unknown one.
CommandKind kindOf(int command);
/// A text of these tables or of the window's messages in the language of the application.
QString windowText(const char* text);

} // namespace ormalux
