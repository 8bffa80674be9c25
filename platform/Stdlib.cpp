#include "platform/Stdlib.h"

#include <cmath>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#include <sched.h>
#endif
#include <thread>
#include <utility>

int CStdlib::GetNumOfProcessors()
{
#if !defined(_WIN32)
    cpu_set_t set;
    CPU_ZERO(&set);
    if (sched_getaffinity(0, sizeof set, &set) == 0 && CPU_COUNT(&set) > 0)
        return CPU_COUNT(&set);
#endif
    const unsigned n = std::thread::hardware_concurrency();
    return n > 0 ? int(n) : 1;
}

long CStdlib::Distance(int x1, int y1, int x2, int y2)
{
    const double dx = double(x2) - x1;
    const double dy = double(y2) - y1;
    return long(std::sqrt(float(dx * dx + dy * dy)));
}

void CStdlib::Swap(int* a, int* b)
{
    std::swap(*a, *b);
}

void CStdlib::Swap(long* a, long* b)
{
    std::swap(*a, *b);
}
