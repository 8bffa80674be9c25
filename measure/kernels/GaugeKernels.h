#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels that find the steps of gray profiles across a threshold.
namespace ormalux::kernels {

/// A line of pixels that has come sideways >> LineSlope::shift pixels to its side where it starts, and as
/// many as sideways + i * increment says after i steps; a step and a pixel to the side lie so many bytes
/// apart.
struct LineSlope
{
    static constexpr int shift = 42;

    std::uint64_t sideways;
    std::uint64_t increment;
    std::ptrdiff_t along;
    std::ptrdiff_t across;
};

/// Copies the line's pixels; the line's first pixel, were it not to the side, is the one given. Fewer than
/// 2^20 pixels, and no more than 2^20 to the side.
void sampleLine(const std::uint8_t* pixel, const LineSlope& line, std::size_t count, std::uint8_t* samples);

/// Which steps count: samples are exclusive-or'd with flip (0, or 255 to look for falling steps), then a
/// sample above limit behind one that is not above it completes a step.
struct StepRule
{
    std::uint8_t flip;
    std::uint8_t limit;
};

struct ProfileStep
{
    std::uint8_t contrast; ///< the rise to the completing sample; 0 when there is no step
    std::size_t index;     ///< of the completing sample
};

/// The step with the largest contrast, the last among equal ones.
ProfileStep strongestStep(const std::uint8_t* samples, std::size_t count, StepRule rule);

/// The same of a profile that changes rows: sample i is first[i] before turn, from there on second[i], 0 <
/// turn < count.
ProfileStep strongestStepOfTurn(const std::uint8_t* first, const std::uint8_t* second, std::size_t turn,
                                std::size_t count, StepRule rule);

/// Sets bit i % 64 of marks[i / 64] when samples[i + 1] completes a step, clears it otherwise; (count + 62) /
/// 64 words.
void markSteps(const std::uint8_t* samples, std::size_t count, StepRule rule, std::uint64_t* marks);

/// The widest piece of a picture that strongestStepsInColumns searches.
inline constexpr int maxColumns = 1024;

/// The strongest steps of up to maxColumns profiles that run down side by side, row by row. From shiftRow on
/// each reads the column to its right, so that one column more is read. rows gets the row of the completing
/// sample where the contrast is not 0.
void strongestStepsInColumns(const std::uint8_t* top, std::ptrdiff_t stride, int columnCount, int rowCount,
                             int shiftRow, StepRule rule, std::uint8_t* contrasts, std::int32_t* rows);

} // namespace ormalux::kernels
