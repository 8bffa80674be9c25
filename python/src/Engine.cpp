#include "Engine.h"
#include "Pixels.h"
#include "platform/Stdlib.h"
#include "steps/Frame.h"

namespace ormalux::python {

void bindCKestPlaneScale(py::class_<Held<CKestPlaneScale>>& bound);
void bindCKestInspection(py::class_<Inspection>& bound);
void bindCKestRecipe(py::class_<Held<CKestRecipe>>& bound);
void bindCStdlib(py::class_<Held<CStdlib>>& bound);

namespace {

/// A picture in an array, in a form that the engine reads in place.
struct Frame
{
    py::array array;
    FrameSource source;
    bool swapped = false; ///< red, green, blue and alpha, which the engine has no name for
};

[[noreturn]] void refuseType(const py::array& array)
{
    throw py::type_error("an array of " + std::string(py::str(array.dtype())) +
                         ": expected uint8, or uint16 for gray");
}

Frame frameOf(const py::object& given, int bits, bool bgr)
{
    if (bits < 8 || bits > 16)
        throw py::value_error("bits: " + std::to_string(bits) + ": expected 8 to 16");
    Frame frame{asArray(given), {}};
    const bool deep = py::isinstance<py::array_t<std::uint16_t>>(frame.array);
    if (!deep && !py::isinstance<py::array_t<std::uint8_t>>(frame.array))
        refuseType(frame.array);
    const py::ssize_t dimensions = frame.array.ndim();
    const py::ssize_t channels = dimensions == 3 ? frame.array.shape(2) : 1;
    if (deep && dimensions != 2)
        refuseType(frame.array);
    if (dimensions != 2 && (dimensions != 3 || (channels != 3 && channels != 4)))
        throw py::value_error("a picture is an array of height x width, or x 3 or 4 for colours");
    const py::ssize_t height = frame.array.shape(0), width = frame.array.shape(1);
    const py::ssize_t pixel = frame.array.itemsize() * channels;
    if (width > (1 << 29) || height > (1 << 29))
        throw py::value_error("the picture is too large");
    const bool tightRows = (frame.array.strides(1) == pixel || width == 1) &&
                           (channels == 1 || frame.array.strides(2) == 1) &&
                           (std::abs(frame.array.strides(0)) >= width * pixel || height == 1);
    if (!tightRows)
        frame.array = py::module_::import("numpy").attr("ascontiguousarray")(frame.array);
    frame.swapped = channels == 4 && !bgr;
    frame.source = {frame.array.data(),
                    int(width),
                    int(height),
                    frame.array.strides(0),
                    deep            ? PixelFormat::Gray16
                    : channels == 1 ? PixelFormat::Gray8
                    : channels == 4 ? PixelFormat::Bgra32
                    : bgr           ? PixelFormat::Bgr24
                                    : PixelFormat::Rgb24,
                    deep && bits == 8 ? 0 : bits};
    return frame;
}

/// Red, green and blue of rows with alpha.
std::vector<std::uint8_t> withoutAlpha(FrameSource& source)
{
    std::vector<std::uint8_t> bytes(3 * std::size_t(source.width) * std::size_t(source.height));
    std::uint8_t* to = bytes.data();
    for (int y = 0; y < source.height; ++y) {
        const auto* from = static_cast<const std::uint8_t*>(source.pixels) + y * source.stride;
        for (int x = 0; x < source.width; ++x, from += 4, to += 3) {
            to[0] = from[0];
            to[1] = from[1];
            to[2] = from[2];
        }
    }
    source = {
        bytes.data(), source.width, source.height, 3 * std::ptrdiff_t(source.width), PixelFormat::Rgb24, 8};
    return bytes;
}

int runFrame(const Held<CKestRecipe>& recipe, FrameSource source, bool swapped, std::shared_ptr<void> owner,
             Inspection& result)
{
    return operate(std::array<Use, 2>{reads(recipe), changes(result)}, [&] {
        std::vector<std::uint8_t> bytes;
        if (swapped && source.pixels)
            bytes = withoutAlpha(source);
        const int verdict = (*recipe).Run(source, *result);
        std::swap(result.source, owner); // the array before is let go of unlocked
        return verdict;
    });
}

int runArray(const Held<CKestRecipe>& recipe, const py::object& array, int bits, bool bgr, Inspection& result)
{
    const Frame frame = frameOf(array, bits, bgr);
    return runFrame(recipe, frame.source, frame.swapped, keep(frame.array), result);
}

int runGray(const Held<CKestRecipe>& recipe, Gray& image, Inspection& result)
{
    const auto [view, keeper, frozen] = sharedPixels(image);
    return runFrame(recipe, {view.pixels, view.width, view.height, view.stride, PixelFormat::Gray8, 8}, false,
                    keeper, result);
}

int runColor(const Held<CKestRecipe>& recipe, Color& image, Inspection& result)
{
    const auto [view, keeper, frozen] = sharedPixels(image);
    const std::ptrdiff_t stride = 3 * std::ptrdiff_t(view.width);
    return runFrame(recipe, {view.pixels, view.width, view.height, stride, PixelFormat::Bgr24, 8}, false,
                    keeper, result);
}

template <class Object>
Object* takeOver(Object& self, Object& other)
{
    std::shared_ptr<void> old;
    operate(std::array<Use, 2>{changes(self), changes(other)}, [&] {
        if (&self == &other)
            return;
        *self = std::move(*other);
        if constexpr (std::is_same_v<Object, Inspection>) {
            old = std::move(self.source);
            self.source = std::move(other.source);
        }
    });
    return &self;
}

} // namespace

void bindEngine(py::module_& module)
{
    py::class_<Held<CKestPlaneScale>> scale(module, "PlaneScale");
    py::class_<Inspection> inspection(module, "Inspection");
    py::class_<Held<CKestRecipe>> recipe(module, "Recipe");
    py::class_<Held<CStdlib>> library(module, "Stdlib");
    scale.def(py::init<>());
    inspection.def(py::init<>());
    recipe.def(py::init<>());
    bindCKestPlaneScale(scale);
    bindCKestInspection(inspection);
    bindCKestRecipe(recipe);
    bindCStdlib(library);
    recipe.def("assign", &takeOver<Held<CKestRecipe>>, py::arg("other"),
               "Takes over the other recipe, which is then without steps.");
    inspection.def("assign", &takeOver<Inspection>, py::arg("other"),
                   "Takes over what the other found; that is then empty.");
    recipe.def("run", &runGray, py::arg("image"), py::arg("result"),
               "Inspects an image. Returns the verdict: 1 pass, 0 fail, -1 error.");
    recipe.def("run", &runColor, py::arg("image"), py::arg("result"));
    recipe.def("run_array", &runArray, py::arg("array"), py::arg("bits"), py::arg("bgr"), py::arg("result"),
               "The same for an array, which is read in place where its rows are contiguous.");
}

} // namespace ormalux::python
