#include "Engine.h"
#include "interface/ormalux.h"

#include <string>

namespace py = pybind11;
using namespace ormalux::python;

namespace {

void requireMainInterpreter()
{
    if (PyInterpreterState_Get() != PyInterpreterState_Main())
        throw py::import_error("ormalux runs in the main interpreter alone, not in a sub-interpreter");
}

} // namespace

PYBIND11_MODULE(_core, module)
{
    requireMainInterpreter();
    const std::string library = ormalux_version();
    if (library != ORMALUX_VERSION)
        throw py::import_error("the package is of version " ORMALUX_VERSION ", the library it found of " +
                               library);
    module.doc() = "The classes of the Ormalux processing library.";
    module.attr("__version__") = library;
    module.def("require_main_interpreter", &requireMainInterpreter);
    py::class_<Gray> gray(module, "Image", py::buffer_protocol(), "An 8-bit gray image.");
    py::class_<Color> color(module, "Image24",
                            "A 24-bit colour image: blue, green and red bytes, top row first.");
    bindRecords(module);
    bindArrays(module);
    bindImages(module, gray, color);
    bindEngine(module);
}
