#include "ImageArrays.h"

#include "Pixels.h"

#include <climits>

namespace ormalux::python {

namespace {

constexpr const char* strided = "the array is strided: an operation cannot change it in place";

void requireBytes(const py::array& array)
{
    if (!py::isinstance<py::array_t<std::uint8_t>>(array))
        throw py::type_error("an array of " + std::string(py::str(array.dtype())) + ": expected uint8");
}

void requireSize(py::ssize_t width, py::ssize_t height, py::ssize_t bytesPerPixel)
{
    const py::ssize_t row = bytesPerPixel == 1 ? width : paddedStride(width);
    if (width > INT_MAX / 4 || height > INT_MAX || (height > 0 && row > INT_MAX / height))
        throw py::value_error("a picture of " + std::to_string(width) + " x " + std::to_string(height) +
                              " pixels is too large");
}

template <class Bytes>
py::capsule capsuleOf(std::shared_ptr<Bytes> keeper)
{
    return py::capsule(new std::shared_ptr<void>(std::move(keeper)),
                       [](void* last) { delete static_cast<std::shared_ptr<void>*>(last); });
}

bool isBgr(const std::string& order)
{
    if (order != "rgb" && order != "bgr")
        throw py::value_error("order " + order + ": expected rgb or bgr");
    return order == "bgr";
}

} // namespace

py::array asArray(const py::object& object)
{
    if (py::isinstance<py::array>(object))
        return py::reinterpret_borrow<py::array>(object);
    if (!PyObject_CheckBuffer(object.ptr()) && !py::hasattr(object, "__array__") &&
        !py::hasattr(object, "__array_interface__"))
        throw py::type_error("expected an array or an object with a buffer, not " +
                             std::string(py::str(py::type::of(object).attr("__name__"))));
    const py::array array = py::array::ensure(object);
    if (!array)
        throw py::error_already_set();
    return array;
}

std::unique_ptr<Gray> grayOf(const py::object& given)
{
    const py::array array = asArray(given);
    requireBytes(array);
    if (array.ndim() != 2)
        throw py::value_error("a gray picture has 2 dimensions, the array " + std::to_string(array.ndim()));
    const py::ssize_t height = array.shape(0), width = array.shape(1);
    requireSize(width, height, 1);
    auto made = std::make_unique<Gray>();
    if (array.size() == 0)
        return made;
    auto* const pixels = static_cast<std::uint8_t*>(const_cast<void*>(array.data()));
    if ((array.strides(1) == 1 || width == 1) && (array.strides(0) == width || height == 1)) {
        made->image->SetImagePtrLink(int(width), int(height), pixels);
        made->keeper = keep(array);
        made->kept = pixels;
        made->frozen = array.writeable() ? nullptr : readOnly;
        return made;
    }
    if (!made->image->SetSizeForOverwrite(int(width), int(height)))
        throw std::bad_alloc();
    const GrayView to = made->image->view();
    for (py::ssize_t y = 0; y < height; ++y)
        for (py::ssize_t x = 0; x < width; ++x)
            to.row(int(y))[x] = pixels[y * array.strides(0) + x * array.strides(1)];
    made->frozen = strided;
    return made;
}

std::unique_ptr<Color> colorOf(const py::object& given, const std::string& order)
{
    const int red = isBgr(order) ? 2 : 0;
    const py::array array = asArray(given);
    requireBytes(array);
    if (array.ndim() != 3 || (array.shape(2) != 3 && array.shape(2) != 4))
        throw py::value_error("a colour picture is an array of height x width x 3 or 4");
    const py::ssize_t height = array.shape(0), width = array.shape(1);
    requireSize(width, height, 3);
    auto made = std::make_unique<Color>();
    if (array.size() == 0)
        return made;
    const std::shared_ptr<std::uint8_t[]> buffer(
        new std::uint8_t[std::size_t(paddedStride(width) * height)]());
    const auto* const pixels = static_cast<const std::uint8_t*>(array.data());
    const py::ssize_t rows = array.strides(0), columns = array.strides(1), channels = array.strides(2);
    {
        const py::gil_scoped_release released;
        std::uint8_t* to = buffer.get();
        for (py::ssize_t y = 0; y < height; ++y)
            for (py::ssize_t x = 0; x < width; ++x, to += 3) {
                const std::uint8_t* const from = pixels + y * rows + x * columns;
                to[0] = from[(2 - red) * channels];
                to[1] = from[channels];
                to[2] = from[red * channels];
            }
    }
    made->image->SetImagePtrLink(int(width), int(height), buffer.get());
    made->keeper = buffer;
    made->kept = buffer.get();
    return made;
}

py::array given(std::uint8_t* pixels, py::ssize_t width, py::ssize_t height, bool color)
{
    const std::shared_ptr<std::uint8_t[]> owner(pixels);
    return color ? py::array_t<std::uint8_t>({height, width, py::ssize_t(3)},
                                             {3 * width, py::ssize_t(3), py::ssize_t(-1)}, pixels + 2,
                                             capsuleOf(owner))
                 : py::array_t<std::uint8_t>({height, width}, {width, py::ssize_t(1)}, pixels,
                                             capsuleOf(owner));
}

py::array shown(Gray& self)
{
    const auto [view, keeper, frozen] = sharedPixels(self);
    if (view.empty())
        return py::array_t<std::uint8_t>(std::vector<py::ssize_t>{0, 0});
    py::array array =
        py::array_t<std::uint8_t>({py::ssize_t(view.height), py::ssize_t(view.width)},
                                  {view.stride, py::ssize_t(1)}, view.pixels, capsuleOf(keeper));
    if (frozen)
        array.attr("setflags")(false);
    return array;
}

py::array shown(Color& self)
{
    const auto [view, keeper, frozen] = sharedPixels(self);
    if (view.empty())
        return py::array_t<std::uint8_t>(std::vector<py::ssize_t>{0, 0, 3});
    const py::ssize_t width = view.width;
    return py::array_t<std::uint8_t>({py::ssize_t(view.height), width, py::ssize_t(3)},
                                     {3 * width, py::ssize_t(3), py::ssize_t(-1)}, view.pixels + 2,
                                     capsuleOf(keeper));
}

py::buffer_info bufferOf(Gray& self)
{
    const auto [view, keeper, frozen] = sharedPixels(self);
    if (view.empty())
        return {static_cast<std::uint8_t*>(nullptr), {0, 0}, {1, 1}};
    if (self.pinned.empty() || self.pinned.back() != keeper)
        self.pinned.push_back(keeper);
    return {view.pixels,
            {py::ssize_t(view.height), py::ssize_t(view.width)},
            {view.stride, py::ssize_t(1)},
            frozen != nullptr};
}

} // namespace ormalux::python
