#pragma once

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>

namespace ormalux {

/// Runs jobs off the window's thread, one at a time, and delivers only what the newest one found: a job asked
/// for while another runs waits, and a newer one takes its place. Cancelling, and deleting this object, is
/// immediate: the running job goes on unseen and what it finds is dropped.
///
/// A job must not touch what it does not share in the ownership of.
class LatestJob : public QObject
{
    Q_OBJECT

public:
    using Deliver = std::function<void()>; ///< runs on the window's thread
    using Job = std::function<Deliver()>;  ///< runs on a worker's

    explicit LatestJob(QObject* parent = nullptr);
    ~LatestJob() override;

    /// Waits so long for the job: when it has ended by then, what it found is delivered before this returns.
    /// A job that has to wait for an older one is not waited for.
    void start(Job job, std::chrono::milliseconds patience = {});
    void cancel();
    bool isRunning() const { return m_running; }

Q_SIGNALS:
    void runningChanged(bool running);

private:
    struct Launched;

    std::shared_ptr<Launched> launch(Job job);
    void finished(Launched& job);
    void setRunning(bool running);

    Job m_next;
    unsigned m_number = 0; ///< of the job whose result is wanted
    bool m_busy = false;   ///< a worker has a job of ours, wanted or not
    bool m_running = false;
};

} // namespace ormalux
