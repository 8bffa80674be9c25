#include "platform/LargeMemory.h"

#if defined(__linux__)
#include <sys/mman.h>
#endif
#include <algorithm>
#include <atomic>
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

/// Keeps the large block that was freed last for the next one: results that are gathered anew for every
/// picture would spend more time on the system's clearing of their pages than on being found. The system may
/// have the pages back while nobody uses them.
class SpareBlock
{
public:
    ~SpareBlock()
    {
        if (void* block = m_block.exchange(nullptr))
            munmap(block, sizeOf(block));
    }

    /// Null unless the kept block is large enough, and not more than twice as large.
    void* take(std::size_t size)
    {
        void* block = m_block.load(std::memory_order_relaxed) ? m_block.exchange(nullptr) : nullptr;
        if (!block)
            return nullptr;
        const std::size_t kept = sizeOf(block);
        const bool fits = kept >= size && kept / 2 <= size;
        if (const std::size_t used = fits ? size : 0; used < kept)
            munmap(static_cast<char*>(block) + used, kept - used);
        return fits ? block : nullptr;
    }

    void give(void* block, std::size_t size)
    {
        if (size <= mostKept) {
            madvise(block, size, MADV_FREE);
            sizeOf(block) = size;
            block = m_block.exchange(block);
            size = block ? sizeOf(block) : 0;
        }
        if (block)
            munmap(block, size);
    }

private:
    static constexpr std::size_t mostKept = std::size_t(64) << 20;

    /// Stands in the block itself, so that one exchange moves both.
    static std::size_t& sizeOf(void* block) { return *static_cast<std::size_t*>(block); }

    std::atomic<void*> m_block{nullptr};
};

SpareBlock spare;

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
    if (!isLarge(bytes))
        return std::malloc(bytes);
    void* kept = bytes < SIZE_MAX - largePage ? spare.take(mappedSize(bytes)) : nullptr;
    return kept ? kept : map(bytes);
}

void freeBlock(void* block, std::size_t bytes)
{
    if (isLarge(bytes) && block)
        spare.give(block, mappedSize(bytes));
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
