#pragma once

#include "Held.h"

/// Arrays as images and images as arrays.
namespace ormalux::python {

inline constexpr const char* readOnly = "the array is read-only: an operation cannot change it in place";

/// An image that borrows the array's pixels; of a strided array a copy that refuses to be changed.
std::unique_ptr<Gray> grayOf(const py::object& given);
/// A copy of an array of red, green, blue, or in the order "bgr".
std::unique_ptr<Color> colorOf(const py::object& given, const std::string& order);
/// Bytes that an image hands out for good.
py::array given(std::uint8_t* pixels, py::ssize_t width, py::ssize_t height, bool color);
/// The pixels in place.
py::array shown(Gray& self);
py::array shown(Color& self);
/// The same for any consumer of buffers.
py::buffer_info bufferOf(Gray& self);

} // namespace ormalux::python
