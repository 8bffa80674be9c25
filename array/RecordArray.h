#pragma once

#include "array/RecordSpan.h"
#include "array/RecordStorage.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#if defined(__GNUC__)
#define ORMALUX_LIKELY(condition) __builtin_expect(bool(condition), 1)
#else
#define ORMALUX_LIKELY(condition) (condition)
#endif

namespace ormalux {

/// The storage rules that every record array shares.
///
/// A fresh array has room for 100 records, or for as many as its constructor was given; an array that is full
/// gains room for exactly 100 more. Memory for the whole room is taken at the first use; behind the reported
/// room it grows geometrically, so a million appends cost linear time. Records that the room gains are
/// cleared to 0.
///
/// Indexes are not validated: inside the room the stored record is read or written, also behind the count;
/// anywhere else a spare cleared one, so no index ever touches memory that the array does not own. References
/// hold until an operation makes the array grow, or SetCount or an assignment replaces its storage; sorts and
/// removals leave them pointing at the same place. Nothing throws; when memory is short the array stays as it
/// was. An array is not locked: one thread at a time, though any number may read the records in use at once.
template <class Record>
class RecordArray
{
public:
    RecordArray() = default;
    /// An empty array with room for capacity records; below 0, or beyond what can be had, room for none.
    explicit RecordArray(int capacity) : m_capacity(roomAllowed(capacity) ? capacity : 0) {}
    /// A deep copy, its room included.
    RecordArray(const RecordArray& other) { copyFrom(other); }
    /// Takes over the records; the other array is then as a fresh one.
    RecordArray(RecordArray&& other) noexcept { swap(other); }
    RecordArray& operator=(const RecordArray& other)
    {
        if (this != &other)
            copyFrom(other);
        return *this;
    }
    RecordArray& operator=(RecordArray&& other) noexcept
    {
        RecordArray taken(std::move(other));
        swap(taken);
        return *this;
    }
    virtual ~RecordArray() = default;

    /// Moves the records behind index one place down and lowers the count; an index at or behind the last
    /// record only lowers the count, one below 0 counts as 0. Does nothing on an empty array.
    virtual void Remove(int index)
    {
        if (m_count < 1)
            return;
        const int last = std::min(m_count, m_capacity) - 1;
        const int first = std::max(index, 0);
        if (first < last) {
            Record* data = m_storage.data();
            std::move(data + first + 1, data + last + 1, data + first);
            if constexpr (!trivial)
                assign(data[last], data[last - 1]); // the slot behind the count keeps its record
        }
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
        if (m_storage.allocated() > 0) {
            if (!m_storage.resize(n))
                return;
            m_storage.clearUpTo(std::min(m_count, n));
        }
        m_capacity = n;
    }
    /// Sets the count to 0 and keeps the room.
    virtual void RemoveAll() { m_count = 0; }
    /// The record at index; see above for indexes outside the records in use.
    virtual Record& operator[](int index) { return at(index); }

    /// The records in use that the room holds, for loops without a call per record.
    RecordSpan<Record> records() { return {m_storage.data(), std::size_t(std::min(m_count, m_capacity))}; }
    RecordSpan<const Record> records() const
    {
        return {m_storage.data(), std::size_t(std::min(m_count, m_capacity))};
    }

    /// Appends n records that the caller fills at once, and returns them; empty when memory is short.
    /// Records of trivial types hold anything until they are written.
    RecordSpan<Record> appendForOverwrite(std::size_t n)
    {
        if (n == 0 || !makeRoomForMore(n))
            return {};
        const int wanted = m_count + int(n);
        m_storage.clearUpTo(m_count);
        m_storage.exposeUpTo(wanted);
        RecordSpan<Record> added(m_storage.data() + m_count, n);
        m_count = wanted;
        return added;
    }

    /// Memory for n more records: appending them cannot fail then, unless copies of theirs take memory
    /// themselves. False, with the array as it was, when memory is short.
    bool makeRoomForMore(std::size_t n)
    {
        return n == 0 || (n <= std::size_t(INT32_MAX - m_count) && makeRoomFor(m_count + int(n)));
    }

    /// Gives up the records from count on.
    void cutBackTo(int count) { m_count = std::clamp(count, 0, m_count); }

protected:
    static constexpr bool trivial = RecordStorage<Record>::trivial;

    /// The record at index, or the spare one, cleared, outside the room.
    Record& at(int index)
    {
        if (ORMALUX_LIKELY(std::uint32_t(index) < std::uint32_t(m_storage.live())))
            return m_storage.data()[index];
        return unusedAt(index);
    }

    /// Appends a copy; the record may be one of this very array. False when memory is short.
    bool append(const Record& record)
    {
        if constexpr (trivial) {
            if (ORMALUX_LIKELY(m_count < m_storage.live())) {
                m_storage.data()[m_count++] = record;
                return true;
            }
        }
        return appendSlowly(record);
    }

    /// Takes the next slot into use with what it holds: cleared when it is fresh. False when memory is short.
    bool appendSlot()
    {
        if (m_count == INT32_MAX || !makeRoomFor(m_count + 1))
            return false;
        if (m_count >= m_storage.live()) // some more at once, so that appends find them cleared
            m_storage.clearUpTo(
                int(std::min<std::int64_t>(m_capacity, std::int64_t(m_count) + clearedAhead)));
        ++m_count;
        return true;
    }

