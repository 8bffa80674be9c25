#pragma once

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include "array/Array.h"
#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "match/CharacterReading.h"
#include "measure/Alignment.h"
#include "measure/BlobFeature.h"
#include "measure/EdgeMeasure.h"
#include "measure/PlaneMeasure.h"

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <span>
#include <string>
#include <vector>

/// How objects of the library live in Python: each beside a lock of its own, because the interpreter's is
/// released while an operation runs.
namespace ormalux::python {

namespace py = pybind11;

struct Lockable
{
    mutable std::shared_mutex lock;
};

template <class T>
struct Held : Lockable
{
    Held() = default;
    explicit Held(T&& given) : value(std::move(given)) {}
    T& operator*() { return value; }
    const T& operator*() const { return value; }
    /// The library's arrays are read through members that are not constant.
    T& unguarded() const { return const_cast<T&>(value); }

    T value;
};

/// An image and who owns the pixels that it borrows: an array, or the image that an array looks into.
template <class Image>
struct HeldImage : Lockable
{
    Image& operator*() { return *image; }
    const Image& operator*() const { return *image; }

    std::shared_ptr<Image> image = std::make_shared<Image>();
    std::shared_ptr<void> keeper;
    const void* kept = nullptr; ///< the pixels that the keeper owns
    /// What buffers were made of: they point at pixels and hold on to this object alone.
    std::vector<std::shared_ptr<void>> pinned;
    const char* frozen = nullptr; ///< why nothing may be changed in place
};

using Gray = HeldImage<CKestImage>;
using Color = HeldImage<CKestImage24>;

/// An object that an operation reads or changes.
struct Use
{
    const Lockable* object;
    bool changes;
};

/// Locks what an operation uses, always in the same order; an object used twice once.
class Locks
{
public:
    template <std::size_t N>
    explicit Locks(const std::array<Use, N>& uses)
    {
        static_assert(N <= most);
        for (const Use& use : uses) {
            const auto same = std::find_if(m_uses.begin(), m_uses.begin() + m_count,
                                           [&](const Use& other) { return other.object == use.object; });
            if (same != m_uses.begin() + m_count)
                same->changes = same->changes || use.changes;
            else
                m_uses[m_count++] = use;
        }
        std::sort(m_uses.begin(), m_uses.begin() + m_count,
                  [](const Use& a, const Use& b) { return std::less<>()(a.object, b.object); });
        for (std::size_t i = 0; i < m_count; ++i)
            m_uses[i].changes ? m_uses[i].object->lock.lock() : m_uses[i].object->lock.lock_shared();
    }
    Locks(const Locks&) = delete;
    Locks& operator=(const Locks&) = delete;
    ~Locks()
    {
        while (m_count-- > 0)
            m_uses[m_count].changes ? m_uses[m_count].object->lock.unlock()
                                    : m_uses[m_count].object->lock.unlock_shared();
    }

private:
    static constexpr std::size_t most = 4;
    std::array<Use, most> m_uses{};
    std::size_t m_count = 0;
};

inline Use reads(const Lockable& object)
{
    return {&object, false};
}
inline Use changes(const Lockable& object)
{
    return {&object, true};
}

/// Runs an operation without the interpreter's lock, which is never waited for while an object is locked.
template <std::size_t N, class Body>
auto operate(const std::array<Use, N>& uses, Body body)
{
    const py::gil_scoped_release released;
    const Locks locks(uses);
    return body();
}

/// Throws ValueError for an image that shows an array which cannot be changed in place.
template <class Image>
void refuseFrozen(const HeldImage<Image>& image)
{
    if (image.frozen)
        throw py::value_error(image.frozen);
}

/// Keeps a Python object until the last owner is gone, whatever thread that is in.
std::shared_ptr<void> keep(py::object object);
/// A path as the library takes it, from a str, bytes or an object with __fspath__.
std::string pathText(const py::object& path);
/// Text in UTF-8; what is none is replaced.
py::str textOf(std::string_view text);

/// A new image of the library's, which the caller gave up.
py::object adopt(CKestImage* image);
py::object adopt(CKestImage24* image);

/// At least count bytes of any object with a buffer, without gaps between them.
py::buffer_info bytesOf(const py::buffer& source, std::int64_t count);
/// A kernel of size x size whole numbers.
std::vector<long> kernelOf(const py::object& kernel, long size);
/// Points of an array of shape (n, 2) or of a sequence of pairs.
std::vector<POINT> pointsOf(const py::object& points);
std::vector<CPlanePair> pairsOf(const py::object& pairs);

/// A structured array of records, which are copied.
template <class Record>
py::array_t<Record> arrayOf(std::span<const Record> records)
{
    py::array_t<Record> array(py::ssize_t(records.size()));
    if (!records.empty())
        std::memcpy(array.mutable_data(), records.data(), records.size_bytes());
    return array;
}
template <class Record>
py::array_t<Record> arrayOf(const std::vector<Record>& records)
{
    return arrayOf(std::span<const Record>(records));
}

// Parts of the module, by their files.
void bindRecords(py::module_& module);
void bindImages(py::module_& module, py::class_<Gray>& gray, py::class_<Color>& color);
void bindArrays(py::module_& module);
void bindEngine(py::module_& module);

} // namespace ormalux::python
