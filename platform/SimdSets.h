#pragma once

// The instruction sets of the kernels: AVX-512 with byte permutes, AVX2, SSE4 and plain code. The sets
// between them cost build time and gain nothing.
#define HWY_WANT_AVX3_DL
// Highway's own assertions need its library; sanitizers switch them on unless told otherwise.
#define HWY_IS_DEBUG_BUILD 0
#if defined(ORMALUX_NARROW_VECTORS)
// Some compilers spill 32-byte vectors to a stack aligned to 16 bytes.
#define HWY_DISABLED_TARGETS (HWY_SSSE3 | HWY_AVX2 | HWY_AVX3 | HWY_AVX3_DL)
#else
#define HWY_DISABLED_TARGETS (HWY_SSSE3 | HWY_AVX3)
#endif

/// Makes the table of one kernel's variants in the order of ormalux::KernelTarget.
#define ORMALUX_SIMD_TABLE(kernel)                                                                           \
    static decltype(&HWY_STATIC_DISPATCH(kernel))                                                            \
        const kernel##Variants[] = {HWY_CHOOSE_AVX3_DL(kernel), HWY_CHOOSE_AVX2(kernel),                     \
                                    HWY_CHOOSE_SSE4(kernel), HWY_CHOOSE_FALLBACK(kernel)}

/// The variant for this machine.
#define ORMALUX_SIMD_CALL(kernel) (*kernel##Variants[static_cast<int>(::ormalux::kernelTarget())])

/// Whether the set being compiled is the plain one, which lacks byte permutes and wide masks: `#if
/// ORMALUX_PLAIN`.
#define ORMALUX_PLAIN (HWY_TARGET == HWY_SCALAR || HWY_TARGET == HWY_EMU128)
