#pragma once

#include <cstdint>

namespace ormalux {

/// What a measurement appends to a result array: all of it or, when memory runs short on the way, nothing.
template <class Array>
class WholeAppend
{
public:
    explicit WholeAppend(Array& array) : m_array(array), m_before(array.GetCount()) {}
    WholeAppend(const WholeAppend&) = delete;
    WholeAppend& operator=(const WholeAppend&) = delete;
    ~WholeAppend() { finish(); }

    /// The array's Add, until memory is short.
    template <class... Fields>
    void add(const Fields&... fields)
    {
        if (m_short)
            return;
        m_array.Add(fields...);
        // Whether all were taken is seen at the end; now and then suffices to stop asking for memory in vain.
        if (++m_added % 4096 == 0)
            m_short = !complete();
    }

    /// Ends the measurement; returns the array's count.
    int finish()
    {
        if (!complete())
            m_array.cutBackTo(m_before);
        m_before = m_array.GetCount();
        m_added = 0;
        return m_before;
    }

private:
    bool complete() const { return m_array.GetCount() == m_before + m_added; }

    Array& m_array;
    int m_before;
    std::int64_t m_added = 0;
    bool m_short = false;
};

} // namespace ormalux
