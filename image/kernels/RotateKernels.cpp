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
    const hn::ScalableTag<std::uint16_t> du16;
    const hn::RebindToSigned<decltype(du16)> d16;
    const hn::Rebind<std::uint8_t, decltype(d16)> d8;
    const std::size_t lanes = hn::Lanes(d16);
    for (; i + lanes <= count; i += lanes) {
        const auto cell = hn::BitCast(d16, hn::LoadU(du16, cells + i));
        const auto level = hn::And(cell, hn::Set(d16, 255));
        hn::StoreU(hn::DemoteTo(d8, level), d8, pixels + i);
        std::uint8_t bits[8] = {};
        hn::StoreMaskBits(d16, hn::Eq(cell, hn::Zero(d16)), bits);
        std::uint64_t word = 0;
        for (std::size_t b = 0; b < lanes / 8; ++b)
            word |= std::uint64_t(bits[b]) << (8 * b);
        empty[i / 64] |= word << (i % 64);
    }
#endif
    for (; i < count; ++i) {
        pixels[i] = std::uint8_t(cells[i]);
        empty[i / 64] |= std::uint64_t(cells[i] == 0) << (i % 64);
    }
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(rotationCells);
ORMALUX_SIMD_TABLE(unpackCells);

void rotationCells(const RotationRow& row, double dx, int top, int width, std::int32_t* cells,
                   std::size_t count)
{
    ORMALUX_SIMD_CALL(rotationCells)(row, dx, top, width, cells, count);
}

void unpackCells(const std::uint16_t* cells, std::size_t count, std::uint8_t* pixels, std::uint64_t* empty)
{
    ORMALUX_SIMD_CALL(unpackCells)(cells, count, pixels, empty);
}

} // namespace ormalux::kernels
#endif
