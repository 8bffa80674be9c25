#include "image/kernels/LocalMeanKernels.h"

#include <cmath>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/LocalMeanKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if !ORMALUX_PLAIN
namespace {

using Floats = hn::ScalableTag<float>;
using Ints = hn::RebindToSigned<Floats>;
using FewBytes = hn::Rebind<std::uint8_t, Floats>;

HWY_INLINE hn::Vec<Ints> loadBytes(const std::uint8_t* bytes)
{
    return hn::PromoteTo(Ints(), hn::LoadU(FewBytes(), bytes));
}

} // namespace
#endif

void slideColumns(std::uint32_t* sums, const std::uint8_t* entering, const std::uint8_t* leaving,
                  std::uint32_t* with, std::size_t count)
{
    std::size_t x = 0;
#if !ORMALUX_PLAIN
    const hn::RebindToUnsigned<Ints> d;
    for (; x + hn::Lanes(d) <= count; x += hn::Lanes(d)) {
        const auto sum = hn::Add(hn::LoadU(d, sums + x), hn::BitCast(d, loadBytes(entering + x)));
        hn::StoreU(sum, d, with + x);
        hn::StoreU(hn::Sub(sum, hn::BitCast(d, loadBytes(leaving + x))), d, sums + x);
    }
#endif
    for (; x < count; ++x) {
        with[x] = sums[x] + entering[x];
        sums[x] = with[x] - leaving[x];
    }
}

void weighRows(const std::uint8_t* const* rows, const float* weights, std::size_t reach, float* out,
               std::size_t count)
{
    const std::ptrdiff_t last = std::ptrdiff_t(reach);
    std::size_t x = 0;
#if !ORMALUX_PLAIN
    const Floats d;
    const std::size_t lanes = hn::Lanes(d);
    for (; x + 2 * lanes <= count; x += 2 * lanes) {
        auto a = hn::Mul(hn::Set(d, weights[0]), hn::ConvertTo(d, loadBytes(rows[0] + x)));
        auto b = hn::Mul(hn::Set(d, weights[0]), hn::ConvertTo(d, loadBytes(rows[0] + x + lanes)));
        for (std::ptrdiff_t i = 1; i <= last; ++i) {
            const std::uint8_t *above = rows[-i] + x, *below = rows[i] + x;
            const auto weight = hn::Set(d, weights[i]);
            const auto pair = hn::Add(loadBytes(above), loadBytes(below));
            const auto nextPair = hn::Add(loadBytes(above + lanes), loadBytes(below + lanes));
            a = hn::Add(a, hn::Mul(weight, hn::ConvertTo(d, pair)));
            b = hn::Add(b, hn::Mul(weight, hn::ConvertTo(d, nextPair)));
        }
        hn::StoreU(a, d, out + x);
        hn::StoreU(b, d, out + x + lanes);
    }
#endif
    for (; x < count; ++x) {
        float sum = weights[0] * float(rows[0][x]);
        for (std::ptrdiff_t i = 1; i <= last; ++i)
            sum += weights[i] * float(rows[-i][x] + rows[i][x]);
        out[x] = sum;
    }
}

void weighLine(const float* line, const float* weights, std::size_t reach, float* out, std::size_t count)
{
    const std::ptrdiff_t last = std::ptrdiff_t(reach);
    std::size_t x = 0;
#if !ORMALUX_PLAIN
    const Floats d;
    const std::size_t lanes = hn::Lanes(d);
    for (; x + 2 * lanes <= count; x += 2 * lanes) {
        const float* middle = line + x;
        auto a = hn::Mul(hn::Set(d, weights[0]), hn::LoadU(d, middle));
        auto b = hn::Mul(hn::Set(d, weights[0]), hn::LoadU(d, middle + lanes));
        for (std::ptrdiff_t i = 1; i <= last; ++i) {
            const auto weight = hn::Set(d, weights[i]);
            const auto pair = hn::Add(hn::LoadU(d, middle - i), hn::LoadU(d, middle + i));
            const auto nextPair = hn::Add(hn::LoadU(d, middle - i + lanes), hn::LoadU(d, middle + i + lanes));
            a = hn::Add(a, hn::Mul(weight, pair));
            b = hn::Add(b, hn::Mul(weight, nextPair));
        }
        hn::StoreU(a, d, out + x);
        hn::StoreU(b, d, out + x + lanes);
    }
#endif
    for (; x < count; ++x) {
        const float* middle = line + x;
        float sum = weights[0] * *middle;
        for (std::ptrdiff_t i = 1; i <= last; ++i)
            sum += weights[i] * (middle[-i] + middle[i]);
        out[x] = sum;
    }
}

