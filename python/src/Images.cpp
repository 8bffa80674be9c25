#include "Pixels.h"

#include <climits>
#include <cstring>

namespace ormalux::python {

void bindCKestImage(py::class_<Gray>& bound);
void bindCKestImage24(py::class_<Color>& bound);

namespace {

constexpr const char* readOnly = "the array is read-only: an operation cannot change it in place";
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

bool isBgr(const std::string& order)
{
    if (order != "rgb" && order != "bgr")
        throw py::value_error("order " + order + ": expected rgb or bgr");
    return order == "bgr";
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

/// Bytes that an image hands out for good.
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

template <class Held>
Held* assign(Held& self, const Held& other)
{
    std::shared_ptr<void> old;
    operate(std::array<Use, 2>{changes(self), reads(other)}, [&] {
        if (&self == &other)
            return;
        *self.image = *other.image;
        old = std::move(self.keeper);
        self.keeper = nullptr;
        self.kept = nullptr;
        self.frozen = nullptr;
    });
    return &self;
}

template <class Held>
std::unique_ptr<Held> copyOf(const Held& other)
{
    auto made = std::make_unique<Held>();
    operate(std::array<Use, 1>{reads(other)}, [&] { *made->image = *other.image; });
    return made;
}

std::int64_t bytesFor(bool color, int width, int height)
{
    return width < 0 || height < 0 ? 0 : std::int64_t(color ? paddedStride(width) : width) * height;
}

/// What images of both kinds have in common; docs come from the headers for everything else.
template <class Held>
void bindPixels(py::class_<Held>& bound, bool color)
{
    bound.def(py::init<>());
    bound.def(py::init([](const Held& other) { return copyOf(other); }), py::arg("other"));
    bound.def("__copy__", [](const Held& self) { return copyOf(self); });
    bound.def("__deepcopy__", [](const Held& self, const py::object&) { return copyOf(self); });
    bound.def("assign", &assign<Held>, py::arg("other"), "Becomes a deep copy of the other image.");
    bound.def(
        "__array__",
        [](Held& self, const py::object& dtype, const py::object& copy) -> py::object {
            const py::array array = shown(self);
            if (!dtype.is_none() && !py::dtype::from_args(dtype).equal(array.dtype()))
                return array.attr("astype")(dtype);
            if (!copy.is_none() && copy.cast<bool>())
                return array.attr("copy")();
            return array;
        },
        py::arg("dtype") = py::none(), py::arg("copy") = py::none(),
        "The pixels in place: what either changes the other sees.");
    bound.def(
        "set_image_ptr",
        [color](Held& self, int width, int height, const py::buffer& pixels) {
            const py::buffer_info info = bytesOf(pixels, bytesFor(color, width, height));
            replaced(self, [&](auto& image) {
                image.SetImagePtr(width, height, static_cast<std::uint8_t*>(info.ptr));
                return 0;
            });
        },
        py::arg("width"), py::arg("height"), py::arg("pixels"),
        "A copy of the bytes of rows, top row first; those of a colour image are padded to 4 bytes.");
    bound.def(
        "set_image_ptr_link",
        [color](Held& self, int width, int height, const py::buffer& pixels) {
            auto info = std::make_unique<py::buffer_info>(bytesOf(pixels, bytesFor(color, width, height)));
            std::uint8_t* const bytes = static_cast<std::uint8_t*>(info->ptr);
            std::shared_ptr<void> owner(info.release(), [](void* last) {
                const py::gil_scoped_acquire acquired;
                delete static_cast<py::buffer_info*>(last);
            });
            const char* const frozen =
                static_cast<py::buffer_info*>(owner.get())->readonly ? readOnly : nullptr;
            operate(std::array<Use, 1>{changes(self)}, [&] {
                self.image->SetImagePtrLink(width, height, bytes);
                std::swap(self.keeper, owner); // the old one is let go of unlocked
                self.kept = bytes;
                self.frozen = frozen;
            });
        },
        py::arg("width"), py::arg("height"), py::arg("pixels"),
        "Borrows the bytes of any object with a buffer and keeps it alive; no copy.");
    bound.def(
        "set_empty",
        [](Held& self) {
            replaced(self, [](auto& image) {
                image.SetEmpty();
                return 0;
            });
        },
        "Lets go of the pixels; width, height and length become 0.");
    bound.def(
        "load_image",
        [](Held& self, const py::object& path) {
            const std::string name = pathText(path);
            return replaced(self, [&](auto& image) { return image.LoadImage(name.c_str()); });
        },
        py::arg("path"), "Reads a BMP of the image's depth. Returns 1, or 0 on failure.");
    bound.def(
        "get_image_ptr",
        [color](const Held& self, int x1, int y1, int x2, int y2) -> py::object {
            std::uint8_t* const pixels =
                operate(std::array<Use, 1>{reads(self)}, [&] { return (*self).GetImagePtr(x1, y1, x2, y2); });
            if (!pixels)
                return py::none();
            return given(pixels, std::abs(py::ssize_t(x2) - x1) + 1, std::abs(py::ssize_t(y2) - y1) + 1,
                         color);
        },
        py::arg("x1"), py::arg("y1"), py::arg("x2"), py::arg("y2"),
        "A new array of the rectangle, corners included; None when it leaves the image.");
    bound.def(
        "paint_image",
        [](const Held&, const py::args&) {
            PyErr_SetString(PyExc_NotImplementedError, "painting needs the display module");
            throw py::error_already_set();
        },
        "Not to be had here: painting needs the display module.");
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

py::object adopt(CKestImage* image)
{
    if (!image)
        throw std::bad_alloc();
    auto made = std::make_unique<Gray>();
    made->image.reset(image);
    return py::cast(std::move(made));
}

py::object adopt(CKestImage24* image)
{
    if (!image)
        throw std::bad_alloc();
    auto made = std::make_unique<Color>();
    made->image.reset(image);
    return py::cast(std::move(made));
}

void bindImages(py::module_&, py::class_<Gray>& gray, py::class_<Color>& color)
{
    bindPixels(gray, false);
    gray.def_buffer(&bufferOf);
    gray.def(py::init([](int width, int height) {
                 auto made = std::make_unique<Gray>();
                 made->image->SetImagePtr(width, height);
                 return made;
             }),
             py::arg("width"), py::arg("height"));
    gray.def(py::init(&grayOf), py::arg("array"));
    gray.def(py::init([](int width, int height, const py::buffer& pixels) {
                 auto made = std::make_unique<Gray>();
                 const py::buffer_info info = bytesOf(pixels, bytesFor(false, width, height));
                 made->image->SetImagePtr(width, height, static_cast<std::uint8_t*>(info.ptr));
                 return made;
             }),
             py::arg("width"), py::arg("height"), py::arg("pixels"));
    const auto deep = [](CKestImage& image, int width, int height, int bits, const py::buffer& pixels,
                         const std::string& channels) {
        const std::int64_t bytes = std::int64_t(std::max(bits, 0)) / 8 * bytesFor(false, width, height);
        const py::buffer_info info = bytesOf(pixels, bytes);
        image.SetImagePtr(width, height, bits, static_cast<std::uint8_t*>(info.ptr), channels.c_str());
    };
    gray.def(py::init([deep](int width, int height, int bits, const py::buffer& pixels,
                             const std::string& channels) {
                 auto made = std::make_unique<Gray>();
                 deep(*made->image, width, height, bits, pixels, channels);
                 return made;
             }),
             py::arg("width"), py::arg("height"), py::arg("bits_per_pixel"), py::arg("pixels"),
             py::arg("channels"));
    gray.def(
        "set_image_ptr",
        [](Gray& self, int width, int height) {
            replaced(self, [&](CKestImage& image) {
                image.SetImagePtr(width, height);
                return 0;
            });
        },
        py::arg("width"), py::arg("height"), "A black image.");
    gray.def(
        "set_image_ptr",
        [deep](Gray& self, int width, int height, int bits, const py::buffer& pixels,
               const std::string& channels) {
            CKestImage made;
            deep(made, width, height, bits, pixels, channels);
            replaced(self, [&](CKestImage& image) {
                image = made;
                return 0;
            });
        },
        py::arg("width"), py::arg("height"), py::arg("bits_per_pixel"), py::arg("pixels"),
        py::arg("channels"), "A gray image from 8-, 24- or 32-bit pixels, rows top-down and unpadded.");
    bindPixels(color, true);
    color.def(py::init(&colorOf), py::arg("array"), py::arg("order") = "rgb");
    color.def(py::init([](int width, int height, const py::buffer& pixels) {
                  auto made = std::make_unique<Color>();
                  const py::buffer_info info = bytesOf(pixels, bytesFor(true, width, height));
                  made->image->SetImagePtr(width, height, static_cast<std::uint8_t*>(info.ptr));
                  return made;
              }),
              py::arg("width"), py::arg("height"), py::arg("pixels"));
    bindCKestImage(gray);
    bindCKestImage24(color);
}

} // namespace ormalux::python
