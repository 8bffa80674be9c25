#include "Engine.h"
#include "platform/Stdlib.h"

#include <cstring>
#include <optional>

namespace ormalux::python {

#define ORMALUX_ARRAYS(of)                                                                                   \
    of(CBlobRectArray, _stBlobRect) of(CMatchSrcArray, _stMatchSource) of(CMatchResultArray, _stMatchResult) \
        of(CPixelArray, _stPixel) of(CColorPixelArray, _stColorPixel)                                        \
            of(CColorPixelExArray, _stColorPixelEx) of(CPixelBunchArray, _stPixelBunch)                      \
                of(CPointArray, POINT) of(CRectArray, RECT) of(CSizeArray, SIZE) of(CLongArray, LONG)        \
                    of(CUShortArray, std::uint16_t) of(CSortByteArray, std::uint8_t)                         \
                        of(CDoubleArray, double)

#define ORMALUX_DECLARE(Array, Record) void bind##Array(py::class_<Held<Array>>& bound);
ORMALUX_ARRAYS(ORMALUX_DECLARE)
ORMALUX_DECLARE(CSortStringArray, CString)
ORMALUX_DECLARE(CPointArrayArray, CPointArray)

namespace {

template <class Record>
py::object objectOf(Record&& record)
{
    if constexpr (std::is_same_v<Record, CPointArray>)
        return py::cast(std::make_unique<Held<CPointArray>>(std::move(record)));
    else if constexpr (std::is_same_v<Record, CString>)
        return textOf(record);
    else
        return py::cast(std::move(record));
}

template <class Record>
Record recordOf(const py::handle& given)
{
    try {
        if constexpr (std::is_same_v<Record, CPointArray>)
            return *given.cast<const Held<CPointArray>&>();
        else
            return given.cast<Record>();
    } catch (const py::cast_error&) {
        throw py::type_error("not a record of this array: " + std::string(py::repr(given)));
    }
}

template <class Array, class Record>
py::array_t<Record> copied(const Held<Array>& self)
{
    // Room is made unlocked; other threads may add records meanwhile.
    for (std::size_t count = 0;;) {
        py::array_t<Record> array{py::ssize_t(count)};
        const std::shared_lock guard(self.lock);
        const auto records = (*self).records();
        if (count == records.size()) {
            if (count > 0)
                std::memcpy(array.mutable_data(), records.data(), count * sizeof(Record));
            return array;
        }
        count = records.size();
    }
}

template <class Array, class Record>
void append(Array& array, Record record)
{
    const auto added = array.appendForOverwrite(1);
    if (added.empty())
        throw std::bad_alloc();
    added[0] = std::move(record);
}

std::size_t place(py::ssize_t index, std::size_t count)
{
    if (index < 0)
        index += py::ssize_t(count);
    if (index < 0 || std::size_t(index) >= count)
        throw py::index_error("index out of range");
    return std::size_t(index);
}

/// What every record array has; its own members follow.
template <class Array, class Record>
py::class_<Held<Array>> bindArray(py::module_& module, const char* name)
{
    using Own = Held<Array>;
    constexpr bool plain = !std::is_same_v<Record, CPointArray> && !std::is_same_v<Record, CString>;
    py::class_<Own> bound(module, name);
    bound.def(py::init<>());
    bound.def(py::init([](int capacity) { return std::make_unique<Own>(Array(capacity)); }),
              py::arg("capacity"));
    bound.def(py::init([](const Own& other) {
                  return operate(std::array<Use, 1>{reads(other)},
                                 [&] { return std::make_unique<Own>(Array(*other)); });
              }),
              py::arg("other"));
    if constexpr (plain && !std::is_same_v<Record, _stMatchSource>)
        bound.def(py::init([](const py::array& records) {
                      const auto given = py::array_t<Record, py::array::c_style>::ensure(records);
                      if (!given || given.ndim() != 1) {
                          PyErr_Clear();
                          throw py::type_error("expected one dimension of " +
                                               std::string(py::str(py::dtype::of<Record>())) + ", not " +
                                               std::string(py::str(records.dtype())));
                      }
                      auto made = std::make_unique<Own>();
                      auto added = made->value.appendForOverwrite(std::size_t(given.size()));
                      if (added.size() != std::size_t(given.size()))
                          throw std::bad_alloc();
                      if (given.size() > 0)
                          std::memcpy(static_cast<void*>(added.data()), given.data(),
                                      std::size_t(given.nbytes()));
                      return made;
                  }),
                  py::arg("records"));
    if constexpr (!std::is_same_v<Record, _stMatchSource>)
        bound.def(py::init([](const py::iterable& records) {
                      auto made = std::make_unique<Own>();
                      for (const py::handle& record : records)
                          append(made->value, recordOf<Record>(record));
                      return made;
                  }),
                  py::arg("records"));
    bound.def(
        "assign",
        [](Own& self, const Own& other) {
            operate(std::array<Use, 2>{changes(self), reads(other)}, [&] { *self = *other; });
            return &self;
        },
        py::arg("other"), "Becomes a deep copy of the other array.");
    bound.def("__copy__", [](const Own& self) { return std::make_unique<Own>(Array(*self)); });
    bound.def("__deepcopy__",
              [](const Own& self, const py::object&) { return std::make_unique<Own>(Array(*self)); });
    bound.def("__len__", [](const Own& self) {
        const std::shared_lock guard(self.lock);
        return (*self).records().size();
    });
    bound.def("__getitem__", [](const Own& self, py::ssize_t index) {
        std::optional<Record> record;
        {
            const std::shared_lock guard(self.lock);
            record = (*self).records()[place(index, (*self).records().size())];
        }
        return objectOf(std::move(*record));
    });
    bound.def("__setitem__", [](Own& self, py::ssize_t index, const py::object& record) {
        Record taken = recordOf<Record>(record);
        const std::unique_lock guard(self.lock);
        (*self).records()[place(index, (*self).records().size())] = std::move(taken);
    });
    bound.def(
        "get_count",
        [](Own& self) {
            return operate(std::array<Use, 1>{reads(self)}, [&] { return (*self).GetCount(); });
        },
        "The number of records in use.");
    bound.def(
        "set_count",
        [](Own& self, int n) { operate(std::array<Use, 1>{changes(self)}, [&] { (*self).SetCount(n); }); },
        py::arg("n"), "Sets the room, not the count: the first records are kept, others are cleared.");
    bound.def(
        "remove",
        [](Own& self, int index) {
            operate(std::array<Use, 1>{changes(self)}, [&] { (*self).Remove(index); });
        },
        py::arg("index"), "Moves the records behind index one place down and lowers the count.");
    bound.def(
        "remove_all",
        [](Own& self) { operate(std::array<Use, 1>{changes(self)}, [&] { (*self).RemoveAll(); }); },
        "Sets the count to 0 and keeps the room.");
    if constexpr (plain)
        bound.def(
            "__array__",
            [](const Own& self, const py::object& dtype, const py::object&) -> py::object {
                const py::array_t<Record> array = copied<Array, Record>(self);
                return dtype.is_none() ? py::object(array) : array.attr("astype")(dtype);
            },
            py::arg("dtype") = py::none(), py::arg("copy") = py::none(), "The records, copied.");
    return bound;
}

} // namespace

void bindArrays(py::module_& module)
{
    // All classes stand before the members that name them in their texts.
#define ORMALUX_BIND(Array, Record) auto array##Array = bindArray<Array, Record>(module, &#Array[1]);
    ORMALUX_ARRAYS(ORMALUX_BIND)
    ORMALUX_BIND(CSortStringArray, CString)
    ORMALUX_BIND(CPointArrayArray, CPointArray)
#define ORMALUX_MEMBERS(Array, Record) bind##Array(array##Array);
    ORMALUX_ARRAYS(ORMALUX_MEMBERS)
    ORMALUX_MEMBERS(CSortStringArray, CString)
    ORMALUX_MEMBERS(CPointArrayArray, CPointArray)
}

} // namespace ormalux::python
