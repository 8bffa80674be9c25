#pragma once

#include <cstddef>
#include <type_traits>
#if __cplusplus >= 202002L
#include <span>
#endif

namespace ormalux {

/// Records that stand one behind the other: what `std::span` is to C++20, which takes one of these wherever
/// it is asked for, for hosts in C++17.
template <class Record>
class RecordSpan
{
public:
    using value_type = std::remove_cv_t<Record>;

    RecordSpan() = default;
    RecordSpan(Record* data, std::size_t size) : m_data(data), m_size(size) {}

    Record* data() const { return m_data; }
    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    Record* begin() const { return m_data; }
    Record* end() const { return m_data + m_size; }
    Record& operator[](std::size_t index) const { return m_data[index]; }

private:
    Record* m_data = nullptr;
    std::size_t m_size = 0;
};

} // namespace ormalux

#if __cplusplus >= 202002L
template <class Record>
inline constexpr bool std::ranges::enable_borrowed_range<ormalux::RecordSpan<Record>> = true;
#endif
