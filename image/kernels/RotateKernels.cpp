#include "image/kernels/RotateKernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/RotateKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

void rotationCells(const RotationRow& row, double dx, int top, int width, std::int32_t* cells,
                   std::size_t count)
{
    std::size_t i = 0;
#if !ORMALUX_PLAIN
    const hn::ScalableTag<double> d;
    const hn::Rebind<std::int32_t, decltype(d)> d32;
    const std::size_t lanes = hn::Lanes(d);
    const auto ca = hn::Set(d, row.ca), sa = hn::Set(d, row.sa);
    const auto cx = hn::Set(d, row.cx), cy = hn::Set(d, row.cy);
    const auto dySin = hn::Set(d, row.dySin), dyCos = hn::Set(d, row.dyCos);
    const auto rowCells = hn::Set(d, double(width));
    const auto topCells = hn::Set(d, double(top) * width);
    const auto step = hn::Set(d, double(lanes));
    auto distance = hn::Iota(d, dx);
    for (; i + lanes <= count; i += lanes) {
        // Products and sums each rounded, as the plain code rounds them.
        const auto u = hn::Add(hn::Sub(hn::Mul(distance, ca), dySin), cx);
        const auto v = hn::Add(hn::Add(hn::Mul(distance, sa), dyCos), cy);
        const auto cell = hn::Add(hn::Mul(hn::Trunc(v), rowCells), hn::Sub(hn::Trunc(u), topCells));
        hn::StoreU(hn::DemoteTo(d32, cell), d32, cells + i);
        distance = hn::Add(distance, step);
    }
#endif
    for (; i < count; ++i) {
        const int x = int(row.column(dx + double(i)));
        const int y = int(row.row(dx + double(i)));
        cells[i] = (y - top) * width + x;
    }
}

void unpackCells(const std::uint16_t* cells, std::size_t count, std::uint8_t* pixels, std::uint64_t* empty)
{
    for (std::size_t i = 0; i < (count + 63) / 64; ++i)
        empty[i] = 0;
    std::size_t i = 0;
#if !ORMALUX_PLAIN
    const hn::ScalableTag<std::uint16_t> d;
    const hn::RebindToSigned<decltype(d)> d16;
    const hn::Rebind<std::uint8_t, decltype(d)> d8;
    const std::size_t lanes = hn::Lanes(d);
    const auto none = hn::Zero(d), low = hn::Set(d, 255);
    for (; i + lanes <= count; i += lanes) {
        const auto cell = hn::LoadU(d, cells + i);
        const auto left = hn::LoadU(d, cells + i - 1), right = hn::LoadU(d, cells + i + 1);
        const auto beside = hn::ShiftRight<1>(hn::Add(hn::And(left, low), hn::And(right, low)));
        const auto between = hn::AndNot(hn::Eq(hn::Min(left, right), none), hn::Eq(cell, none));
        const auto level = hn::IfThenElse(between, beside, hn::And(cell, low));
        hn::StoreU(hn::DemoteTo(d8, hn::BitCast(d16, level)), d8, pixels + i);
        std::uint8_t bits[8] = {};
        hn::StoreMaskBits(d, hn::AndNot(between, hn::Eq(cell, none)), bits);
        std::uint64_t word = 0;
        for (std::size_t b = 0; b < lanes / 8; ++b)
            word |= std::uint64_t(bits[b]) << (8 * b);
        empty[i / 64] |= word << (i % 64);
    }
#endif
    for (; i < count; ++i) {
        const std::uint16_t left = *(cells + i - 1), right = cells[i + 1];
        const bool between = cells[i] == 0 && left != 0 && right != 0;
        pixels[i] = between ? std::uint8_t(((left & 255) + (right & 255)) >> 1) : std::uint8_t(cells[i]);
        empty[i / 64] |= std::uint64_t(cells[i] == 0 && !between) << (i % 64);
    }
}

namespace {

using Doubles = hn::ScalableTag<double>;
using DoublesV = hn::Vec<Doubles>;

// Truncation takes everything above -1 to 0.
constexpr double aboveMinus1 = -1.0 + 0x1p-53;

/// Where a position dx * factor + a + b crosses a bound. It is found in two steps: a quotient that is off by
/// less than the slack, then one exact comparison.
class Crossing
{
public:
    Crossing(double bound, double factor, double b)
        : m_bound(hn::Set(d, bound)), m_factor(hn::Set(d, factor)), m_b(hn::Set(d, b)),
          m_perA(hn::Set(d, -1 / factor)), m_guess(hn::Set(d, (bound - b) / factor - slack)),
          m_rises(factor > 0)
    {}
    /// The first whole dx from where on the position is at least the bound, or below it when it falls.
    DoublesV first(DoublesV a) const
    {
        const auto n = hn::Ceil(hn::MulAdd(a, m_perA, m_guess));
        const auto position = hn::Add(hn::Add(hn::Mul(n, m_factor), a), m_b);
        const auto before = m_rises ? hn::Lt(position, m_bound) : hn::Ge(position, m_bound);
        return hn::Add(n, hn::IfThenElseZero(before, hn::Set(d, 1.0)));
    }

private:
    static constexpr Doubles d{};
    static constexpr double slack = 1e-4;
    DoublesV m_bound, m_factor, m_b, m_perA, m_guess;
    bool m_rises;
};

/// The columns of source rows in one target row's terms.
class Columns
{
public:
    explicit Columns(const RotationPath& path)
        : m_left(aboveMinus1, path.ca(), path.cx()), m_right(path.width(), path.ca(), path.cx()),
          m_ca(hn::Set(d, path.ca())), m_cx(hn::Set(d, path.cx())), m_width(hn::Set(d, path.width())),
          m_perFold(hn::Set(d, 1 / (1 - path.ca())))
    {}
    void beginRows(DoublesV dySin) { m_minusSin = hn::Neg(dySin); }
    DoublesV at(DoublesV dx) const { return hn::Add(hn::Add(hn::Mul(dx, m_ca), m_minusSin), m_cx); }

