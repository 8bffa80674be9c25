#pragma once

#include "image/WorkPool.h"
#include "platform/KernelTarget.h"

#include <vector>

/// For tests: everything an operation's result must not depend on.
namespace testing_support {

/// The kernel sets that this machine can run.
inline std::vector<ormalux::KernelTarget> kernelTargets()
{
    using ormalux::KernelTarget;
    std::vector<KernelTarget> found;
    for (KernelTarget target :
         {KernelTarget::Avx512, KernelTarget::Avx2, KernelTarget::Sse4, KernelTarget::Plain})
        if (ormalux::setKernelTarget(target) == target)
            found.push_back(target);
    ormalux::setKernelTarget(KernelTarget::Avx512);
    return found;
}

/// Calls body with every kernel set in turn, then restores the best.
template <class Body>
void forEachKernelTarget(Body body)
{
    for (ormalux::KernelTarget target : kernelTargets()) {
        ormalux::setKernelTarget(target);
        body(target);
    }
    ormalux::setKernelTarget(ormalux::KernelTarget::Avx512);
}

/// Calls body with jobs cut into 1, 2, 3 and 7 bands, then restores the machine's number.
template <class Body>
void forEachBandCount(Body body)
{
    for (int n : {1, 2, 3, 7}) {
        ormalux::setBandCount(n);
        body(n);
    }
    ormalux::setBandCount(0);
}

/// Widths and heights where vectors, bands and rows end in every way.
inline constexpr int oddSizes[] = {1, 2, 3, 4, 5, 7, 17, 31, 64, 65, 129, 641};

} // namespace testing_support
