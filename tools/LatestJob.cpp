#include "tools/LatestJob.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

#include <condition_variable>
#include <mutex>
#include <utility>

namespace ormalux {

/// A job that a worker has.
struct LatestJob::Launched
{
    explicit Launched(unsigned n) : number(n) {}

    /// On the worker's thread.
    void end(Deliver found)
    {
        const std::lock_guard guard(lock);
        deliver = std::move(found);
        hasEnded = true;
        ended.notify_all();
    }
    bool endsWithin(std::chrono::milliseconds patience)
    {
        std::unique_lock guard(lock);
        return ended.wait_for(guard, patience, [this] { return hasEnded; });
    }

    const unsigned number;
    bool settled = false; ///< what it found has been delivered or dropped; of the window's thread
    std::mutex lock;
    std::condition_variable ended;
    bool hasEnded = false;
    Deliver deliver;
};

LatestJob::LatestJob(QObject* parent) : QObject(parent) {}

LatestJob::~LatestJob() = default;

void LatestJob::start(Job job, std::chrono::milliseconds patience)
{
    ++m_number;
    setRunning(true);
    if (m_busy) {
        m_next = std::move(job);
        return;
    }
    const auto launched = launch(std::move(job));
    if (patience.count() > 0 && launched->endsWithin(patience))
        finished(*launched);
}

void LatestJob::cancel()
{
    ++m_number;
    m_next = nullptr;
    setRunning(false);
}

std::shared_ptr<LatestJob::Launched> LatestJob::launch(Job job)
{
    m_busy = true;
    const auto launched = std::make_shared<Launched>(m_number);
    QThreadPool::globalInstance()->start([self = QPointer<LatestJob>(this), launched, job = std::move(job)] {
        launched->end(job());
        // Delivered on the application's thread, where the pointer is either good or null.
        if (QCoreApplication* const application = QCoreApplication::instance())
            QMetaObject::invokeMethod(
                application,
                [self, launched] {
                    if (self)
                        self->finished(*launched);
                },
                Qt::QueuedConnection);
    });
    return launched;
}

void LatestJob::finished(Launched& job)
{
    if (std::exchange(job.settled, true))
        return; // waited for
    m_busy = false;
    if (m_next) {
        launch(std::exchange(m_next, nullptr));
        return;
    }
    if (job.number != m_number)
        return; // cancelled
    setRunning(false);
    if (job.deliver)
        job.deliver();
}

void LatestJob::setRunning(bool running)
{
    if (std::exchange(m_running, running) != running)
        Q_EMIT runningChanged(running);
}

} // namespace ormalux
