#pragma once

#include "image/WorkPool.h"
#include "platform/Events.h"
#include "platform/NativeThread.h"

#include <atomic>
#include <memory>
#include <mutex>

namespace ormalux {

/// The workers of one kind of job: one record for each processor, each with its start, quit and done events,
/// and from the first job on that can use it a thread.
class JobWorkers
{
public:
    ~JobWorkers();

    /// Makes the records; without memory for them the kind has no workers.
    void prepare(int workers);
    /// Tells every worker to quit; end() then waits for them.
    void quit();
    void end(std::chrono::steady_clock::time_point deadline);
    /// See NativeThread::wasKilled().
    bool wereKilled() const { return m_started > 0 && m_records[0].thread.wasKilled(); }

    /// Runs every band, on the calling thread and on those of at most `helpers` workers that come in time.
    /// Their threads are started where they are not yet; one that cannot be had is done without. Callers
    /// queue.
    void run(int bands, int helpers, std::int64_t total, pool_detail::Body body, void* context);

private:
    struct Record
    {
        enum Event
        {
            Start,
            Quit,
            Done
        };
        Events<3> events;
        std::atomic<bool> called{false}; // what a worker looks at before it falls asleep
        NativeThread thread;
        JobWorkers* kind = nullptr;
    };

    int startUpTo(int workers);
    static void work(void* record);
    void awaitCall(Record& record);
    bool claim(int& band);
    void runClaimed();
    void awaitAll();

    std::mutex m_callers;
    std::unique_ptr<Record[]> m_records;
    int m_workers = 0;
    std::atomic<int> m_started{0};
    std::atomic<bool> m_quit{false};

    // The job. Written by the caller before m_ticket offers its bands; read by who has claimed a band, and
    // the caller stays until every claimed band has been run.
    pool_detail::Body m_body = nullptr;
    void* m_context = nullptr;
    std::int64_t m_total = 0;
    int m_bands = 0;

    // The job's number in the upper half, the bands left to claim in the lower: a worker that comes late for
    // one job never takes a band of the next without having seen its fields.
    std::atomic<std::uint64_t> m_ticket{0};
    std::atomic<int> m_unfinished{0};
    Events<1> m_finished;
};

} // namespace ormalux
