#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace ormalux {

/// A few manual-reset events that share one lock, so that a thread can wait for any of them. Safe to use from
/// any thread; an event stays set until it is reset.
template <int count>
class Events
{
public:
    void set(int event)
    {
        {
            const std::lock_guard lock(m_lock);
            m_set[event] = true;
        }
        m_changed.notify_all();
    }

    void reset(int event)
    {
        const std::lock_guard lock(m_lock);
        m_set[event] = false;
    }

    bool isSet(int event)
    {
        const std::lock_guard lock(m_lock);
        return m_set[event];
    }

    void wait(int event)
    {
        std::unique_lock lock(m_lock);
        m_changed.wait(lock, [&] { return m_set[event]; });
    }

    /// The lower-numbered of the two when both are set.
    int waitForEither(int first, int second)
    {
        std::unique_lock lock(m_lock);
        m_changed.wait(lock, [&] { return m_set[first] || m_set[second]; });
        return m_set[first] ? first : second;
    }

    /// Whether the event was set within the time.
    template <class Clock, class Duration>
    bool waitUntil(int event, std::chrono::time_point<Clock, Duration> end)
    {
        std::unique_lock lock(m_lock);
        return m_changed.wait_until(lock, end, [&] { return m_set[event]; });
    }

private:
    std::mutex m_lock;
    std::condition_variable m_changed;
    bool m_set[count] = {};
};

} // namespace ormalux
