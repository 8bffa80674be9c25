#pragma once

#include "platform/LargeMemory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

namespace ormalux {

/// The memory of a record array: room for some records, of which the first live() hold a value.
///
/// Records become live cleared (default-constructed). Nothing throws; what fails for want of memory returns
/// false and changes nothing. The caller keeps every n within 0 .. INT32_MAX.
template <class Record>
class RecordStorage
{
public:
    static constexpr bool trivial = std::is_trivially_copyable_v<Record>;

    RecordStorage() = default;
    RecordStorage(const RecordStorage&) = delete;
    RecordStorage& operator=(const RecordStorage&) = delete;
    ~RecordStorage()
    {
        truncate(0);
        freeBlock(m_data, bytesFor(m_allocated));
    }

    void swap(RecordStorage& other) noexcept
    {
        std::swap(m_data, other.m_data);
        std::swap(m_live, other.m_live);
        std::swap(m_allocated, other.m_allocated);
    }

    Record* data() { return m_data; }
    const Record* data() const { return m_data; }
    int live() const { return m_live; }
    int allocated() const { return m_allocated; }

    /// Makes memory for exactly n > 0 records; the live ones among the first n move along.
    bool resize(int n)
    {
        if (n == m_allocated)
            return true;
        Record* moved = moveTo(n);
        if (!moved)
            return false;
        m_data = moved;
        m_allocated = n;
        return true;
    }

    /// Memory for n records or more, so that growth one by one costs linear time.
    bool reserve(int n)
    {
        if (n <= m_allocated)
            return true;
        const std::int64_t ahead = std::int64_t(m_allocated) * 2;
        return resize(int(std::clamp<std::int64_t>(ahead, n, INT32_MAX)));
    }

    /// Makes the first n records live; there is memory for them.
    void clearUpTo(int n)
    {
        if (n <= m_live)
            return;
        if constexpr (trivial)
            std::memset(static_cast<void*>(m_data + m_live), 0, std::size_t(n - m_live) * sizeof(Record));
        else
            std::uninitialized_value_construct(m_data + m_live, m_data + n);
        m_live = n;
    }

    /// Makes the first n records live without clearing them where the type allows that.
    void exposeUpTo(int n)
    {
        if constexpr (trivial)
            m_live = std::max(m_live, n);
        else
            clearUpTo(n);
    }

    /// Gives up the records from n on.
    void truncate(int n)
    {
        if (m_live <= n)
            return;
        if constexpr (!trivial)
            std::destroy(m_data + n, m_data + m_live);
        m_live = n;
    }

    /// Takes over the live records of another storage into fresh memory for `room` records, no fewer than
    /// live.
    bool copyFrom(const RecordStorage& other, int room)
    {
        RecordStorage fresh;
        if (other.m_live > 0) {
            if (!fresh.resize(room) || !fresh.fillFrom(other))
                return false;
        }
        swap(fresh);
        return true;
    }

private:
    static std::size_t bytesFor(int n) { return std::size_t(n) * sizeof(Record); }

    /// A block for n records with the live ones among the first n, in place of the old one; null when memory
    /// is short.
    Record* moveTo(int n)
    {
        if constexpr (trivial) {
            void* moved =
                m_data ? resizeBlock(m_data, bytesFor(m_allocated), bytesFor(n)) : allocateBlock(bytesFor(n));
            if (moved)
                m_live = std::min(m_live, n);
            return static_cast<Record*>(moved);
        } else {
            auto* moved = static_cast<Record*>(allocateBlock(bytesFor(n)));
            if (moved) {
                truncate(n);
                std::uninitialized_move(m_data, m_data + m_live, moved);
                std::destroy(m_data, m_data + m_live);
                freeBlock(m_data, bytesFor(m_allocated));
            }
            return moved;
        }
    }

    bool fillFrom(const RecordStorage& other)
    {
        if constexpr (trivial) {
            std::memcpy(static_cast<void*>(m_data), other.m_data, std::size_t(other.m_live) * sizeof(Record));
            m_live = other.m_live;
        } else {
            try {
                std::uninitialized_copy(other.m_data, other.m_data + other.m_live, m_data);
                m_live = other.m_live;
            } catch (...) {
                return false; // short of memory; what was made is gone again
            }
        }
        return true;
    }

    Record* m_data = nullptr;
    int m_live = 0;
    int m_allocated = 0;
};

} // namespace ormalux
