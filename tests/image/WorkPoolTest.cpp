#include "image/WorkPool.h"

#include "image/AutoThreshold.h"
#include "measure/LineGauge.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <atomic>
#include <numeric>
#include <thread>
#include <tuple>
#include <vector>

#if !defined(_WIN32)
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace ormalux;
using namespace testing_support;

namespace {

constexpr JobCost heavy{1'000'000'000};

std::vector<std::pair<std::int64_t, std::int64_t>> bandsOf(std::int64_t total)
{
    std::vector<std::pair<std::int64_t, std::int64_t>> found(std::size_t(bandCount()), {-1, -1});
    runBands(Job::Threshold, total, heavy, [&](const Band& band) {
        found[band.index] = {band.first, band.end};
    });
    return found;
}

/// Sums 0 .. total - 1 through the pool, one accumulator a band.
std::int64_t sumThrough(Job job, std::int64_t total)
{
    std::vector<std::int64_t> sums(std::size_t(bandCount()), 0);
    runBands(job, total, heavy, [&](const Band& band) {
        for (std::int64_t i = band.first; i < band.end; ++i)
            sums[band.index] += i;
    });
    return std::accumulate(sums.begin(), sums.end(), std::int64_t(0));
}

} // namespace

TEST(WorkPool, CutsIntoEqualBandsAndGivesTheLastTheRemainder)
{
    using Bands = std::vector<std::pair<std::int64_t, std::int64_t>>;
    setBandCount(4);
    EXPECT_EQ(bandsOf(10), (Bands{{0, 2}, {2, 4}, {4, 6}, {6, 10}}));
    EXPECT_EQ(bandsOf(3), (Bands{{0, 0}, {0, 0}, {0, 0}, {0, 3}}));
    EXPECT_EQ(bandsOf(0), (Bands{{0, 0}, {0, 0}, {0, 0}, {0, 0}}));
    setBandCount(1);
    EXPECT_EQ(bandsOf(10), (Bands{{0, 10}}));
    setBandCount(0);
}

TEST(WorkPool, RunsEveryBandOnceJobAfterJob)
{
    forEachBandCount([](int bands) {
        for (int job = 0; job < 3000; ++job) {
            std::vector<std::atomic<int>> runs(std::size_t(bands) * 1u);
            runBands(Job::Convolution, bands, heavy, [&](const Band& band) { runs[band.index]++; });
            for (const auto& n : runs)
                ASSERT_EQ(n, 1) << "job " << job;
        }
    });
}

TEST(WorkPool, ManyThreadsIssueEveryKindAtOnceNestedOnesIncluded)
{
    std::vector<std::thread> hosts;
    std::atomic<int> wrong{0};
    for (int host = 0; host < 64; ++host)
        hosts.emplace_back([&, host] {
            for (int round = 0; round < 20; ++round) {
                const auto job = Job((host + round) % int(Job::Count));
                if (job == Job::RangedMatch) {
                    runBands(job, 4, heavy, [&](const Band&) {
                        if (sumThrough(Job::PatternMatch, 1000) != 499500)
                            ++wrong;
                    });
                } else if (sumThrough(job, 1000) != 499500) {
                    ++wrong;
                }
            }
        });
    for (std::thread& host : hosts)
        host.join();
    EXPECT_EQ(wrong, 0);
}

#if !defined(_WIN32) && !defined(__SANITIZE_THREAD__)
TEST(WorkPool, AForkedChildCompletesItsJobs)
{
    EXPECT_EQ(sumThrough(Job::Threshold, 1000), 499500);
    const pid_t child = fork();
    if (child == 0) {
        alarm(10);
        _exit(sumThrough(Job::Threshold, 1000) == 499500 && sumThrough(Job::RangedMatch, 10) == 45 ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(sumThrough(Job::Threshold, 1000), 499500);
}

TEST(WorkPool, AForkedChildWorksInOneBandWithTheParentsResults)
{
    const auto pixels = testing_support::randomBytes(641 * 97, 5);
    const ConstGrayView view{pixels.data(), 641, 97, 641};
    const LineGaugeTask gauge{{3, 3, 600, 90}, 1, true, 5, 20};
    setBandCount(7);
    const auto measured = [&] {
        LineFit fit{};
        fitEdgeLine(view, gauge, fit);
        return std::tuple(autoThreshold(view, 'A', 1), autoThreshold(view, 'A', 3),
                          autoThreshold(view, 'H', 9), fit.angle);
    };
    const auto expected = measured();
    const pid_t child = fork();
    if (child == 0) {
        alarm(10);
        _exit(bandCount() == 1 && measured() == expected ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    setBandCount(1);
    EXPECT_NE(measured(), expected) << "bands make no difference here";
    setBandCount(0);
}
#endif