    /// Deliberate: the record at index is overwritten, not moved, and the one behind it then stands twice.
    /// At or behind the last record nothing moves; the slot that the count gains keeps what it held.
    /// Below 0 nothing happens.
    void insertOver(int index, const Record& record)
    {
        if (index < 0)
            return;
        std::optional<Record> copy = copyOf(record);
        const int old = m_count;
        if (!copy || !appendSlot())
            return;
        Record* data = m_storage.data();
        if (index < old - 1) {
            std::move_backward(data + index + 1, data + old, data + old + 1);
            if constexpr (!trivial)
                assign(data[index + 1], data[index + 2]);
        }
        if (index < m_capacity)
            at(index) = std::move(*copy);
    }

    /// Overwrites a slot with a copy of the record, which may be one of this very array.
    void setAt(int index, const Record& record)
    {
        if (std::optional<Record> copy = copyOf(record))
            at(index) = std::move(*copy);
    }

    /// Takes over count, room and records of another array; unchanged when memory is short.
    void copyFrom(const RecordArray& other)
    {
        if (!m_storage.copyFrom(other.m_storage, other.m_capacity))
            return;
        m_capacity = other.m_capacity;
        m_count = other.m_count;
    }

    /// Appends the other's records, also to itself, in storage of exactly the combined count; slots behind it
    /// are cleared once the room holds them. The room becomes `room`. Nothing changes when memory is short.
    void join(const RecordArray& other, std::int64_t room)
    {
        static_assert(trivial);
        const std::int64_t wanted = std::int64_t(m_count) + other.m_count;
        if (wanted > INT32_MAX)
            return;
        const int total = int(wanted);
        const int capacity = int(std::clamp<std::int64_t>(room, total, std::max(total, roomLimit)));
        const int added = int(other.records().size());
        if (capacity > 0 && (total > 0 || m_storage.allocated() > 0) && !m_storage.resize(capacity))
            return;
        m_storage.truncate(m_count);
        m_storage.clearUpTo(m_count);
        if (added > 0)
            std::copy_n(other.m_storage.data(), added, m_storage.data() + m_count);
        m_storage.exposeUpTo(m_count + added);
        m_storage.clearUpTo(total);
        m_capacity = capacity;
        m_count = total;
    }

    /// Keeps the records in use for which keep(record, index) holds, in their order; returns the number
    /// removed.
    template <class Keep>
    int retain(Keep keep)
    {
        const RecordSpan<Record> all = records();
        std::size_t kept = 0;
        for (std::size_t i = 0; i < all.size(); ++i)
            if (keep(all[i], i))
                all[kept++] = all[i];
        const int removed = int(all.size() - kept);
        m_count -= removed;
        return removed;
    }

    /// The ascending stable sort behind every Sort operation; defined in array/RecordSort.h.
    template <class KeyOf>
    void sortBy(KeyOf keyOf);

    void swap(RecordArray& other) noexcept
    {
        m_storage.swap(other.m_storage);
        std::swap(m_capacity, other.m_capacity);
        std::swap(m_count, other.m_count);
    }

    // The first min(count, capacity) records are always live, and once memory is taken there is some for the
    // whole capacity: element access never moves a record.
    int m_capacity = 100;
    int m_count = 0;

private:
    static constexpr int clearedAhead = 128;
    // What a caller can ask for at once, in records; an array that grows is limited by memory alone.
    static constexpr int roomLimit = int((std::int64_t(1) << 30) / std::int64_t(sizeof(Record)));

    static bool roomAllowed(int n) { return n >= 0 && n <= roomLimit; }

    /// A copy, or nothing when memory is short.
    static std::optional<Record> copyOf(const Record& record)
    {
        if constexpr (trivial) {
            return record;
        } else {
            try {
                return record;
            } catch (...) {
                return std::nullopt;
            }
        }
    }

    static void assign(Record& to, const Record& from)
    {
        if (std::optional<Record> copy = copyOf(from))
            to = std::move(*copy);
    }

    bool appendSlowly(const Record& record)
    {
        std::optional<Record> copy = copyOf(record);
        if (!copy || !appendSlot())
            return false;
        m_storage.data()[m_count - 1] = std::move(*copy);
        return true;
    }

    Record& unusedAt(int index)
    {
        if (index < 0 || index >= m_capacity || !makeRoomFor(m_capacity)) {
            m_spare = Record();
            return m_spare;
        }
        m_storage.clearUpTo(index + 1);
        return m_storage.data()[index];
    }

    /// Room and memory for the first n records, the room in steps of 100.
    bool makeRoomFor(int n)
    {
        if (n <= m_capacity && m_storage.allocated() > 0)
            return true;
        const std::int64_t steps = std::max<std::int64_t>(0, (std::int64_t(n) - m_capacity + 99) / 100);
        const int capacity = int(std::min<std::int64_t>(m_capacity + steps * 100, INT32_MAX));
        if (!m_storage.reserve(capacity))
            return false;
        m_capacity = capacity;
        return true;
    }

    RecordStorage<Record> m_storage;
    Record m_spare{};
};

} // namespace ormalux
