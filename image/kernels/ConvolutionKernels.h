#pragma once

#include <cstddef>
#include <cstdint>

/// Convolutions on padded rows, as image/RowWindow.h hands them out: source[0] is the row size / 2 above the
/// first output row. `count` output rows, at most RowWindow::maxGroupRows, lie `stride` bytes apart.
namespace ormalux::kernels {

/// A convolution whose sums, with `bias` added, are known to fit 16 bits without a sign.
struct NarrowConvolution
{
    /// Entry (row, column), twice in one word, at column x size + row.
    const std::uint32_t* taps;
    int size;
    std::uint16_t bias;
    /// The quotient is value x multiplier / 2^(16 + shift) for positive and negative sums alike; a multiplier
    /// of 0 leaves the value.
    std::uint16_t multiplier;
    int shift;
    /// The offset's positive and negative part.
    std::uint16_t up;
    std::uint16_t down;
    /// Whether values or the offset may be negative.
    bool isSigned;
};

/// How sums of 32 bits are divided.
enum class Quotient
{
    None,   ///< by 1 or not at all
    Negate, ///< by -1, wrapping
    Float,  ///< sums below 2^22: by the single-precision reciprocal
    Double  ///< by the double-precision reciprocal
};

/// Any convolution; sums wrap at 32 bits.
struct WideConvolution
{
    /// Pairs of entries as two 16-bit numbers in one word, at pair x size + row. Pair 2 g takes the columns 4
    /// g and 4 g + 2, pair 2 g + 1 the columns 4 g + 1 and 4 g + 3. Entries are low + 65536 x high; high is
    /// null when all entries fit 16 bits.
    const std::uint32_t* low;
    const std::uint32_t* high;
    /// Where all entries fit a signed byte: four neighbours of a row in one word, the columns from 4 g on at
    /// g x size + row. Else null.
    const std::uint32_t* bytes;
    int size;
    Quotient quotient;
    /// Of the divisor, rounded away from 0.
    double reciprocal;
    std::int32_t offset;
};

void convolve(const NarrowConvolution& c, const std::uint8_t* const* source, std::uint8_t* out,
              std::ptrdiff_t stride, std::size_t width, int count);
void convolve(const WideConvolution& c, const std::uint8_t* const* source, std::uint8_t* out,
              std::ptrdiff_t stride, std::size_t width, int count);

} // namespace ormalux::kernels
