#pragma once

#include <cstddef>
#include <cstdint>

/// The filters of image/NamedFilters.h on padded rows, as image/RowWindow.h hands them out.
namespace ormalux::kernels {

/// Writes `count` output rows, `stride` bytes apart, at most RowWindow::maxGroupRows; source holds as many
/// rows more as the filter looks up and down.
using RowFilter = void (*)(const std::uint8_t* const* source, std::uint8_t* out, std::ptrdiff_t stride,
                           std::size_t width, int count);

/// The filter with the given index in NamedFilter, for this machine; none for Emboss.
RowFilter namedFilterRows(int index);

} // namespace ormalux::kernels
