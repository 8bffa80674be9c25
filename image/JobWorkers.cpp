#include "image/JobWorkers.h"

#include <algorithm>
#include <new>
#include <thread>

namespace ormalux {

namespace {

// Waking a sleeping thread costs some 60 microseconds; one that spins half as long meets the next job of a
// quick series awake and burns next to nothing.
constexpr auto spinTime = std::chrono::microseconds(30);

void relax()
{
#if defined(__x86_64__)
    __builtin_ia32_pause();
#else
    std::this_thread::yield();
#endif
}

/// Whether the condition came true while spinning.
template <class Condition>
bool spinFor(Condition condition)
{
    const auto end = std::chrono::steady_clock::now() + spinTime;
    do {
        for (int i = 0; i < 64; ++i) {
            if (condition())
                return true;
            relax();
        }
    } while (std::chrono::steady_clock::now() < end);
    return false;
}

} // namespace

JobWorkers::~JobWorkers() = default;

void JobWorkers::prepare(int workers)
{
    m_records.reset(new (std::nothrow) Record[std::size_t(workers)]);
    m_workers = m_records ? workers : 0;
    for (int i = 0; i < m_workers; ++i)
        m_records[i].kind = this;
}

// How many of the workers have a thread then.
int JobWorkers::startUpTo(int workers)
{
    const int wanted = std::min(workers, m_workers);
    int started = m_started.load(std::memory_order_relaxed);
    while (started < wanted && !m_quit.load()) {
        if (!m_records[started].thread.start(&JobWorkers::work, &m_records[started]))
            break;
        m_started.store(++started);
    }
    return std::min(started, wanted);
}

void JobWorkers::quit()
{
    m_quit.store(true);
    for (int i = 0; i < m_started; ++i)
        m_records[i].events.set(Record::Quit);
}

void JobWorkers::end(std::chrono::steady_clock::time_point deadline)
{
    for (int i = 0; i < m_started; ++i)
        m_records[i].thread.end(deadline);
    m_started = 0;
}

void JobWorkers::run(int bands, int helpers, std::int64_t total, pool_detail::Body body, void* context)
{
    const std::lock_guard queue(m_callers);
    const int called = startUpTo(helpers);
    m_body = body;
    m_context = context;
    m_total = total;
    m_bands = bands;
    m_finished.reset(0);
    m_unfinished.store(bands, std::memory_order_relaxed);
    const std::uint64_t number = (m_ticket.load(std::memory_order_relaxed) >> 32) + 1;
    m_ticket.store(number << 32 | std::uint32_t(bands), std::memory_order_release);

    for (int i = 0; i < called; ++i) {
        m_records[i].events.reset(Record::Done);
        m_records[i].called.store(true, std::memory_order_release);
        m_records[i].events.set(Record::Start);
    }
    runClaimed();
    awaitAll();
}

void JobWorkers::work(void* argument)
{
    Record& record = *static_cast<Record*>(argument);
    JobWorkers& kind = *record.kind;
    for (;;) {
        kind.awaitCall(record);
        if (kind.m_quit.load(std::memory_order_acquire))
            return;
        record.called.store(false, std::memory_order_relaxed);
        record.events.reset(Record::Start);
        kind.runClaimed();
        record.events.set(Record::Done);
    }
}

void JobWorkers::awaitCall(Record& record)
{
    if (!spinFor([&] { return record.called.load(std::memory_order_acquire) || m_quit.load(); }))
        record.events.waitForEither(Record::Quit, Record::Start);
}

bool JobWorkers::claim(int& band)
{
    std::uint64_t ticket = m_ticket.load(std::memory_order_acquire);
    while (std::uint32_t(ticket) > 0)
        if (m_ticket.compare_exchange_weak(ticket, ticket - 1, std::memory_order_acq_rel,
                                           std::memory_order_acquire)) {
            band = m_bands - int(std::uint32_t(ticket));
            return true;
        }
    return false;
}

void JobWorkers::runClaimed()
{
    int index;
    while (claim(index)) {
        m_body(m_context, bandOf(index, m_bands, m_total));
        if (m_unfinished.fetch_sub(1, std::memory_order_acq_rel) == 1)
            m_finished.set(0);
    }
}

void JobWorkers::awaitAll()
{
    const auto finished = [&] { return m_unfinished.load(std::memory_order_acquire) == 0; };
    if (spinFor(finished))
        return;
    // The event may still come from the last band of the job before, whose caller saw the count and went on.
    while (!finished()) {
        m_finished.wait(0);
        if (!finished())
            m_finished.reset(0);
    }
}

} // namespace ormalux
