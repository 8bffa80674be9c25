#include "Held.h"

namespace ormalux::python {

std::shared_ptr<void> keep(py::object object)
{
    PyObject* const kept = object.release().ptr();
    return {kept, [](void* last) {
                if (!Py_IsInitialized())
                    return;
                const py::gil_scoped_acquire acquired;
                Py_DECREF(static_cast<PyObject*>(last));
            }};
}

std::string pathText(const py::object& path)
{
    const py::object plain = py::reinterpret_steal<py::object>(PyOS_FSPath(path.ptr()));
    if (!plain)
        throw py::error_already_set();
    const std::string text = plain.cast<std::string>(); // of a str or bytes
    if (text.find('\0') != std::string::npos)
        throw py::value_error("a path holds a null character");
    return text;
}

py::str textOf(std::string_view text)
{
    PyObject* const made = PyUnicode_DecodeUTF8(text.data(), py::ssize_t(text.size()), "replace");
    if (!made)
        throw py::error_already_set();
    return py::reinterpret_steal<py::str>(made);
}

py::buffer_info bytesOf(const py::buffer& source, std::int64_t count)
{
    py::buffer_info info = source.request();
    py::ssize_t step = info.itemsize;
    for (py::ssize_t i = info.ndim; i-- > 0; step *= info.shape[std::size_t(i)])
        if (info.shape[std::size_t(i)] > 1 && info.strides[std::size_t(i)] != step)
            throw py::value_error("the pixels are strided: rows without gaps are needed");
    if (count < 0 || info.size * info.itemsize < count)
        throw py::value_error(std::to_string(info.size * info.itemsize) + " bytes are given, " +
                              std::to_string(count) + " needed");
    return info;
}

std::vector<long> kernelOf(const py::object& kernel, long size)
{
    if (size < 1 || size > 1024)
        throw py::value_error("a kernel of size " + std::to_string(size) + ": expected 1 to 1024");
    const auto entries = py::array_t<long, py::array::c_style>::ensure(kernel);
    if (!entries) {
        PyErr_Clear();
        throw py::type_error("a kernel holds whole numbers");
    }
    if (entries.size() != py::ssize_t(size) * size)
        throw py::value_error("a kernel of " + std::to_string(entries.size()) + " entries: expected " +
                              std::to_string(size * size));
    return {entries.data(), entries.data() + entries.size()};
}

std::vector<POINT> pointsOf(const py::object& points)
{
    std::vector<POINT> made;
    for (const py::handle& point : py::iter(points)) {
        const auto pair = py::cast<py::sequence>(point);
        if (pair.size() != 2)
            throw py::value_error("a point has two coordinates");
        made.push_back({pair[0].cast<LONG>(), pair[1].cast<LONG>()});
    }
    return made;
}

std::vector<CPlanePair> pairsOf(const py::object& pairs)
{
    std::vector<CPlanePair> made;
    for (const py::handle& pair : py::iter(pairs)) {
        if (py::isinstance<CPlanePair>(pair)) {
            made.push_back(pair.cast<CPlanePair>());
            continue;
        }
        const auto values = py::cast<py::sequence>(pair);
        if (values.size() != 4)
            throw py::value_error("a pair is x, y in the picture and X, Y in the plane");
        made.push_back({{values[0].cast<double>(), values[1].cast<double>()},
                        {values[2].cast<double>(), values[3].cast<double>()}});
    }
    return made;
}

} // namespace ormalux::python
