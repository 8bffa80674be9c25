#include "measure/kernels/GaugeKernels.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/kernels/GaugeKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
using kernels::columnsAtOnce;
using kernels::ProfileStep;
using kernels::StepRule;

/// The contrast of the step that a sample completes, 0 for none.
inline std::uint8_t stepAt(const std::uint8_t* sample, StepRule rule)
{
    const int now = sample[0] ^ rule.flip, before = sample[-1] ^ rule.flip;
    return std::uint8_t(now > rule.limit && before <= rule.limit ? now - before : 0);
}

inline ProfileStep strongestStepPlainly(const std::uint8_t* samples, std::size_t count, StepRule rule)
{
    ProfileStep best{0, 0};
    for (std::size_t i = 1; i < count; ++i) {
        const std::uint8_t contrast = stepAt(samples + i, rule);
        if (contrast && contrast >= best.contrast)
            best = {contrast, i};
    }
    return best;
}

#if ORMALUX_PLAIN

ProfileStep strongestStep(const std::uint8_t* samples, std::size_t count, StepRule rule)
{
    return strongestStepPlainly(samples, count, rule);
}

void markSteps(const std::uint8_t* samples, std::size_t count, StepRule rule, std::uint64_t* marks)
{
    for (std::size_t i = 1; i < count; i += 64) {
        std::uint64_t word = 0;
        for (std::size_t bit = 0; bit < std::min<std::size_t>(64, count - i); ++bit)
            word |= std::uint64_t(stepAt(samples + i + bit, rule) != 0) << bit;
        *marks++ = word;
    }
}

void strongestStepsInColumns(const std::uint8_t* top, std::ptrdiff_t stride, int rowCount, int shiftRow,
                             StepRule rule, std::uint8_t* contrasts, std::int32_t* rows)
{
    std::fill(contrasts, contrasts + columnsAtOnce, std::uint8_t(0));
    const std::uint8_t* before = top;
    for (int row = 1; row < rowCount; ++row) {
        const std::uint8_t* now = top + row * stride + (row >= shiftRow);
        for (int column = 0; column < columnsAtOnce; ++column) {
            const std::uint8_t pair[] = {before[column], now[column]};
            const std::uint8_t contrast = stepAt(pair + 1, rule);
            if (contrast && contrast >= contrasts[column]) {
                contrasts[column] = contrast;
                rows[column] = row;
            }
        }
        before = now;
    }
}

#else

using Bytes = hn::ScalableTag<std::uint8_t>;
using Signed = hn::ScalableTag<std::int8_t>;
using Vector = hn::Vec<Bytes>;

/// The rule for samples whose top bit is turned, which signed comparisons order rightly.
struct VectorRule
{
    explicit VectorRule(StepRule rule)
        : flip(hn::Set(Bytes(), std::uint8_t(rule.flip ^ 0x80))),
          limit(hn::BitCast(Signed(), hn::Set(Bytes(), std::uint8_t(rule.limit ^ 0x80))))
    {}
    Vector load(const std::uint8_t* samples) const { return hn::Xor(hn::LoadU(Bytes(), samples), flip); }
    auto above(Vector samples) const { return hn::BitCast(Signed(), samples) > limit; }
    /// Where samples complete a step, by signed lanes.
    auto steps(Vector before, Vector now) const { return hn::AndNot(above(before), above(now)); }
    Vector contrasts(const std::uint8_t* samples) const
    {
        const Vector before = load(samples - 1), now = load(samples);
        return hn::IfThenElseZero(hn::RebindMask(Bytes(), steps(before, now)), hn::Sub(now, before));
    }

    Vector flip;
    hn::Vec<Signed> limit;
};

inline std::uint8_t largest(Vector v)
{
    HWY_ALIGN std::uint8_t lanes[HWY_MAX_BYTES];
    hn::Store(v, Bytes(), lanes);
    std::uint8_t most = 0;
    for (std::size_t i = 0; i < hn::Lanes(Bytes()); ++i)
        most = std::max(most, lanes[i]);
    return most;
}

template <class Mask>
std::uint64_t bitsOf(Mask mask)
{
    std::uint8_t bytes[8] = {};
    hn::StoreMaskBits(Bytes(), mask, bytes);
    std::uint64_t bits;
    std::memcpy(&bits, bytes, 8);
    return bits;
}

