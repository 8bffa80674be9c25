#include "color/ColorCollection.h"

#include "color/ColorPlane.h"
#include "image/WorkPool.h"
#include "image/kernels/CountKernels.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <new>

namespace ormalux {

namespace {

struct ColorRange
{
    std::uint32_t low;
    std::uint32_t high;
};

/// Marks of pixels of one row: 255 where the colour is in range, 0 elsewhere and behind the last one.
struct Marks
{
    static constexpr int capacity = 2048;
    std::uint8_t bytes[capacity];
};

/// Calls body(marks, count, x) for every part of a row from x1 to x2.
template <class Body>
void eachPart(const ConstColorView& image, int x1, int x2, int y, const ColorRange& range, Body body)
{
    alignas(64) Marks marks;
    for (std::int64_t x = x1; x <= x2; x += Marks::capacity) {
        const int count = int(std::min<std::int64_t>(Marks::capacity, std::int64_t(x2) - x + 1));
        const ConstColorView part{image.at(int(x), y), count, 1, std::int64_t(3) * count};
        selectColors(part, range.low, range.high, {marks.bytes, std::size_t(count)});
        body(marks, count, int(x));
    }
}

/// Appends the marked pixels at record; returns where the next one goes.
_stColorPixel* writeMarked(Marks& marks, int count, const std::uint8_t* bgr, int x, int y,
                           _stColorPixel* record)
{
    std::memset(marks.bytes + count, 0, std::size_t(-count & 7));
    for (int i = 0; i < count; i += 8) {
        std::uint64_t eight;
        std::memcpy(&eight, marks.bytes + i, 8);
        for (eight &= 0x0101010101010101; eight != 0; eight &= eight - 1) {
            const int k = i + (std::countr_zero(eight) >> 3);
            const std::uint8_t* p = bgr + 3 * k;
            *record++ = _stColorPixel{x + k, y, RGB(p[2], p[1], p[0]), 0.0};
        }
    }
    return record;
}

} // namespace

void collectColors(const ConstColorView& image, int x1, int y1, int x2, int y2, std::uint32_t low,
                   std::uint32_t high, CColorPixelArray& pixels)
{
    const std::unique_ptr<std::int64_t[]> begins(new (std::nothrow)
                                                     std::int64_t[std::size_t(bandCount()) + 1]());
    if (!begins)
        return;
    const ColorRange range{low, high};
    const std::int64_t rows = std::int64_t(y2) - y1 + 1, area = (std::int64_t(x2) - x1 + 1) * rows;
    // Counting first lets every band write straight to where its records belong.
    runBands(Job::PixelCollection, rows, JobCost{area / 6}, [&](const Band& band) {
        std::uint64_t marked = 0;
        for (std::int64_t row = band.first; row < band.end; ++row)
            eachPart(image, x1, x2, y1 + int(row), range, [&](const Marks& marks, int count, int) {
                marked += kernels::sumBytes(marks.bytes, std::size_t(count)) / 255;
            });
        begins[std::size_t(band.index) + 1] = std::int64_t(marked);
    });
    const int bands = bandCount();
    for (int i = 0; i < bands; ++i)
        begins[std::size_t(i) + 1] += begins[std::size_t(i)];
    const std::span<_stColorPixel> records =
        pixels.appendForOverwrite(std::size_t(begins[std::size_t(bands)]));
    if (records.empty())
        return;
    runBands(Job::PixelCollection, rows, JobCost{area / 6 + std::int64_t(records.size())},
             [&](const Band& band) {
                 _stColorPixel* record = records.data() + begins[std::size_t(band.index)];
                 for (std::int64_t row = band.first; row < band.end; ++row) {
                     const int y = y1 + int(row);
                     eachPart(image, x1, x2, y, range, [&](Marks& marks, int count, int x) {
                         record = writeMarked(marks, count, image.at(x, y), x, y, record);
                     });
                 }
             });
}

} // namespace ormalux
