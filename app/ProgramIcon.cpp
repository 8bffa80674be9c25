#include "app/ProgramIcon.h"

namespace ormalux::viewer {

QIcon programIcon()
{
    QIcon icon;
    for (const int pixels : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/ormalux-view/ormalux-view.%1.png").arg(pixels));
    return icon;
}

} // namespace ormalux::viewer
