#include "platform/Stdlib.h"

#include "platform/KernelTarget.h"
#include "platform/Process.h"

#include <climits>
#include <cmath>
#include <utility>

int CStdlib::GetNumOfProcessors()
{
    return ormalux::processorsAllowed();
}

const char* CStdlib::GetInstructionSet()
{
    constexpr const char* names[] = {"AVX-512", "AVX2", "SSE4.2", "plain"};
    return names[static_cast<int>(ormalux::kernelTarget())];
}

CString CStdlib::GetInstancePath(void* instance)
{
    static const char here = 0;
    return ormalux::moduleFolder(instance ? instance : &here);
}

long CStdlib::Distance(int x1, int y1, int x2, int y2)
{
    const double dx = double(x2) - x1;
    const double dy = double(y2) - y1;
    const float distance = std::sqrt(float(dx * dx + dy * dy));
    // Where long has 32 bits the farthest points lie further apart than it holds.
    return distance < float(LONG_MAX) ? long(distance) : LONG_MAX;
}

void CStdlib::Swap(int* a, int* b)
{
    if (a && b)
        std::swap(*a, *b);
}

void CStdlib::Swap(long* a, long* b)
{
    if (a && b)
        std::swap(*a, *b);
}
