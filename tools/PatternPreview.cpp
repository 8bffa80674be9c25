#include "tools/PatternPreview.h"

#include "platform/Stdlib.h"
#include "tools/PatternTemplate.h"
#include "tools/WidgetCanvas.h"

#include <algorithm>
#include <new>

namespace ormalux {

namespace {

/// Bottom row first, rows padded to 4 bytes. Throws when memory is short.
std::vector<std::uint8_t> bitmapOf(const PatternTemplate& pattern)
{
    const std::size_t step = (std::size_t(pattern.width) + 3) / 4 * 4;
    std::vector<std::uint8_t> bits(step * std::size_t(pattern.height));
    for (int y = 0; y < pattern.height; ++y)
        std::copy_n(pattern.pixels.begin() + std::ptrdiff_t(y) * pattern.width, pattern.width,
                    bits.begin() + std::ptrdiff_t(step) * (pattern.height - 1 - y));
    return bits;
}

} // namespace

PatternPreview::PatternPreview(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(180, 180);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PatternPreview::paintEvent(QPaintEvent*)
{
    WidgetCanvas canvas(*this, Qt::gray); // black and white edges are both seen on it
    if (!m_pattern || m_pattern->pixels.empty())
        return;
    const double zoom =
        std::min(double(canvas.width()) / m_pattern->width, double(canvas.height()) / m_pattern->height);
    const int width = std::max(1, int(m_pattern->width * zoom));
    const int height = std::max(1, int(m_pattern->height * zoom));
    const CPoint corner((canvas.width() - width) / 2, (canvas.height() - height) / 2);
    try {
        auto bits = bitmapOf(*m_pattern);
        CStdlib::DrawBitmap(&canvas.painter(), CRect(corner.x, corner.y, corner.x + width, corner.y + height),
                            bits.data(), m_pattern->width, m_pattern->height, 8);
    } catch (const std::bad_alloc&) {
        return; // the pixel view still shows it
    }
}

} // namespace ormalux
