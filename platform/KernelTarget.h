#pragma once

namespace ormalux {

/// The instruction sets that kernels are compiled for, best first.
enum class KernelTarget
{
    Avx512,
    Avx2,
    Sse4,
    Plain
};

/// The set that kernels run with: the best that both the machine and the build have.
KernelTarget kernelTarget();

/// For tests and the benchmark: restricts kernels to the given set or the next one that exists below it.
/// Not to be called while operations run. Returns the set now in use.
KernelTarget setKernelTarget(KernelTarget wanted);

} // namespace ormalux
