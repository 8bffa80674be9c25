#include "image/WorkPool.h"

#include "platform/Stdlib.h"

#include <atomic>

namespace ormalux {

namespace {
const int processors = CStdlib::GetNumOfProcessors();
std::atomic<int> bands{0};
} // namespace

int bandCount()
{
    const int n = bands.load(std::memory_order_relaxed);
    return n > 0 ? n : processors;
}

void setBandCount(int n)
{
    bands.store(n, std::memory_order_relaxed);
}

Band bandOf(int index, std::int64_t total)
{
    const int n = bandCount();
    const std::int64_t share = total / n;
    return {index, share * index, index == n - 1 ? total : share * (index + 1)};
}

namespace pool_detail {

void run(Job, std::int64_t total, JobCost, Body body, void* context)
{
    for (int i = 0; i < bandCount(); ++i)
        body(context, bandOf(i, total));
}

} // namespace pool_detail

} // namespace ormalux
