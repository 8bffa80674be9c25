#include "image/kernels/MedianKernels.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/MedianKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

namespace {

// Levels of neighbouring pixels, which the networks below order side by side; one by one in the plain set.
#if ORMALUX_PLAIN
using Levels = std::uint8_t;
constexpr std::size_t lanes = 1;

inline Levels load(const std::uint8_t* from)
{
    return *from;
}
inline void store(Levels levels, std::uint8_t* to)
{
    *to = levels;
}
inline Levels lower(Levels a, Levels b)
{
    return std::min(a, b);
}
inline Levels higher(Levels a, Levels b)
{
    return std::max(a, b);
}
#else
using Bytes = hn::ScalableTag<std::uint8_t>;
using Levels = hn::Vec<Bytes>;
constexpr std::size_t lanes = hn::MaxLanes(Bytes());

HWY_INLINE Levels load(const std::uint8_t* from)
{
    return hn::LoadU(Bytes(), from);
}
HWY_INLINE void store(Levels levels, std::uint8_t* to)
{
    hn::StoreU(levels, Bytes(), to);
}
HWY_INLINE Levels lower(Levels a, Levels b)
{
    return hn::Min(a, b);
}
HWY_INLINE Levels higher(Levels a, Levels b)
{
    return hn::Max(a, b);
}
#endif

HWY_INLINE void order(Levels& a, Levels& b)
{
    const Levels least = lower(a, b);
    b = higher(a, b);
    a = least;
}

HWY_INLINE Levels middle(Levels a, Levels b, Levels c)
{
    order(a, b);
    return higher(a, lower(b, c));
}

HWY_INLINE void sortThree(Levels& a, Levels& b, Levels& c)
{
    order(a, b);
    order(b, c);
    order(a, b);
}

HWY_INLINE void sortFive(Levels& a, Levels& b, Levels& c, Levels& d, Levels& e)
{
    order(a, b);
    order(d, e);
    order(c, e);
    order(c, d);
    order(a, d);
    order(a, c);
    order(b, e);
    order(b, d);
    order(b, c);
}

/// Sorts the columns of a neighbourhood once for all the pixels that see them. Chunk by chunk, so that what
/// is sorted stays in the first cache.
template <int Size>
struct SortedColumns
{
    static constexpr std::size_t chunk = 1024;
    std::uint8_t rows[Size][chunk + 2 * HWY_MAX_BYTES]; // from the lowest levels to the highest

    /// Of the columns first - reach on, for count pixels.
    HWY_INLINE void sort(const std::uint8_t* const* source, std::ptrdiff_t first, std::size_t count)
    {
        for (std::size_t x = 0; x < count + Size - 1; x += lanes) {
            const auto from = [&](int row) HWY_ATTR { return load(source[row] + first - Size / 2 + x); };
            if constexpr (Size == 3) {
                Levels a = from(0), b = from(1), c = from(2);
                sortThree(a, b, c);
                store(a, rows[0] + x);
                store(b, rows[1] + x);
                store(c, rows[2] + x);
            } else {
                Levels a = from(0), b = from(1), c = from(2), d = from(3), e = from(4);
                sortFive(a, b, c, d, e);
                store(a, rows[0] + x);
                store(b, rows[1] + x);
                store(c, rows[2] + x);
                store(d, rows[3] + x);
                store(e, rows[4] + x);
            }
        }
    }
};

// The median lies between the greatest of the lowest, the middle one of the middle and the least of the
// highest.
HWY_INLINE Levels medianOf(const SortedColumns<3>& columns, std::size_t x)
{
    const auto at = [&](int row, std::size_t column)
                        HWY_ATTR { return load(columns.rows[row] + x + column); };
    return middle(higher(higher(at(0, 0), at(0, 1)), at(0, 2)), middle(at(1, 0), at(1, 1), at(1, 2)),
                  lower(lower(at(2, 0), at(2, 1)), at(2, 2)));
}

// With columns and then rows sorted, 6 of the 25 cannot be above the median and 6 not below: 13 are left.
// What of the rows is not among them the compiler leaves out. The comparisons that follow order the 13 as far
// as the median needs it; they hold for all 252 tables of zeros and ones that are sorted in both ways, and so
// for all levels.
HWY_INLINE Levels medianOf(const SortedColumns<5>& columns, std::size_t x)
{
    const auto sortedRow = [&](int row, Levels(&levels)[5]) HWY_ATTR {
        for (std::size_t column = 0; column < 5; ++column)
            levels[column] = load(columns.rows[row] + x + column);
        sortFive(levels[0], levels[1], levels[2], levels[3], levels[4]);
    };
    Levels a[5], b[5], c[5], d[5], e[5];
    sortedRow(0, a);
    sortedRow(1, b);
    sortedRow(2, c);
    sortedRow(3, d);
    sortedRow(4, e);
    order(c[2], e[0]);
    order(b[3], e[0]);
    order(b[3], d[1]);
    order(a[4], d[1]);
    order(b[4], c[2]);
    order(b[2], e[1]);
    order(a[3], d[2]);
    order(a[3], e[1]);
    order(c[3], d[0]);
    order(a[4], c[3]);
    order(b[4], c[3]);
    order(c[1], c[3]);
    order(b[3], c[3]);
    order(b[2], c[3]);
    order(a[3], c[3]);
    order(d[1], e[1]);
    order(c[2], e[0]);
    order(c[2], c[3]);
    order(c[2], d[2]);
    order(d[0], d[1]);
    order(c[2], d[0]);
    return c[2];
}

template <int Size>
HWY_INLINE void medianRows(const std::uint8_t* const* source, std::uint8_t* out, std::ptrdiff_t stride,
                           std::size_t width, int count)
{
    SortedColumns<Size> columns;
    for (int y = 0; y < count; ++y, ++source, out += stride)
        for (std::size_t first = 0; first < width; first += columns.chunk) {
            const std::size_t n = std::min(columns.chunk, width - first);
            columns.sort(source, std::ptrdiff_t(first), n);
            std::size_t x = 0;
            for (; x + lanes <= n; x += lanes)
                store(medianOf(columns, x), out + first + x);
            if (x < n) {
                std::uint8_t last[lanes];
                store(medianOf(columns, x), last);
                std::memcpy(out + first + x, last, n - x);
            }
        }
}

} // namespace

void medianRows3(const std::uint8_t* const* source, std::uint8_t* out, std::ptrdiff_t stride,
                 std::size_t width, int count)
{
    medianRows<3>(source, out, stride, width, count);
}

void medianRows5(const std::uint8_t* const* source, std::uint8_t* out, std::ptrdiff_t stride,
                 std::size_t width, int count)
{
    medianRows<5>(source, out, stride, width, count);
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(medianRows3);
ORMALUX_SIMD_TABLE(medianRows5);

void medianRows3(const std::uint8_t* const* source, std::uint8_t* out, std::ptrdiff_t stride,
                 std::size_t width, int count)
{
    ORMALUX_SIMD_CALL(medianRows3)(source, out, stride, width, count);
}

void medianRows5(const std::uint8_t* const* source, std::uint8_t* out, std::ptrdiff_t stride,
                 std::size_t width, int count)
{
    ORMALUX_SIMD_CALL(medianRows5)(source, out, stride, width, count);
}

} // namespace ormalux::kernels
#endif
