// Linked with --wrap for malloc, calloc, realloc and mmap into a program that has the library's objects, or
// with ORMALUX_TEST_LOADS_MODULE into one that loads the module. A program's operators new replace the
// standard library's anyway.
#include "tests/support/FailingMemory.h"

#include <sys/types.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<bool> failing{false};
std::atomic<bool> failed{false};
std::atomic<long> left{0};
std::atomic<bool> onceOnly{true};

bool refused()
{
    if (!failing.load())
        return false;
    const long number = left.fetch_sub(1);
    if (number > 0 || (number < 0 && onceOnly.load()))
        return false;
    failed = true;
    return true;
}

} // namespace

// A program that loads the module takes the place of the C library's malloc for all of the process; one that
// is linked with the module's objects has their calls wrapped, which sanitizers bear.
#if defined(ORMALUX_TEST_LOADS_MODULE)
#define REAL(name) __libc_##name
#define FAILING(name) name
#else
#define REAL(name) __real_##name
#define FAILING(name) __wrap_##name
#endif

extern "C" {
void* REAL(malloc)(std::size_t);
void* REAL(calloc)(std::size_t, std::size_t);
void* REAL(realloc)(void*, std::size_t);
void* FAILING(malloc)(std::size_t size)
{
    return refused() ? nullptr : REAL(malloc)(size);
}
void* FAILING(calloc)(std::size_t count, std::size_t size)
{
    return refused() ? nullptr : REAL(calloc)(count, size);
}
void* FAILING(realloc)(void* block, std::size_t size)
{
    return refused() ? nullptr : REAL(realloc)(block, size);
}
#if !defined(ORMALUX_TEST_LOADS_MODULE)
void* __real_mmap(void*, std::size_t, int, int, int, off_t);
void* __wrap_mmap(void* at, std::size_t size, int protection, int flags, int file, off_t offset)
{
    return refused() ? reinterpret_cast<void*>(-1) : __real_mmap(at, size, protection, flags, file, offset);
}
#endif
}

namespace {

void* fresh(std::size_t size)
{
    return refused() ? nullptr : REAL(malloc)(size > 0 ? size : 1);
}

void* fresh(std::size_t size, std::align_val_t alignment)
{
    const std::size_t step = std::size_t(alignment);
    return refused() ? nullptr : std::aligned_alloc(step, (size + step) / step * step);
}

void* orThrow(void* block)
{
    if (!block)
        throw std::bad_alloc();
    return block;
}

} // namespace

// clang-format off
void* operator new(std::size_t n) { return orThrow(fresh(n)); }
void* operator new[](std::size_t n) { return orThrow(fresh(n)); }
void* operator new(std::size_t n, std::align_val_t a) { return orThrow(fresh(n, a)); }
void* operator new[](std::size_t n, std::align_val_t a) { return orThrow(fresh(n, a)); }
void* operator new(std::size_t n, const std::nothrow_t&) noexcept { return fresh(n); }
void* operator new[](std::size_t n, const std::nothrow_t&) noexcept { return fresh(n); }
void* operator new(std::size_t n, std::align_val_t a, const std::nothrow_t&) noexcept { return fresh(n, a); }
void* operator new[](std::size_t n, std::align_val_t a, const std::nothrow_t&) noexcept { return fresh(n, a); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete(void* p, std::size_t, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t, std::align_val_t) noexcept { std::free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { std::free(p); }
// clang-format on

namespace testing_support {

FailingMemory::FailingMemory(long number, Fails how)
{
    left = number;
    onceOnly = how == Fails::Once;
    failed = false;
    failing = true;
}

FailingMemory::~FailingMemory()
{
    failing = false;
}

bool FailingMemory::hasFailed() const
{
    return failed;
}

} // namespace testing_support
