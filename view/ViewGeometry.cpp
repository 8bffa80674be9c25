#include "view/ViewGeometry.h"

namespace ormalux {

float fitZoomOf(QSize client, QSize picture)
{
    if (picture.isEmpty())
        return 1.0f;
    const double ratio =
        std::min(double(client.width()) / picture.width(), double(client.height()) / picture.height());
    constexpr double margin = 0.1;
    constexpr double smallest = 1e-4; // a client area without size still has a zoom to divide by
    return float(std::max(ratio - margin > smallest ? ratio - margin : ratio, smallest));
}

} // namespace ormalux
