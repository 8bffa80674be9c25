#pragma once

#include "image/GrayView.h"

namespace ormalux {

/// An integer convolution. Entry (row, column) of size x size entries weighs the neighbour at
/// (column - size / 2, row - size / 2); nothing is mirrored. All numbers count modulo 2^32, as signed 32-bit
/// values.
///
///     out = clamp(offset + sum / divisor, 0, 255)
///
/// The quotient truncates toward 0; a divisor of 0 leaves the sum as it is. Sums, the quotient of the least
/// value by -1 and the addition of the offset wrap at 32 bits.
struct Convolution
{
    const long* entries = nullptr; ///< row by row
    long size = 0;                 ///< 1 .. maxConvolutionSize, odd or even
    long divisor = 1;
    long offset = 0;
};

/// Larger kernels are refused: one needs a million entries and seconds per megapixel, and is a slip of the
/// caller's.
inline constexpr long maxConvolutionSize = 1024;

/// Filters the picture in place; pixels outside it count as the nearest one inside. Threaded cuts the rows
/// into bands of the job kind Convolution, else everything runs on the calling thread.
///
/// False, and nothing has happened, for an empty picture, no entries, a size out of range or too little
/// memory (some rows of scratch are all that is needed).
bool filter(GrayView image, const Convolution& convolution, bool threaded);

} // namespace ormalux
