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

// A run's bounds are found in two steps: a quotient that is off by less than this, then one exact comparison.
constexpr double slack = 1e-4;

// The first whole dx from where on dx * factor + a + b is at least bound, for a positive factor, or below it,
// for a negative one.
DoublesV firstDistance(DoublesV bound, DoublesV factor, DoublesV inverse, DoublesV a, DoublesV b, bool rises)
{
    const Doubles d;
    const auto quotient = hn::Mul(hn::Sub(hn::Sub(bound, b), a), inverse);
    const auto n = hn::Ceil(hn::Sub(quotient, hn::Set(d, slack)));
    const auto position = hn::Add(hn::Add(hn::Mul(n, factor), a), b);
    const auto reached = rises ? hn::Ge(position, bound) : hn::Lt(position, bound);
    return hn::IfThenElse(reached, n, hn::Add(n, hn::Set(d, 1.0)));
}

} // namespace

void rotationRuns(const RotationPath& path, ColumnRange sourceRows, int targetRow, const RunTable& runs)
{
    const Doubles d;
    const hn::Rebind<std::int32_t, Doubles> d32;
    const std::size_t lanes = hn::Lanes(d);
    const bool rises = path.sa() > 0;
    // Truncation takes everything above -1 to 0.
    constexpr double aboveMinus1 = -1.0 + 0x1p-53;
    const auto top = hn::Set(d, targetRow == 0 ? aboveMinus1 : double(targetRow));
    const auto bottom = hn::Set(d, double(targetRow) + 1);
    const auto frameLeft = hn::Set(d, aboveMinus1), frameRight = hn::Set(d, double(path.width()));
    const auto ca = hn::Set(d, path.ca()), sa = hn::Set(d, path.sa());
    const auto inverseCa = hn::Set(d, 1 / path.ca()), inverseSa = hn::Set(d, 1 / path.sa());
    const auto cx = hn::Set(d, double(path.cx())), cy = hn::Set(d, double(path.cy()));
    const auto leftmost = hn::Neg(cx), rightmost = hn::Sub(frameRight, cx);
    const auto one = hn::Set(d, 1.0);
    const auto step = hn::Set(d, rises ? -double(lanes) : double(lanes));
    const double firstRow = rises ? double(sourceRows.end) - 1 : double(sourceRows.first);
    auto dy = hn::Iota(d, 0);
    dy = hn::Add(hn::Set(d, firstRow - path.cy()), rises ? hn::Neg(dy) : dy);
    const std::size_t count = std::size_t(sourceRows.end - sourceRows.first);
    for (std::size_t i = 0; i < count; i += lanes) {
        const auto dySin = hn::Mul(dy, sa), dyCos = hn::Mul(dy, ca);
        const auto minusSin = hn::Neg(dySin);
        auto first = firstDistance(rises ? top : bottom, sa, inverseSa, dyCos, cy, rises);
        auto end = firstDistance(rises ? bottom : top, sa, inverseSa, dyCos, cy, rises);
        first = hn::Max(first, firstDistance(frameLeft, ca, inverseCa, minusSin, cx, true));
        end = hn::Min(end, firstDistance(frameRight, ca, inverseCa, minusSin, cx, true));
        first = hn::Max(first, leftmost);
        end = hn::Min(end, rightmost);
        const auto target = hn::Add(hn::Sub(hn::Mul(first, ca), dySin), cx);
        const auto last = hn::Add(hn::Sub(hn::Mul(hn::Sub(end, one), ca), dySin), cx);
        hn::StoreU(hn::DemoteTo(d32, hn::Add(first, cx)), d32, runs.first + i);
        hn::StoreU(hn::DemoteTo(d32, hn::Add(end, cx)), d32, runs.end + i);
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
