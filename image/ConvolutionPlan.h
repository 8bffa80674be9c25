#pragma once

#include "image/Filter.h"
#include "image/kernels/ConvolutionKernels.h"

#include <memory>
#include <variant>

namespace ormalux {

/// A convolution made ready for the kernel that suits its numbers: entries in bytes where the machine
/// multiplies four at once, else 16-bit sums where they are known to fit, else 32-bit sums of 16-bit
/// products, in two passes if entries need more than 16 bits.
class ConvolutionPlan
{
public:
    /// False when there is too little memory. The size must be in range.
    bool make(const Convolution& c);

    void run(const std::uint8_t* const* source, std::uint8_t* out, std::ptrdiff_t stride, std::size_t width,
             int count) const;

    /// Estimated, on one core.
    std::int64_t nanoseconds(std::int64_t pixels) const;

private:
    bool makeNarrow(const Convolution& c);
    bool makeWide(const Convolution& c);

    std::unique_ptr<std::uint32_t[]> m_words;
    std::variant<kernels::WideConvolution, kernels::NarrowConvolution> m_kernel;
};

} // namespace ormalux
