#pragma once

#include "view/DrawButton.h"
#include "view/WindowCommands.h"

#include <QString>

#include <functional>
#include <map>
#include <vector>

class CTipWnd;
class QAction;
class QMenu;

namespace ormalux {

/// The buttons of a window in its strip, with their menus and tips. Where the strip is narrower than its
/// buttons they first grow narrower; then the last ones go into the menu of a further button at its end.
class Toolbar
{
public:
    /// The commands of a strip whose window lives longer; send runs a command.
    Toolbar(QWidget& window, std::function<void(int)> send);

    /// Places the buttons from the left in a strip of this size; an empty one hides them.
    void layOut(QSize strip);
    /// Enables what can be run now.
    void enable(const std::function<bool(int command)>& possible);
    void setChecked(int command, bool checked);
    /// A button's tip in place of its own, which an empty one brings back.
    void setTip(int command, const QString& tip);
    /// Takes the texts in the present language of the application.
    void translate();
    /// Opens the menu of a button; at the button of the hidden ones when it is among them.
    void openMenu(int command);

    QWidget* firstButton() const;

private:
    void addMenu(CDrawButton2& button);
    CDrawButton2* buttonOf(int command) const;
    void fillOverflow();
    int widthOf(int buttonWidth, int gap) const;

    QWidget& m_window;
    std::function<void(int)> m_send;
    CTipWnd* m_tip;
    std::vector<CDrawButton2*> m_buttons; ///< in the order of toolbarCommands()
    CDrawButton2* m_overflow;
    std::map<int, QString> m_tips;   ///< of the host, by command
    std::vector<QAction*> m_actions; ///< of the menus; their data is the command
};

} // namespace ormalux
