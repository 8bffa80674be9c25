#include "measure/kernels/GaugeKernels.h"

#include <algorithm>
#include <cstring>
#include <utility>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/kernels/GaugeKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
using kernels::LineSlope;
using kernels::maxColumns;
using kernels::ProfileStep;
using kernels::StepRule;

inline void sampleLinePlainly(const std::uint8_t* pixel, LineSlope line, std::size_t count,
                              std::uint8_t* samples)
{
    for (; count > 0; --count, pixel += line.along, line.sideways += line.increment)
        *samples++ = pixel[std::ptrdiff_t(line.sideways >> LineSlope::shift) * line.across];
}

/// The contrast of the step between two samples, 0 for none.
inline std::uint8_t contrastOf(std::uint8_t before, std::uint8_t now, StepRule rule)
{
    const int from = before ^ rule.flip, to = now ^ rule.flip;
    return std::uint8_t(to > rule.limit && from <= rule.limit ? to - from : 0);
}

inline std::uint8_t stepAt(const std::uint8_t* sample, StepRule rule)
{
    return contrastOf(sample[-1], sample[0], rule);
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

inline ProfileStep strongestStepOfTurnPlainly(const std::uint8_t* first, const std::uint8_t* second,
                                              std::size_t turn, std::size_t count, StepRule rule)
{
    ProfileStep best = strongestStepPlainly(first, turn, rule);
    const std::uint8_t across = contrastOf(first[turn - 1], second[turn], rule);
    if (across && across >= best.contrast)
        best = {across, turn};
    const ProfileStep behind = strongestStepPlainly(second + turn, count - turn, rule);
    if (behind.contrast && behind.contrast >= best.contrast)
        best = {behind.contrast, turn + behind.index};
    return best;
}

/// What the profiles side by side have shown so far. Rows count from the start of a block and fit a byte;
/// none means that the block brought nothing better.
struct ColumnSteps
{
    static constexpr std::uint8_t none = 255;

    std::uint8_t* contrasts;
    std::uint8_t* rows;
};

inline void addRowPlainly(const std::uint8_t* before, const std::uint8_t* now, int first, int end,
                          StepRule rule, std::uint8_t row, ColumnSteps best)
{
    for (int column = first; column < end; ++column) {
        const std::uint8_t contrast = contrastOf(before[column], now[column], rule);
        if (contrast && contrast >= best.contrasts[column]) {
            best.contrasts[column] = contrast;
            best.rows[column] = row;
        }
    }
}

#if ORMALUX_PLAIN

void sampleLine(const std::uint8_t* pixel, const LineSlope& line, std::size_t count, std::uint8_t* samples)
{
    sampleLinePlainly(pixel, line, count, samples);
}

ProfileStep strongestStep(const std::uint8_t* samples, std::size_t count, StepRule rule)
{
    return strongestStepPlainly(samples, count, rule);
}

ProfileStep strongestStepOfTurn(const std::uint8_t* first, const std::uint8_t* second, std::size_t turn,
                                std::size_t count, StepRule rule)
{
    return strongestStepOfTurnPlainly(first, second, turn, count, rule);
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

inline void addRow(const std::uint8_t* before, const std::uint8_t* now, int count, StepRule rule,
                   std::uint8_t row, ColumnSteps best)
{
    addRowPlainly(before, now, 0, count, rule, row, best);
}

#else

// Where a vector of samples lies is computed together; loading them one by one is as fast as the machine's
// gather.
void sampleLine(const std::uint8_t* pixel, const LineSlope& line, std::size_t count, std::uint8_t* samples)
{
    using Offsets = hn::ScalableTag<std::int64_t>;
    using Halves = hn::ScalableTag<std::int32_t>;
    constexpr std::size_t lanes = hn::MaxLanes(Offsets());
    const Offsets d;
    const hn::RebindToUnsigned<Offsets> u;
    HWY_ALIGN std::uint64_t sideways[lanes];
    HWY_ALIGN std::int64_t offsets[lanes];
    for (std::size_t i = 0; i < lanes; ++i) {
        sideways[i] = line.sideways + i * line.increment;
        offsets[i] = std::int64_t(i) * line.along;
    }
    auto side = hn::Load(u, sideways);
    auto along = hn::Load(d, offsets);
    const auto sideStep = hn::Set(u, lanes * line.increment);
    const auto alongStep = hn::Set(d, std::int64_t(lanes) * line.along);
    const auto across = hn::Set(Halves(), std::int32_t(line.across));
    const bool fits = line.across == std::int32_t(line.across);
    std::size_t i = 0;
    for (; fits && i + lanes <= count; i += lanes) {
        const auto turns = hn::BitCast(Halves(), hn::ShiftRight<LineSlope::shift>(side));
        hn::Store(hn::MulEven(turns, across) + along, d, offsets);
        [&]<std::size_t... k>(std::index_sequence<k...>)
        {
            ((samples[i + k] = pixel[offsets[k]]), ...);
        }
        (std::make_index_sequence<lanes>());
        side = side + sideStep;
        along = along + alongStep;
    }
    sampleLinePlainly(pixel + std::ptrdiff_t(i) * line.along,
                      {line.sideways + i * line.increment, line.increment, line.along, line.across},
                      count - i, samples + i);
}

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
    const hn::Repartition<std::uint16_t, Bytes> d;
    const auto pairs = hn::BitCast(d, v);
    const auto most = hn::Max(hn::And(pairs, hn::Set(d, 255)), hn::ShiftRight<8>(pairs));
    return std::uint8_t(hn::GetLane(hn::MaxOfLanes(d, most)));
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

// The contrasts' maximum by lanes, of more samples than lanes.
inline Vector contrastMaxima(const VectorRule& rule, const std::uint8_t* samples, std::size_t count)
{
    const std::size_t lanes = hn::Lanes(Bytes());
    const std::size_t last = count - lanes; // where the last vector starts; it may overlap
    Vector most = rule.contrasts(samples + last);
    for (std::size_t i = 1; i < last; i += lanes)
        most = hn::Max(most, rule.contrasts(samples + i));
    return most;
}

// The last step of the contrast, of more samples than lanes; 0 when there is none.
inline std::size_t lastStepOf(std::uint8_t contrast, const VectorRule& rule, const std::uint8_t* samples,
                              std::size_t count)
{
    const std::size_t lanes = hn::Lanes(Bytes());
    const Vector wanted = hn::Set(Bytes(), contrast);
    for (std::size_t i = count - lanes;; i = i > lanes ? i - lanes : 1) {
        const std::uint64_t bits = bitsOf(hn::Eq(rule.contrasts(samples + i), wanted));
        if (bits)
            return i + 63 - std::size_t(__builtin_clzll(bits));
        if (i == 1)
            return 0;
    }
}

ProfileStep strongestStep(const std::uint8_t* samples, std::size_t count, StepRule rule)
{
    if (count <= hn::Lanes(Bytes()))
        return strongestStepPlainly(samples, count, rule);
    const VectorRule vectors(rule);
    const std::uint8_t contrast = largest(contrastMaxima(vectors, samples, count));
    return {contrast, contrast ? lastStepOf(contrast, vectors, samples, count) : 0};
}

ProfileStep strongestStepOfTurn(const std::uint8_t* first, const std::uint8_t* second, std::size_t turn,
                                std::size_t count, StepRule rule)
{
    const std::size_t lanes = hn::Lanes(Bytes());
    if (turn <= lanes || count - turn <= lanes)
        return strongestStepOfTurnPlainly(first, second, turn, count, rule);
    const VectorRule vectors(rule);
    const std::uint8_t across = contrastOf(first[turn - 1], second[turn], rule);
    const std::uint8_t contrast =
        std::max(across, largest(hn::Max(contrastMaxima(vectors, first, turn),
                                         contrastMaxima(vectors, second + turn, count - turn))));
    if (contrast == 0)
        return {0, 0};
    if (const std::size_t step = lastStepOf(contrast, vectors, second + turn, count - turn))
        return {contrast, turn + step};
    return {contrast, across == contrast ? turn : lastStepOf(contrast, vectors, first, turn)};
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

inline void addRow(const std::uint8_t* before, const std::uint8_t* now, int count, StepRule rule,
                   std::uint8_t row, ColumnSteps best)
{
    const Bytes d;
    const int lanes = int(hn::Lanes(d));
    if (count < lanes)
        return addRowPlainly(before, now, 0, count, rule, row, best);
    const VectorRule vectors(rule);
    const auto number = hn::Set(d, row);
    for (int column = 0; column < count; column += lanes) {
        column = std::min(column, count - lanes); // columns seen twice stay as they are
        const Vector from = vectors.load(before + column), to = vectors.load(now + column);
        const auto steps = hn::RebindMask(d, vectors.steps(from, to));
        if (hn::AllFalse(d, steps))
            continue;
        const Vector contrast = hn::Sub(to, from), most = hn::LoadU(d, best.contrasts + column);
        const auto better = hn::And(steps, hn::Eq(hn::Max(contrast, most), contrast));
        hn::StoreU(hn::IfThenElse(better, contrast, most), d, best.contrasts + column);
        const Vector rows = hn::LoadU(d, best.rows + column);
        hn::StoreU(hn::IfThenElse(better, number, rows), d, best.rows + column);
    }
}

#endif

void strongestStepsInColumns(const std::uint8_t* top, std::ptrdiff_t stride, int columnCount, int rowCount,
                             int shiftRow, StepRule rule, std::uint8_t* contrasts, std::int32_t* rows)
{
    constexpr int blockRows = ColumnSteps::none;
    std::uint8_t rowsInBlock[maxColumns];
    std::fill(contrasts, contrasts + columnCount, std::uint8_t(0));
    const std::uint8_t* before = top;
    for (int block = 1; block < rowCount; block += blockRows) {
        std::fill(rowsInBlock, rowsInBlock + columnCount, ColumnSteps::none);
        const int end = std::min(rowCount, block + blockRows);
        for (int row = block; row < end; ++row) {
            const std::uint8_t* now = top + row * stride + (row >= shiftRow);
            addRow(before, now, columnCount, rule, std::uint8_t(row - block), {contrasts, rowsInBlock});
            before = now;
        }
        for (int column = 0; column < columnCount; ++column)
            if (rowsInBlock[column] != ColumnSteps::none)
                rows[column] = block + rowsInBlock[column];
    }
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(sampleLine);
ORMALUX_SIMD_TABLE(strongestStep);
ORMALUX_SIMD_TABLE(strongestStepOfTurn);
ORMALUX_SIMD_TABLE(markSteps);
ORMALUX_SIMD_TABLE(strongestStepsInColumns);

void sampleLine(const std::uint8_t* pixel, const LineSlope& line, std::size_t count, std::uint8_t* samples)
{
    ORMALUX_SIMD_CALL(sampleLine)(pixel, line, count, samples);
}

ProfileStep strongestStep(const std::uint8_t* samples, std::size_t count, StepRule rule)
{
    return ORMALUX_SIMD_CALL(strongestStep)(samples, count, rule);
}

ProfileStep strongestStepOfTurn(const std::uint8_t* first, const std::uint8_t* second, std::size_t turn,
                                std::size_t count, StepRule rule)
{
    return ORMALUX_SIMD_CALL(strongestStepOfTurn)(first, second, turn, count, rule);
}

void markSteps(const std::uint8_t* samples, std::size_t count, StepRule rule, std::uint64_t* marks)
{
    ORMALUX_SIMD_CALL(markSteps)(samples, count, rule, marks);
}

void strongestStepsInColumns(const std::uint8_t* top, std::ptrdiff_t stride, int columnCount, int rowCount,
                             int shiftRow, StepRule rule, std::uint8_t* contrasts, std::int32_t* rows)
{
    ORMALUX_SIMD_CALL(strongestStepsInColumns)
    (top, stride, columnCount, rowCount, shiftRow, rule, contrasts, rows);
}

} // namespace ormalux::kernels
#endif
