#pragma once

#include "Held.h"

#include <cstring>

/// What every record class of the module offers beside its fields.
namespace ormalux::python {

inline void bindEnumerations(py::module_& module)
{
    py::enum_<CEdgePolarity>(module, "EdgePolarity",
                             "Which way an edge goes, seen from where its scan starts.")
        .value("DARK_BRIGHT", CEdgePolarity::DarkBright)
        .value("BRIGHT_DARK", CEdgePolarity::BrightDark)
        .value("ANY", CEdgePolarity::Any);
    py::enum_<CEdgeSelect>(module, "EdgeSelect", "Which of the edges along a scan are taken.")
        .value("ALL", CEdgeSelect::All)
        .value("FIRST", CEdgeSelect::First)
        .value("LAST", CEdgeSelect::Last)
        .value("STRONGEST", CEdgeSelect::Strongest);
    py::implicitly_convertible<int, CEdgePolarity>();
    py::implicitly_convertible<int, CEdgeSelect>();
}

/// Conversion from tuples, lists and records of structured arrays, and into tuples; equality; a text.
template <class Record, class ToTuple>
void completeRecord(py::class_<Record>& record, const char* name, std::vector<const char*> fields,
                    ToTuple toTuple)
{
    record.def(py::init([type = py::handle(record), fields](const py::sequence& values) {
        if (py::isinstance<py::str>(values) || values.size() != fields.size())
            throw py::type_error("expected " + std::to_string(fields.size()) + " values");
        py::object made = py::reinterpret_borrow<py::object>(type)();
        for (std::size_t i = 0; i < fields.size(); ++i) {
            py::object value = values[i];
            if (py::hasattr(value, "item"))
                value = value.attr("item")();
            made.attr(fields[i]) = value;
        }
        return made.cast<Record>();
    }));
    record.def("__iter__", [toTuple](const Record& self) { return py::iter(toTuple(self)); });
    record.def("__len__", [n = fields.size()](const Record&) { return n; });
    record.def("__eq__", [toTuple, record = py::handle(record)](const Record& self, const py::object& other) {
        if (py::isinstance<Record>(other))
            return toTuple(self).equal(toTuple(other.cast<const Record&>()));
        return py::isinstance<py::tuple>(other) && toTuple(self).equal(other);
    });
    record.def("__repr__", [toTuple, name, fields](const Record& self) {
        const py::tuple values = toTuple(self);
        std::string text = std::string(name) + "(";
        for (std::size_t i = 0; i < fields.size(); ++i)
            text += (i ? ", " : "") + std::string(fields[i]) + "=" + std::string(py::repr(values[i]));
        return text + ")";
    });
    record.def(py::pickle([toTuple](const Record& self) { return py::tuple(toTuple(self)); },
                          [type = py::handle(record), fields](const py::tuple& values) {
                              py::object made = py::reinterpret_borrow<py::object>(type)(*values);
                              return made.cast<Record>();
                          }));
    py::implicitly_convertible<py::tuple, Record>();
    py::implicitly_convertible<py::list, Record>();
    if constexpr (requires(Record r) { r.data; })
        record.def_property_readonly(
            "data",
            [](const Record& self) -> py::object {
                if (!self.data)
                    return py::none();
                py::array_t<std::uint8_t> pixels({py::ssize_t(self.height), py::ssize_t(self.width)});
                std::memcpy(pixels.mutable_data(), self.data, std::size_t(pixels.size()));
                return pixels;
            },
            "The pixels, 0 or 255, copied.");
}

} // namespace ormalux::python
