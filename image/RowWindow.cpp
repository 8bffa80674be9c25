#include "image/RowWindow.h"

#include <algorithm>
#include <cstring>

namespace ormalux {

namespace {

std::ptrdiff_t roundedUp(std::ptrdiff_t n)
{
    return (n + 63) & ~std::ptrdiff_t(63);
}

} // namespace

RowWindow::RowWindow(GrayView image, int before, int after)
    : m_image(image), m_before(before), m_after(after),
      m_ringRows(std::min(groupRows + before + after, image.height)),
      m_tailRows(std::min(after, image.height)), m_margin(roundedUp(before)),
      // An odd number of cache lines: rows one below the other never compete for the same lines.
      m_stride((m_margin + roundedUp(std::ptrdiff_t(std::max(image.width, 64)) + after + 64)) | 64)
{
    const std::size_t pointers =
        roundedUp(std::ptrdiff_t(sizeof(std::uint8_t*)) * (groupRows + before + after));
    m_slotBytes = std::size_t(m_stride) * (std::size_t(m_ringRows) + std::size_t(m_tailRows)) + pointers;
}

RowWindow::Slot RowWindow::slotOf(int index) const
{
    std::uint8_t* bytes = m_bytes.get() + m_slotBytes * std::size_t(index);
    std::uint8_t* tail = bytes + m_stride * m_ringRows;
    return {bytes + m_margin, tail + m_margin,
            reinterpret_cast<const std::uint8_t**>(tail + m_stride * m_tailRows)};
}

bool RowWindow::prepare(bool inBands)
{
    const int count = inBands ? bandCount() : 1;
    m_bytes.reset(static_cast<std::uint8_t*>(
        ::operator new(m_slotBytes* std::size_t(count), std::align_val_t(64), std::nothrow)));
    if (!m_bytes)
        return false;
    for (int i = 0; i < count && inBands; ++i) {
        const Band band = bandOf(i, count, m_image.height);
        if (band.first == band.end)
            continue;
        const Slot slot = slotOf(i);
        const int first = int(band.first), end = int(band.end);
        for (int y = std::max(0, first - m_before); y < first; ++y)
            copyRow(ringRow(slot, y), y);
        for (int y = end; y < std::min(m_image.height, end + m_after); ++y)
            copyRow(slot.tail + (y - end) * m_stride, y);
    }
    return true;
}

void RowWindow::copyRow(std::uint8_t* to, int y) const
{
    const std::uint8_t* from = m_image.row(y);
    const std::size_t width = std::size_t(m_image.width);
    std::memset(to - m_margin, from[0], std::size_t(m_margin));
    std::memcpy(to, from, width);
    std::memset(to + width, from[width - 1], std::size_t(m_stride - m_margin) - width);
}

const std::uint8_t* const* RowWindow::advance(const Slot& slot, const Band& band, int first, int count) const
{
    // Rows up to the former group's last source row are there; the picture still holds the others unfiltered.
    const int end = int(band.end);
    const int known = first == band.first ? first : std::min(end, first + m_after);
    for (int y = known; y < std::min(end, first + count + m_after); ++y)
        copyRow(ringRow(slot, y), y);
    for (int j = 0; j < count + m_before + m_after; ++j) {
        const int y = std::clamp(first - m_before + j, 0, m_image.height - 1);
        slot.source[j] = y < end ? ringRow(slot, y) : slot.tail + (y - end) * m_stride;
    }
    return slot.source;
}

} // namespace ormalux
