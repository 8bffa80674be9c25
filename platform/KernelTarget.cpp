#include "platform/KernelTarget.h"

#include <atomic>

namespace ormalux {

namespace {

bool machineHas(KernelTarget target)
{
    switch (target) {
    case KernelTarget::Plain:
        return true;
#if defined(__x86_64__) && !defined(ORMALUX_NARROW_VECTORS)
    case KernelTarget::Avx512:
        return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
               __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl") &&
               __builtin_cpu_supports("avx512cd") && __builtin_cpu_supports("avx512vbmi") &&
               __builtin_cpu_supports("avx512vbmi2") && __builtin_cpu_supports("avx512vnni") &&
               __builtin_cpu_supports("avx512bitalg") && __builtin_cpu_supports("avx512vpopcntdq") &&
               __builtin_cpu_supports("gfni") && __builtin_cpu_supports("vpclmulqdq") &&
               __builtin_cpu_supports("bmi2") && machineHas(KernelTarget::Avx2);
    case KernelTarget::Avx2:
        return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") &&
               __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2") &&
               machineHas(KernelTarget::Sse4);
#endif
#if defined(__x86_64__)
    case KernelTarget::Sse4:
        return __builtin_cpu_supports("sse4.2") && __builtin_cpu_supports("ssse3") &&
               __builtin_cpu_supports("pclmul");
#endif
    default:
        return false;
    }
}

KernelTarget bestFrom(KernelTarget wanted)
{
    int index = static_cast<int>(wanted);
    while (!machineHas(static_cast<KernelTarget>(index)))
        ++index;
    return static_cast<KernelTarget>(index);
}

// A module may be used by another module's initialisers, so the choice is made on first use, not at load.
std::atomic<int> chosen{-1};

} // namespace

KernelTarget kernelTarget()
{
    int index = chosen.load(std::memory_order_relaxed);
    if (index < 0) [[unlikely]] {
        index = static_cast<int>(bestFrom(KernelTarget::Avx512));
        chosen.store(index, std::memory_order_relaxed);
    }
    return static_cast<KernelTarget>(index);
}

KernelTarget setKernelTarget(KernelTarget wanted)
{
    const KernelTarget target = bestFrom(wanted);
    chosen.store(static_cast<int>(target), std::memory_order_relaxed);
    return target;
}

} // namespace ormalux
