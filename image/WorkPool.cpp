#include "image/WorkPool.h"

#include "image/JobWorkers.h"
#include "platform/Stdlib.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <utility>

#if !defined(_WIN32)
#include <pthread.h>
#endif

namespace ormalux {

namespace {

// A job that takes less is done before a sleeping worker has woken, and more workers than whole times this
// spend longer on waking than on their bands.
constexpr std::int64_t worthWaking = 100'000;

// How long an unloading module waits for workers that were told to quit.
constexpr auto grace = std::chrono::milliseconds(50);

constexpr int kinds = int(Job::Count);

std::atomic<int> bandsForTests{0};
// Null before the module has loaded, while it unloads, and in a forked child, where only the thread that
// forked goes on: jobs then run on the calling thread.
std::atomic<JobWorkers*> workers{nullptr};
std::atomic<bool> forked{false}; // and nobody has asked for another number of bands since

const int processors = CStdlib::GetNumOfProcessors();

/// Makes the workers' records when the module loads, and ends the threads that jobs have started when it
/// unloads. With too little memory there are none.
class Lifetime
{
public:
    Lifetime() : m_made(new (std::nothrow) JobWorkers[kinds])
    {
        if (!m_made)
            return;
        for (int kind = 0; kind < kinds; ++kind)
            m_made[kind].prepare(processors);
#if !defined(_WIN32)
        if (pthread_atfork(nullptr, nullptr, [] {
                workers = nullptr;
                forked = true;
            }) != 0) {
            delete[] std::exchange(m_made, nullptr);
            return;
        }
#endif
        workers = m_made;
    }

    ~Lifetime()
    {
        // In a forked child the threads behind the records do not exist; the records are left to the system.
        if (!workers.exchange(nullptr))
            return;
        // At the end of a Windows process the workers are gone already, some of them in the middle of a wait:
        // to wake them, or to free what they waited for, would wait for ever. The system takes it all.
        for (int kind = 0; kind < kinds; ++kind)
            if (m_made[kind].wereKilled())
                return;
        for (int kind = 0; kind < kinds; ++kind)
            m_made[kind].quit();
        const auto deadline = std::chrono::steady_clock::now() + grace;
        for (int kind = 0; kind < kinds; ++kind)
            m_made[kind].end(deadline);
        delete[] m_made;
    }

private:
    JobWorkers* m_made;
};

const Lifetime lifetime;

} // namespace

int bandCount()
{
    return forked.load(std::memory_order_relaxed) ? 1 : stepBandCount();
}

int stepBandCount()
{
    const int n = bandsForTests.load(std::memory_order_relaxed);
    return n > 0 ? n : (processors > 0 ? processors : 1);
}

void setBandCount(int n)
{
    bandsForTests.store(n, std::memory_order_relaxed);
    forked.store(false, std::memory_order_relaxed);
}

Band bandOf(int index, int bands, std::int64_t total)
{
    const std::int64_t share = total / bands;
    return {index, share * index, index == bands - 1 ? total : share * (index + 1)};
}

namespace pool_detail {

void run(Job job, std::int64_t total, JobCost cost, Body body, void* context)
{
    const int bands = bandCount();
    const int helpers = int(std::min<std::int64_t>(bands - 1, cost.nanoseconds / worthWaking));
    JobWorkers* const all = helpers > 0 ? workers.load() : nullptr;
    if (all) {
        all[int(job)].run(bands, helpers, total, body, context);
        return;
    }
    for (int i = 0; i < bands; ++i)
        body(context, bandOf(i, bands, total));
}

} // namespace pool_detail

} // namespace ormalux
