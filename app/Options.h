#pragma once

#include "app/Console.h"
#include "platform/Types.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

namespace ormalux::viewer {

/// What the operator wrote on the command line.
struct Options
{
    QStringList pictures;
    QString grab;                ///< the file that the window is rendered to; empty: an ordinary window
    QSize size;                  ///< of the window; empty: as it was last
    std::optional<double> zoom;  ///< 0 is the fit
    std::optional<CRect> region; ///< inclusive corners in order
    QString overlays;            ///< a file of results
    QString language;            ///< "ko", "en"; empty: as it was last
    QString theme;               ///< "system", "light", "dark"; empty: as it was last

    /// Set when the program has nothing more to do than to print `text` and end: help, version, bad usage.
    std::optional<ExitCode> exit;
    QString text;
};

Options parseOptions(const QStringList& arguments);

} // namespace ormalux::viewer
