#pragma once

#include "tools/ToolHost.h"

#include <QHash>
#include <QPointer>
#include <QWidget>

namespace ormalux {

/// The tool dialogs of one window, made when first asked for and gone with this object.
class ToolBox
{
public:
    /// Dialogs belong to parent's window; the host outlives this object.
    ToolBox(ToolHost& host, QWidget* parent) : m_host(host), m_parent(parent) {}
    ~ToolBox();
    ToolBox(const ToolBox&) = delete;
    ToolBox& operator=(const ToolBox&) = delete;

    /// Whether there is a tool behind the command.
    static bool has(int command);
    /// Shows the command's dialog in front; false for any other command.
    bool open(int command);
    /// Null unless the dialog has been made.
    QWidget* dialog(int command) const { return m_dialogs.value(command); }

private:
    ToolHost& m_host;
    QWidget* m_parent;
    QHash<int, QPointer<QWidget>> m_dialogs;
};

} // namespace ormalux
