#pragma once

/// For tests: allocations that fail. Every way to memory that the library takes counts, on every thread; the
/// program that uses this is linked with FailingMemory.cpp as its first lines say.
namespace testing_support {

enum class Fails
{
    Once,
    FromThenOn
};

/// While it lives, the allocation with this number fails, counted from 0, or it and all that follow.
class FailingMemory
{
public:
    FailingMemory(long number, Fails how);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    /// Whether an allocation has failed.
    bool hasFailed() const;
};

/// Calls attempt() with every allocation of its failing in turn, until it runs through without a failure;
/// judge(what attempt gave) is called after each failing one. Returns how many allocations could fail.
template <class Attempt, class Judge>
long failEveryAllocation(Fails how, Attempt attempt, Judge judge)
{
    for (long number = 0;; ++number) {
        bool failed = false;
        auto given = [&] {
            const FailingMemory failing(number, how);
            auto result = attempt();
            failed = failing.hasFailed();
            return result;
        }();
        if (!failed)
            return number;
        judge(given);
    }
}

} // namespace testing_support
