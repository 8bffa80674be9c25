#include "ImageArrays.h"
#include "Pixels.h"

namespace ormalux::python {

void bindCKestImage(py::class_<Gray>& bound);
void bindCKestImage24(py::class_<Color>& bound);

namespace {

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
