#include "tools/LatestJob.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

#include <utility>

namespace ormalux {

LatestJob::LatestJob(QObject* parent) : QObject(parent) {}

LatestJob::~LatestJob() = default;

void LatestJob::start(Job job)
{
    ++m_number;
    setRunning(true);
    if (m_busy)
        m_next = std::move(job);
    else
        launch(std::move(job));
}

void LatestJob::cancel()
{
    ++m_number;
    m_next = nullptr;
    setRunning(false);
}

void LatestJob::launch(Job job)
{
    m_busy = true;
    QThreadPool::globalInstance()->start(
        [self = QPointer<LatestJob>(this), number = m_number, job = std::move(job)] {
            const Deliver deliver = job();
            // Delivered on the application's thread, where the pointer is either good or null.
            if (QCoreApplication* const application = QCoreApplication::instance())
                QMetaObject::invokeMethod(
                    application,
                    [self, number, deliver] {
                        if (self)
                            self->finished(number, deliver);
                    },
                    Qt::QueuedConnection);
        });
}

void LatestJob::finished(unsigned number, const Deliver& deliver)
{
    m_busy = false;
    if (m_next) {
        launch(std::exchange(m_next, nullptr));
        return;
    }
    if (number != m_number)
        return; // cancelled
    setRunning(false);
    if (deliver)
        deliver();
}

void LatestJob::setRunning(bool running)
{
    if (std::exchange(m_running, running) != running)
        Q_EMIT runningChanged(running);
}

} // namespace ormalux
