#pragma once

#include "image/GrayView.h"
#include "image/ScratchBytes.h"
#include "image/WorkPool.h"
#include "image/kernels/PaddedRowKernels.h"

namespace ormalux {

/// What a neighbourhood filter reads while it overwrites its picture: padded copies of the few rows around
/// the output rows, so that no second picture is needed. Bands may run at once.
class RowWindow
{
public:
    /// Output rows that are computed at a time, at most.
    static constexpr int maxGroupRows = 32;

    /// A filter that looks `before` pixels to the left and up and `after` to the right and down.
    RowWindow(GrayView image, int before, int after);

    /// One allocation for the whole picture as one band, or for the bands that runBands() cuts its rows into;
    /// copies what a band reads of its neighbours. To be called before any band runs.
    bool prepare(bool inBands);

    /// Calls rows(source, out, count) for up to maxGroupRows output rows at a time, from the band's first to
    /// its end. source[0] is the row `before` above the first one, source[count + before + after - 1] the
    /// last one read; a source row has `before` bytes before its first pixel and max(width, 64) + after + 64
    /// bytes from there that may be read. Pixels outside the picture equal the nearest one inside.
    template <class Rows>
    void run(const Band& band, Rows&& rows)
    {
        Slot slot = slotOf(band.index);
        for (std::int64_t first = band.first; first < band.end; first += m_groupRows) {
            const int count = int(band.end - first < m_groupRows ? band.end - first : m_groupRows);
            rows(advance(slot, band, int(first), count), m_image.row(int(first)), count);
        }
    }

private:
    struct Slot
    {
        std::uint8_t* rows; // row y of the picture at y % m_ringRows
        std::uint8_t* tail; // the rows after the band's end
        const std::uint8_t** source;
    };

    Slot slotOf(int index) const;
    std::uint8_t* ringRow(const Slot& slot, int y) const { return slot.rows + (y % m_ringRows) * m_stride; }
    void copyRow(std::uint8_t* to, int y) const
    {
        m_copy(m_image.row(y), to, std::size_t(m_image.width), std::size_t(m_before), std::size_t(m_after));
    }
    const std::uint8_t* const* advance(const Slot& slot, const Band& band, int first, int count) const;

    GrayView m_image;
    kernels::PaddedCopy m_copy;
    int m_before;
    int m_after;
    std::ptrdiff_t m_margin;
    std::ptrdiff_t m_stride;
    int m_groupRows;
    int m_ringRows;
    int m_tailRows;
    std::size_t m_slotBytes;
    ScratchBytes m_bytes;
};

} // namespace ormalux
