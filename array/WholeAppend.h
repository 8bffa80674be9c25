#pragma once

#include <cstddef>

namespace ormalux {

/// What a measurement appends to a result array: all of it or, when memory runs short on the way, nothing.
template <class Array>
class WholeAppend
{
public:
    explicit WholeAppend(Array& array) : m_array(array), m_before(array.GetCount()), m_count(m_before) {}
    WholeAppend(const WholeAppend&) = delete;
    WholeAppend& operator=(const WholeAppend&) = delete;
    ~WholeAppend() { finish(); }

    /// The array's Add, until memory is short.
    template <class... Fields>
    void add(const Fields&... fields)
    {
        if (!m_whole)
            return;
        m_array.Add(fields...);
        m_whole = m_array.records().size() == std::size_t(++m_count);
    }

    /// Takes back everything: the measurement cannot be completed.
    void fail() { m_whole = false; }
    /// Ends the measurement; returns the array's count.
    int finish()
    {
        if (!m_whole)
            m_array.cutBackTo(m_before);
        return m_array.GetCount();
    }

private:
    Array& m_array;
    int m_before;
    int m_count;
    bool m_whole = true;
};

} // namespace ormalux