    /// The columns of the first pixel and of the last before end, untruncated, after cutting off what leaves
    /// the frame; few runs do.
    void clip(DoublesV& first, DoublesV& end, DoublesV& start, DoublesV& last) const
    {
        const auto one = hn::Set(d, 1.0);
        first = hn::Max(first, hn::Neg(m_cx));
        end = hn::Min(end, hn::Sub(m_width, m_cx));
        start = at(first);
        last = at(hn::Sub(end, one));
        if (hn::AllTrue(d, hn::And(hn::Ge(start, hn::Set(d, aboveMinus1)), hn::Lt(last, m_width))))
            return;
        first = hn::Max(first, m_left.first(m_minusSin));
        end = hn::Min(end, m_right.first(m_minusSin));
        start = at(first);
        last = at(hn::Sub(end, one));
    }
    /// How many pixels from first on go to columns one by one. Columns less their sources only fall, and
    /// first where the fraction of the first one has been used up.
    DoublesV together(DoublesV first, DoublesV start, DoublesV target, DoublesV count) const
    {
        const auto one = hn::Set(d, 1.0);
        // The quotient may be off by much of the slack: it divides by as little as 1 - cos of the smallest
        // angle.
        const auto slack = hn::Set(d, 0.1);
        const auto quotient = hn::Mul(hn::Sub(start, target), m_perFold);
        const auto n = hn::Max(hn::Ceil(hn::Sub(quotient, slack)), one);
        const auto folded = hn::Lt(at(hn::Add(first, n)), hn::Add(target, n));
        return hn::Min(count, hn::IfThenElse(folded, n, hn::Add(n, one)));
    }

private:
    static constexpr Doubles d{};
    Crossing m_left, m_right;
    DoublesV m_ca, m_cx, m_width, m_perFold, m_minusSin;
};

} // namespace

void rotationRuns(const RotationPath& path, ColumnRange sourceRows, int targetRow, const RunTable& runs)
{
    const Doubles d;
    const hn::Rebind<std::int32_t, Doubles> d32;
    const std::size_t lanes = hn::Lanes(d);
    const bool rises = path.sa() > 0;
    const double top = targetRow == 0 ? aboveMinus1 : targetRow, bottom = targetRow + 1.0;
    const Crossing begins(rises ? top : bottom, path.sa(), path.cy());
    const Crossing ends(rises ? bottom : top, path.sa(), path.cy());
    Columns columns(path);
    const auto ca = hn::Set(d, path.ca()), sa = hn::Set(d, path.sa());
    const auto width = hn::Set(d, path.width());
    const auto center = hn::Set(d, double(path.cy()) * path.width() + path.cx());
    const auto step = hn::Set(d, rises ? -double(lanes) : double(lanes));
    const auto lane = hn::Iota(d, 0);
    auto dy = hn::Set(d, double(rises ? sourceRows.end - 1 : sourceRows.first) - path.cy());
    dy = rises ? hn::Sub(dy, lane) : hn::Add(dy, lane);
    const std::size_t rows = std::size_t(sourceRows.end - sourceRows.first);
    for (std::size_t i = 0; i < rows; i += lanes) {
        const auto dyCos = hn::Mul(dy, ca);
        columns.beginRows(hn::Mul(dy, sa));
        auto first = begins.first(dyCos), end = ends.first(dyCos);
        DoublesV start, last;
        columns.clip(first, end, start, last);
        const auto count = hn::Sub(end, first);
        const auto target = hn::Trunc(start);
        const auto together = columns.together(first, start, target, count);
        const auto from = hn::Add(hn::Add(hn::Mul(dy, width), first), center);
        hn::StoreU(hn::DemoteTo(d32, from), d32, runs.from + i);
        hn::StoreU(hn::DemoteTo(d32, count), d32, runs.count + i);
        hn::StoreU(hn::DemoteTo(d32, together), d32, runs.together + i);
        hn::StoreU(hn::DemoteTo(d32, target), d32, runs.target + i);
        hn::StoreU(hn::DemoteTo(d32, last), d32, runs.last + i);
        dy = hn::Add(dy, step);
    }
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(rotationCells);
ORMALUX_SIMD_TABLE(unpackCells);
ORMALUX_SIMD_TABLE(rotationRuns);

void rotationCells(const RotationRow& row, double dx, int top, int width, std::int32_t* cells,
                   std::size_t count)
{
    ORMALUX_SIMD_CALL(rotationCells)(row, dx, top, width, cells, count);
}

void unpackCells(const std::uint16_t* cells, std::size_t count, std::uint8_t* pixels, std::uint64_t* empty)
{
    ORMALUX_SIMD_CALL(unpackCells)(cells, count, pixels, empty);
}

void rotationRuns(const RotationPath& path, ColumnRange sourceRows, int targetRow, const RunTable& runs)
{
    ORMALUX_SIMD_CALL(rotationRuns)(path, sourceRows, targetRow, runs);
}

} // namespace ormalux::kernels
#endif