ProfileStep strongestStep(const std::uint8_t* samples, std::size_t count, StepRule rule)
{
    const std::size_t lanes = hn::Lanes(Bytes());
    if (count <= lanes)
        return strongestStepPlainly(samples, count, rule);
    const VectorRule vectors(rule);
    const std::size_t last = count - lanes; // where the last vector starts; it may overlap
    Vector most = vectors.contrasts(samples + last);
    for (std::size_t i = 1; i < last; i += lanes)
        most = hn::Max(most, vectors.contrasts(samples + i));
    const std::uint8_t contrast = largest(most);
    if (contrast == 0)
        return {0, 0};
    const Vector wanted = hn::Set(Bytes(), contrast);
    for (std::size_t i = last;; i = i > lanes ? i - lanes : 1) {
        const std::uint64_t bits = bitsOf(hn::Eq(vectors.contrasts(samples + i), wanted));
        if (bits || i == 1)
            return {contrast, i + 63 - std::size_t(__builtin_clzll(bits | 1))};
    }
}

void markSteps(const std::uint8_t* samples, std::size_t count, StepRule rule, std::uint64_t* marks)
{
    const std::size_t lanes = hn::Lanes(Bytes());
    const VectorRule vectors(rule);
    std::size_t i = 1;
    for (; i + 64 <= count; i += 64) {
        std::uint64_t word = 0;
        for (std::size_t bit = 0; bit < 64; bit += lanes) {
            const auto steps =
                vectors.steps(vectors.load(samples + i + bit - 1), vectors.load(samples + i + bit));
            word |= bitsOf(hn::RebindMask(Bytes(), steps)) << bit;
        }
        *marks++ = word;
    }
    if (i < count) {
        std::uint64_t word = 0;
        for (std::size_t bit = 0; i + bit < count; ++bit)
            word |= std::uint64_t(stepAt(samples + i + bit, rule) != 0) << bit;
        *marks = word;
    }
}

void strongestStepsInColumns(const std::uint8_t* top, std::ptrdiff_t stride, int rowCount, int shiftRow,
                             StepRule rule, std::uint8_t* contrasts, std::int32_t* rows)
{
    // Rows are kept in bytes within a block; the highest byte means that the block brought nothing better.
    constexpr int blockRows = 255;
    const Bytes d;
    const std::size_t lanes = hn::Lanes(d);
    const VectorRule vectors(rule);
    const auto none = hn::Set(d, 255), one = hn::Set(d, 1);
    for (std::size_t first = 0; first < std::size_t(columnsAtOnce); first += lanes) {
        Vector best = hn::Zero(d), before = vectors.load(top + first);
        for (int block = 1; block < rowCount; block += blockRows) {
            Vector bestRow = none, number = hn::Zero(d);
            const int end = std::min(rowCount, block + blockRows);
            for (int row = block; row < end; ++row) {
                const Vector now = vectors.load(top + row * stride + (row >= shiftRow) + first);
                const Vector contrast = hn::Sub(now, before);
                const auto better = hn::And(hn::RebindMask(d, vectors.steps(before, now)),
                                            hn::Eq(hn::Max(contrast, best), contrast));
                best = hn::IfThenElse(better, contrast, best);
                bestRow = hn::IfThenElse(better, number, bestRow);
                number = hn::Add(number, one);
                before = now;
            }
            HWY_ALIGN std::uint8_t numbers[HWY_MAX_BYTES];
            hn::Store(bestRow, d, numbers);
            for (std::size_t lane = 0; lane < lanes; ++lane)
                if (numbers[lane] != 255)
                    rows[first + lane] = block + numbers[lane];
        }
        hn::StoreU(best, d, contrasts + first);
    }
}

#endif

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(strongestStep);
ORMALUX_SIMD_TABLE(markSteps);
ORMALUX_SIMD_TABLE(strongestStepsInColumns);

ProfileStep strongestStep(const std::uint8_t* samples, std::size_t count, StepRule rule)
{
    return ORMALUX_SIMD_CALL(strongestStep)(samples, count, rule);
}

void markSteps(const std::uint8_t* samples, std::size_t count, StepRule rule, std::uint64_t* marks)
{
    ORMALUX_SIMD_CALL(markSteps)(samples, count, rule, marks);
}

void strongestStepsInColumns(const std::uint8_t* top, std::ptrdiff_t stride, int rowCount, int shiftRow,
                             StepRule rule, std::uint8_t* contrasts, std::int32_t* rows)
{
    ORMALUX_SIMD_CALL(strongestStepsInColumns)(top, stride, rowCount, shiftRow, rule, contrasts, rows);
}

} // namespace ormalux::kernels
#endif