#if !ORMALUX_PLAIN
namespace {

using Words = hn::RebindToUnsigned<Ints>;

/// Sums within blocks of four lanes, then across blocks.
class LaneSums
{
public:
    LaneSums()
    {
        HWY_ALIGN std::int32_t lane[HWY_MAX_BYTES / 4];
        HWY_ALIGN std::uint32_t takes[2][HWY_MAX_BYTES / 4];
        const int lanes = int(hn::Lanes(Words()));
        for (int step = 0; step < 2; ++step) {
            for (int i = 0; i < lanes; ++i) {
                const int before = i / (4 << step) * (4 << step) - 1; // the last lane of the blocks before
                const bool odd = (i / (4 << step)) % 2 == 1;
                lane[i] = odd ? before : 0;
                takes[step][i] = odd ? ~0u : 0u;
            }
            m_lane[step] = hn::Load(Ints(), lane);
            m_takes[step] = hn::Load(Words(), takes[step]);
        }
        m_last = hn::Set(Ints(), lanes - 1);
    }
    HWY_INLINE hn::Vec<Words> sum(hn::Vec<Words> v) const
    {
        const Words d;
        v = hn::Add(v, hn::ShiftLeftLanes<1>(d, v));
        v = hn::Add(v, hn::ShiftLeftLanes<2>(d, v));
        if (hn::Lanes(d) > 4)
            v = hn::Add(v, across(v, 0));
        if (hn::Lanes(d) > 8)
            v = hn::Add(v, across(v, 1));
        return v;
    }
    HWY_INLINE hn::Vec<Words> last(hn::Vec<Words> v) const
    {
        return hn::TableLookupLanes(v, hn::IndicesFromVec(Words(), m_last));
    }

private:
    HWY_INLINE hn::Vec<Words> across(hn::Vec<Words> v, int step) const
    {
        return hn::And(hn::TableLookupLanes(v, hn::IndicesFromVec(Words(), m_lane[step])), m_takes[step]);
    }

    hn::Vec<Ints> m_lane[2], m_last;
    hn::Vec<Words> m_takes[2];
};

HWY_INLINE void storeMarks(std::uint8_t* pixels, hn::Vec<Floats> means, hn::Vec<Ints> offset)
{
    const Ints d;
    const auto limit = hn::Sub(hn::NearestInt(means), offset);
    const auto above = hn::VecFromMask(d, hn::Gt(loadBytes(pixels), limit));
    hn::StoreU(hn::DemoteTo(FewBytes(), hn::And(above, hn::Set(d, 255))), FewBytes(), pixels);
}

} // namespace
#endif

void runningSums(std::uint32_t* line, std::size_t count)
{
    std::size_t x = 0;
    std::uint32_t sum = 0;
#if !ORMALUX_PLAIN
    const Words d;
    const LaneSums lanes;
    auto before = hn::Zero(d);
    for (; x + hn::Lanes(d) <= count; x += hn::Lanes(d)) {
        const auto sums = hn::Add(before, lanes.sum(hn::LoadU(d, line + x)));
        hn::StoreU(sums, d, line + x);
        before = lanes.last(sums);
    }
    sum = hn::GetLane(before);
#endif
    for (; x < count; ++x)
        line[x] = sum += line[x];
}

void markAboveMeans(std::uint8_t* pixels, const float* means, std::int32_t offset, std::size_t count)
{
    std::size_t x = 0;
#if !ORMALUX_PLAIN
    const Floats d;
    for (; x + hn::Lanes(d) <= count; x += hn::Lanes(d))
        storeMarks(pixels + x, hn::LoadU(d, means + x), hn::Set(Ints(), offset));
#endif
    for (; x < count; ++x)
        pixels[x] = pixels[x] > std::int32_t(std::nearbyint(means[x])) - offset ? 255 : 0;
}

void markAboveWindows(std::uint8_t* pixels, const std::uint32_t* runningSums, std::size_t window, float scale,
                      std::int32_t offset, std::size_t count)
{
    std::size_t x = 0;
#if !ORMALUX_PLAIN
    const Floats d;
    const Words dw;
    for (; x + hn::Lanes(d) <= count; x += hn::Lanes(d)) {
        const auto sum = hn::Sub(hn::LoadU(dw, runningSums + x + window), hn::LoadU(dw, runningSums + x));
        const auto mean = hn::Mul(hn::ConvertTo(d, hn::BitCast(Ints(), sum)), hn::Set(d, scale));
        storeMarks(pixels + x, mean, hn::Set(Ints(), offset));
    }
#endif
    for (; x < count; ++x) {
        const float mean = float(std::int32_t(runningSums[x + window] - runningSums[x])) * scale;
        pixels[x] = pixels[x] > std::int32_t(std::nearbyint(mean)) - offset ? 255 : 0;
    }
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(slideColumns);
ORMALUX_SIMD_TABLE(weighRows);
ORMALUX_SIMD_TABLE(weighLine);
ORMALUX_SIMD_TABLE(runningSums);
ORMALUX_SIMD_TABLE(markAboveMeans);
ORMALUX_SIMD_TABLE(markAboveWindows);

void slideColumns(std::uint32_t* sums, const std::uint8_t* entering, const std::uint8_t* leaving,
                  std::uint32_t* with, std::size_t count)
{
    ORMALUX_SIMD_CALL(slideColumns)(sums, entering, leaving, with, count);
}

void weighRows(const std::uint8_t* const* rows, const float* weights, std::size_t reach, float* out,
               std::size_t count)
{
    ORMALUX_SIMD_CALL(weighRows)(rows, weights, reach, out, count);
}

void weighLine(const float* line, const float* weights, std::size_t reach, float* out, std::size_t count)
{
    ORMALUX_SIMD_CALL(weighLine)(line, weights, reach, out, count);
}

void runningSums(std::uint32_t* line, std::size_t count)
{
    ORMALUX_SIMD_CALL(runningSums)(line, count);
}

void markAboveMeans(std::uint8_t* pixels, const float* means, std::int32_t offset, std::size_t count)
{
    ORMALUX_SIMD_CALL(markAboveMeans)(pixels, means, offset, count);
}

void markAboveWindows(std::uint8_t* pixels, const std::uint32_t* runningSums, std::size_t window, float scale,
                      std::int32_t offset, std::size_t count)
{
    ORMALUX_SIMD_CALL(markAboveWindows)(pixels, runningSums, window, scale, offset, count);
}

} // namespace ormalux::kernels
#endif
