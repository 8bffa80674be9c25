#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <span>
#include <type_traits>

namespace ormalux {

/// The storage rules that every record array shares.
///
/// A fresh array reports room for 100 records; growth reports exactly 100 more. The memory behind that report
/// is taken at the first use and grows geometrically, so a million appends cost linear time. Records that
/// storage gains are cleared to 0 (default-constructed).
///
/// Indexes are not validated: inside the reported room the stored record is read or written, anywhere else a
/// spare one, so no index ever touches memory that the array does not own. References hold until the next
/// operation that may grow the storage. Nothing throws; a failed allocation leaves the array unchanged. An
/// array is not locked: one thread at a time.
template <class Record>
class RecordArray
{
public:
    RecordArray() = default;
    /// An empty array with room for capacity records; below 0, or beyond what can be had, room for none.
    explicit RecordArray(int capacity) : m_capacity(roomAllowed(capacity) ? capacity : 0) {}
    RecordArray(const RecordArray& other) { copyFrom(other); }
    RecordArray& operator=(const RecordArray& other)
    {
        if (this != &other)
            copyFrom(other);
        return *this;
    }
    virtual ~RecordArray() { release(); }

    /// Moves the records behind index one place down and lowers the count; an index at or behind the last
    /// record only lowers the count. Does nothing on an empty array.
    virtual void Remove(int index)
    {
        if (m_count < 1)
            return;
        const std::int64_t last = std::min<std::int64_t>(m_count, m_capacity) - 1;
        const std::int64_t first = std::max(index, 0);
        if (first < last && reach(last + 1))
            std::move(m_data + first + 1, m_data + last + 1, m_data + first);
        --m_count;
    }
    /// The number of records in use.
    virtual int GetCount() { return m_count; }
    /// Sets the room, not the count: the first min(old room, n) records are kept, others are cleared. The
    /// count stays, also when it exceeds n. Nothing happens for n below 1 or beyond what can be had.
    virtual void SetCount(int n)
    {
        if (n < 1 || !roomAllowed(n))
            return;
        truncate(n);
        m_capacity = n;
    }
    /// Sets the count to 0 and keeps the room.
    virtual void RemoveAll() { m_count = 0; }
    virtual Record& operator[](int index) { return at(index); }

    /// The records in use, for loops without a call per record; no more than the room holds.
    std::span<Record> records()
    {
        const std::int64_t n = std::min(m_count, m_capacity);
        return reach(n) ? std::span<Record>(m_data, std::size_t(n)) : std::span<Record>();
    }

    /// Appends n records that the caller fills at once, and returns them; empty when memory is short.
    /// Records of trivial types hold anything until they are written.
    std::span<Record> appendForOverwrite(std::size_t n)
    {
        const std::int64_t wanted = std::int64_t(m_count) + std::int64_t(n);
        if (n == 0 || wanted > INT32_MAX || !allocate(wanted))
            return {};
        if constexpr (trivial) {
            clearUpTo(m_count);
            m_live = std::max(m_live, wanted);
        } else {
            clearUpTo(wanted);
        }
        reportRoomFor(wanted);
        std::span<Record> added(m_data + m_count, n);
        m_count = int(wanted);
        return added;
    }

protected:
    static constexpr bool trivial = std::is_trivially_copyable_v<Record>;

    /// The record at index, or a spare cleared one outside the room.
    Record& at(int index)
    {
        if (index >= 0 && index < m_live && index < m_capacity) [[likely]]
            return m_data[index];
        if (index < 0 || index >= m_capacity || !reach(std::int64_t(index) + 1))
            return spare();
        return m_data[index];
    }

    /// Appends a copy; the record may be one of this very array. False when memory is short.
    bool append(const Record& record)
    {
        if (m_count < m_capacity && m_count < m_live) [[likely]] {
            m_data[m_count++] = record;
            return true;
        }
        Record copy(record);
        if (!appendCleared())
            return false;
        m_data[m_count - 1] = std::move(copy);
        return true;
    }

    /// Takes the next slot into use with what it holds, cleared when it is fresh. False when memory is short.
    bool appendCleared()
    {
        const std::int64_t wanted = std::int64_t(m_count) + 1;
        if (wanted > INT32_MAX || !reach(wanted))
            return false;
        reportRoomFor(wanted);
        m_count = int(wanted);
        return true;
    }

