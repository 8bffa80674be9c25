#include "tools/LatestJob.h"

#include <QSemaphore>
#include <QStringList>
#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

namespace {

using ormalux::LatestJob;

/// Jobs that hold still until they are let go, and what came of them.
class LatestJobTest : public testing::Test
{
protected:
    struct Gate
    {
        QSemaphore begun, go;
        std::atomic<int> ended{0};
    };

    LatestJob::Job held(const char* name)
    {
        return [this, name, to = gate] {
            to->begun.release();
            to->go.acquire();
            onWorker = onWorker && QThread::currentThread() != QCoreApplication::instance()->thread();
            ++to->ended;
            return [this, name] {
                inWindow = inWindow && QThread::currentThread() == QCoreApplication::instance()->thread();
                delivered << QLatin1String(name);
            };
        };
    }
    /// Lets count jobs go and waits until they have ended and what they sent has arrived.
    void release(int count)
    {
        gate->go.release(count);
        EXPECT_TRUE(QTest::qWaitFor([&] { return gate->ended == count; }, 20000));
        for (int i = 0; i < 4; ++i)
            QCoreApplication::processEvents();
    }

    std::shared_ptr<Gate> gate = std::make_shared<Gate>();
    std::unique_ptr<LatestJob> job = std::make_unique<LatestJob>();
    QStringList delivered;
    std::atomic<bool> onWorker{true};
    bool inWindow = true;
};

TEST_F(LatestJobTest, OnlyTheNewestIsDelivered)
{
    std::vector<bool> running;
    QObject::connect(job.get(), &LatestJob::runningChanged, [&](bool is) { running.push_back(is); });
    job->start(held("first"));
    gate->begun.acquire();
    job->start(held("second"));
    job->start(held("third"));
    EXPECT_TRUE(job->isRunning());
    release(2);
    EXPECT_EQ(delivered, QStringList{"third"});
    EXPECT_EQ(gate->begun.available(), 1); // the second never began
    EXPECT_EQ(running, (std::vector<bool>{true, false}));
    EXPECT_TRUE(onWorker && inWindow);
}

TEST_F(LatestJobTest, CancellingDoesNotWaitForTheJobAndDropsWhatItFinds)
{
    job->start(held("dropped"));
    gate->begun.acquire();
    job->start(held("waiting"));
    job->cancel(); // the job still holds still: a cancel that waited would never come back
    EXPECT_FALSE(job->isRunning());
    release(1);
    EXPECT_EQ(delivered, QStringList());
    EXPECT_EQ(gate->begun.available(), 0); // the waiting one is gone too
}

TEST_F(LatestJobTest, AJobStartedAfterACancelIsDelivered)
{
    job->start(held("dropped"));
    gate->begun.acquire();
    job->cancel();
    job->start(held("kept"));
    EXPECT_TRUE(job->isRunning());
    release(2);
    EXPECT_EQ(delivered, QStringList{"kept"});
    EXPECT_FALSE(job->isRunning());
}

TEST_F(LatestJobTest, DeletingWhileAJobRunsDropsIt)
{
    job->start(held("dropped"));
    gate->begun.acquire();
    job.reset();
    release(1);
    EXPECT_EQ(delivered, QStringList());
}

} // namespace
