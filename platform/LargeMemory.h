#pragma once

#include "platform/Export.h"

#include <cstddef>

namespace ormalux {

/// Memory in blocks that can grow. Small blocks come from the heap; large ones straight from the system where
/// it offers that: backed by large pages, so that their first use does not cost a fault every few kilobytes,
/// and grown by moving pages instead of bytes. Contents of fresh memory are undefined, alignment is that of
/// malloc. The caller remembers each block's size, above 0. Safe to call from any thread; nothing throws.

/// Null when memory is short.
ORMALUX_API void* allocateBlock(std::size_t bytes);
/// The block with its contents, up to the smaller size, maybe elsewhere. Null when memory is short: the old
/// block is then as it was.
ORMALUX_API void* resizeBlock(void* block, std::size_t bytes, std::size_t newBytes);
/// Null is fine.
ORMALUX_API void freeBlock(void* block, std::size_t bytes);

} // namespace ormalux
