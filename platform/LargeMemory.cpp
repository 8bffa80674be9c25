#include "platform/LargeMemory.h"

#if defined(__linux__)
#include <sys/mman.h>
#endif
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace ormalux {

#if defined(__linux__)

namespace {

constexpr std::size_t largePage = std::size_t(2) << 20;

bool isLarge(std::size_t bytes)
{
    return bytes >= 2 * largePage;
}

std::size_t mappedSize(std::size_t bytes)
{
    return (bytes + largePage - 1) / largePage * largePage;
}

/// Pages that begin where a large page does.
void* map(std::size_t bytes)
{
    const std::size_t size = mappedSize(bytes);
    if (size < bytes || size + largePage < size)
        return nullptr;
    void* mapped =
        mmap(nullptr, size + largePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED)
        return nullptr;
    char* begin = static_cast<char*>(mapped);
    const std::size_t before = (largePage - reinterpret_cast<std::uintptr_t>(begin) % largePage) % largePage;
    if (before > 0)
        munmap(begin, before);
    munmap(begin + before + size, largePage - before);
    madvise(begin + before, size, MADV_HUGEPAGE); // refused where there are none: the pages are small then
    return begin + before;
}

/// A larger or smaller mapping with the pages of the old one.
void* remap(void* block, std::size_t bytes, std::size_t newBytes)
{
    const std::size_t size = mappedSize(bytes), newSize = mappedSize(newBytes);
    if (newSize < size)
        munmap(static_cast<char*>(block) + newSize, size - newSize);
    if (newSize <= size)
        return block;
    void* fresh = map(newBytes);
    if (!fresh)
        return nullptr;
    if (mremap(block, size, size, MREMAP_MAYMOVE | MREMAP_FIXED, fresh) != MAP_FAILED)
        return fresh;
    munmap(fresh, newSize); // the system's number of mappings may be used up
    return nullptr;
}

} // namespace

void* allocateBlock(std::size_t bytes)
{
    return isLarge(bytes) ? map(bytes) : std::malloc(bytes);
}

void freeBlock(void* block, std::size_t bytes)
{
    if (isLarge(bytes) && block)
        munmap(block, mappedSize(bytes));
    else
        std::free(block);
}

void* resizeBlock(void* block, std::size_t bytes, std::size_t newBytes)
{
    if (isLarge(bytes) && isLarge(newBytes))
        return remap(block, bytes, newBytes);
    if (!isLarge(bytes) && !isLarge(newBytes))
        return std::realloc(block, newBytes);
    void* fresh = allocateBlock(newBytes);
    if (!fresh)
        return nullptr;
    std::memcpy(fresh, block, std::min(bytes, newBytes));
    freeBlock(block, bytes);
    return fresh;
}

#else

void* allocateBlock(std::size_t bytes)
{
    return std::malloc(bytes);
}

void freeBlock(void* block, std::size_t)
{
    std::free(block);
}

void* resizeBlock(void* block, std::size_t, std::size_t newBytes)
{
    return std::realloc(block, newBytes);
}

#endif

} // namespace ormalux
