// How a kernel file is laid out: the kernels stand in ormalux::HWY_NAMESPACE and are compiled once for every
// instruction set; below `#if HWY_ONCE` stand the tables and the functions that the algorithms call.
//
//     #include "image/kernels/Example.h"
//     #undef HWY_TARGET_INCLUDE
//     #define HWY_TARGET_INCLUDE "image/kernels/Example.cpp"
//     #include "platform/Simd.h"
//
//     HWY_BEFORE_NAMESPACE();
//     namespace ormalux::HWY_NAMESPACE {
//     namespace hn = hwy::HWY_NAMESPACE;
//     void example(...) {...}
//     }
//     HWY_AFTER_NAMESPACE();
//
//     #if HWY_ONCE
//     namespace ormalux::kernels {
//     ORMALUX_SIMD_TABLE(example);
//     void example(...) { ORMALUX_SIMD_CALL(example)(...); }
//     }
//     #endif
//
// This header has no include guard of its own around Highway's: it is read again for every instruction set.
// The choice of the set is ours, so nothing of Highway's but its headers is needed.

#include "platform/SimdSets.h"

#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/KernelTarget.h"
