#pragma once

#include <QString>

namespace ormalux::viewer {

/// Gives the application the colours "light", "dark", or with "system" those that the operator's desktop asks
/// for.
void applyTheme(const QString& name);

/// Whether the desktop asks for dark windows, where it says so; otherwise whether its colours are dark.
bool systemIsDark();

} // namespace ormalux::viewer
