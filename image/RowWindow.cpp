#include "image/RowWindow.h"

#include <algorithm>

namespace ormalux {

namespace {

constexpr std::ptrdiff_t cacheBytes = 40 * 1024;

} // namespace

RowWindow::RowWindow(GrayView image, int before, int after)
    : m_image(image), m_copy(kernels::paddedCopy()), m_before(before), m_after(after),
      m_margin(wholeLines(before)),
      // An odd number of cache lines: rows one below the other never compete for the same lines.
      m_stride((m_margin + wholeLines(std::ptrdiff_t(std::max(image.width, 64)) + after + 64)) | 64),
      // Large groups sum fewer rows twice, as long as their source rows stay in the first cache.
      m_groupRows(std::clamp(int(cacheBytes / m_stride) - before - after, 8, maxGroupRows)),
      m_ringRows(std::min(m_groupRows + before + after, image.height)),
      m_tailRows(std::min(after, image.height))
{
    const std::size_t pointers =
        wholeLines(std::ptrdiff_t(sizeof(std::uint8_t*)) * (m_groupRows + before + after));
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
    m_bytes = scratchBytes(m_slotBytes * std::size_t(count));
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

const std::uint8_t* const* RowWindow::advance(const Slot& slot, const Band& band, int first, int count) const
{
    const int end = int(band.end), begin = std::max(0, first - m_before);
    // Rows up to the former group's last source row are there; the picture still holds the others unfiltered.
    const int known = first == band.first ? first : first + m_after;
    int ring = begin % m_ringRows;
    int j = 0;
    for (int y = begin; y < std::min(m_image.height, first + count + m_after); ++y) {
        std::uint8_t* row = y < end ? slot.rows + ring * m_stride : slot.tail + (y - end) * m_stride;
        if (y >= known && y < end)
            copyRow(row, y);
        ring = ring + 1 == m_ringRows ? 0 : ring + 1;
        // The first row stands for those above it.
        for (const int own = y - (first - m_before); j <= own; ++j)
            slot.source[j] = row;
    }
    for (; j < count + m_before + m_after; ++j)
        slot.source[j] = slot.source[j - 1];
    return slot.source;
}

} // namespace ormalux
