#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// One line of the table: an operation of ours beside the peer's.
struct Row
{
    std::string operation;
    std::string size; ///< "5 MP", "VGA", or what the row counts
    std::string peer; ///< the peer's operation
    double goal = 0;  ///< our time over the peer's better time that we mean to reach; 0 when none is set

    /// Whether our result equals that of plain code; run once before anything is timed.
    std::function<bool()> check;
    /// Restores ours' input before every timed call; not timed. May be empty.
    std::function<void()> prepare;
    std::function<void()> ours;
    /// May be empty when there is no peer.
    std::function<void()> theirs;
    /// A copy or a read of the same bytes; may be empty.
    std::function<void()> limit;
    /// Restores theirs' input before every timed call; not timed. May be empty.
    std::function<void()> prepareTheirs;
};

/// What a file of rows adds to; called once before main's loop.
using RowMaker = std::function<void(std::vector<Row>&)>;

/// Registers the rows of a file: `static const bench::Register rows{[](std::vector<bench::Row>& table)
/// {...}};`
struct Register
{
    explicit Register(RowMaker maker);
};

/// Keeps the compiler from dropping a result.
template <class T>
inline void keep(const T& value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

} // namespace bench
