#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <type_traits>

namespace ormalux {

/// Scratch memory of trivial items that grows without throwing and keeps what it has between uses.
template <class T>
class Growable
{
    static_assert(std::is_trivially_copyable_v<T>);

public:
    Growable() = default;
    Growable(const Growable&) = delete;
    Growable& operator=(const Growable&) = delete;
    ~Growable() { std::free(m_data); }

    /// Makes room for n items, at least half as many again as before; what was there stays, the rest is not
    /// set. False, and nothing changed, when memory is short.
    bool reserve(std::size_t n)
    {
        if (n <= m_room)
            return true;
        const std::size_t room = n > m_room + m_room / 2 ? n : m_room + m_room / 2;
        if (room > PTRDIFF_MAX / sizeof(T))
            return false;
        void* fresh = std::realloc(static_cast<void*>(m_data), room * sizeof(T));
        if (!fresh)
            return false;
        m_data = static_cast<T*>(fresh);
        m_room = room;
        return true;
    }

    T* data() { return m_data; }
    const T* data() const { return m_data; }
    T& operator[](std::size_t i) { return m_data[i]; }
    const T& operator[](std::size_t i) const { return m_data[i]; }

private:
    T* m_data = nullptr;
    std::size_t m_room = 0;
};

} // namespace ormalux