    /// Deliberate: the record at index is overwritten, not moved, and the one behind it then stands twice.
    /// At or behind the last record nothing moves. Below 0 nothing happens.
    void insertOver(int index, const Record& record)
    {
        if (index < 0)
            return;
        Record copy(record);
        const std::int64_t old = m_count;
        if (!appendCleared())
            return;
        if (index < old - 1)
            std::move_backward(m_data + index + 1, m_data + old, m_data + old + 1);
        if (index < m_capacity)
            at(index) = std::move(copy);
    }

    /// Takes over count, room and records of another array; unchanged when memory is short.
    void copyFrom(const RecordArray& other)
    {
        RecordArray fresh;
        if (other.m_live > 0) {
            if (!fresh.allocate(other.m_live))
                return;
            if constexpr (trivial) {
                std::memcpy(static_cast<void*>(fresh.m_data), other.m_data,
                            std::size_t(other.m_live) * sizeof(Record));
                fresh.m_live = other.m_live;
            } else {
                fresh.clearUpTo(other.m_live);
                std::copy(other.m_data, other.m_data + other.m_live, fresh.m_data);
            }
        }
        std::swap(m_data, fresh.m_data);
        std::swap(m_live, fresh.m_live);
        std::swap(m_allocated, fresh.m_allocated);
        m_capacity = other.m_capacity;
        m_count = other.m_count;
    }

    int m_capacity = 100; // as reported
    int m_count = 0;

private:
    // What a caller can ask for at once; an array that grows record by record is limited by memory alone.
    static constexpr std::int64_t roomLimit = std::int64_t(1) << 30;

    static bool roomAllowed(int n)
    {
        return n >= 0 && std::int64_t(n) * std::int64_t(sizeof(Record)) <= roomLimit;
    }

    /// A cleared record of the array's own: no state with a destructor of its own per thread, which would
    /// keep the module from being unloaded.
    Record& spare()
    {
        if (!m_spare)
            m_spare.reset(new Record());
        else
            *m_spare = Record();
        return *m_spare;
    }

    void reportRoomFor(std::int64_t n)
    {
        if (n <= m_capacity)
            return;
        const std::int64_t steps = (n - m_capacity + 99) / 100;
        m_capacity = int(std::min<std::int64_t>(m_capacity + steps * 100, INT32_MAX));
    }

    /// Makes the first n records live: in memory, and cleared where nothing was written yet.
    bool reach(std::int64_t n)
    {
        if (n <= m_live)
            return true;
        if (!allocate(n))
            return false;
        clearUpTo(n);
        return true;
    }

    void clearUpTo(std::int64_t n)
    {
        if (n <= m_live)
            return;
        if constexpr (trivial)
            std::memset(static_cast<void*>(m_data + m_live), 0, std::size_t(n - m_live) * sizeof(Record));
        else
            std::uninitialized_value_construct(m_data + m_live, m_data + n);
        m_live = n;
    }

    /// Memory for n records, geometrically; the live ones move along.
    bool allocate(std::int64_t n)
    {
        if (n <= m_allocated)
            return true;
        const std::int64_t size = std::max({n, m_allocated + m_allocated / 2, std::int64_t(16)});
        Record* fresh;
        if constexpr (trivial) {
            fresh = static_cast<Record*>(
                std::realloc(static_cast<void*>(m_data), std::size_t(size) * sizeof(Record)));
            if (!fresh)
                return false;
        } else {
            fresh = static_cast<Record*>(std::malloc(std::size_t(size) * sizeof(Record)));
            if (!fresh)
                return false;
            std::uninitialized_move(m_data, m_data + m_live, fresh);
            std::destroy(m_data, m_data + m_live);
            std::free(m_data);
        }
        m_data = fresh;
        m_allocated = size;
        return true;
    }

    void truncate(std::int64_t n)
    {
        if (m_live <= n)
            return;
        if constexpr (!trivial)
            std::destroy(m_data + n, m_data + m_live);
        m_live = n;
    }

    void release()
    {
        truncate(0);
        std::free(static_cast<void*>(m_data));
    }

    Record* m_data = nullptr;
    std::unique_ptr<Record> m_spare;
    std::int64_t m_live = 0;      // records that were written or cleared
    std::int64_t m_allocated = 0; // records that memory was taken for
};

} // namespace ormalux
