#include "platform/LargeMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>

namespace {

constexpr std::size_t mega = std::size_t(1) << 20;

std::uint32_t valueAt(std::size_t i)
{
    return std::uint32_t(i * 2654435761u);
}

} // namespace

TEST(LargeMemory, ContentsSurviveEveryStepBetweenSmallAndLarge)
{
    const std::size_t sizes[] = {16,        3 * mega, 4 * mega, 5 * mega, 6 * mega + 4,
                                 64 * mega, 5 * mega, mega,     9 * mega, 4};
    std::size_t size = 8;
    auto* block = static_cast<std::uint32_t*>(ormalux::allocateBlock(size));
    std::size_t valid = 0;
    for (std::size_t next : sizes) {
        for (std::size_t i = valid; i < size / 4; ++i)
            block[i] = valueAt(i); // to the very end
        block = static_cast<std::uint32_t*>(ormalux::resizeBlock(block, size, next));
        ASSERT_NE(block, nullptr);
        valid = std::min(size, next) / 4;
        size = next;
        for (std::size_t i = 0; i < valid; ++i)
            ASSERT_EQ(block[i], valueAt(i)) << next;
    }
    ormalux::freeBlock(block, size);
    ormalux::freeBlock(nullptr, 64 * mega);
}

TEST(LargeMemory, NoTwoBlocksShareMemoryWhateverWasFreedBefore)
{
    struct Block
    {
        std::uint32_t* words = nullptr;
        std::size_t size = 0;
        std::uint32_t mark = 0;
    };
    Block blocks[5];
    std::mt19937 engine(12);
    // A word on every page.
    const auto eachPage = [](Block& block, auto visit) {
        for (std::size_t i = 0; i < block.size / 4; i += 1024)
            visit(block.words[i]);
        visit(block.words[block.size / 4 - 1]);
    };
    for (std::uint32_t round = 1; round < 400; ++round) {
        Block& block = blocks[engine() % 5];
        ormalux::freeBlock(block.words, block.size);
        block.size = mega * (3 + engine() % 16) + 4 * (engine() % 1000);
        block.words = static_cast<std::uint32_t*>(ormalux::allocateBlock(block.size));
        block.mark = round;
        ASSERT_NE(block.words, nullptr);
        eachPage(block, [&](std::uint32_t& word) { word = round; });
        for (Block& other : blocks)
            if (other.words)
                eachPage(other, [&](std::uint32_t word) { ASSERT_EQ(word, other.mark) << round; });
    }
    for (const Block& block : blocks)
        ormalux::freeBlock(block.words, block.size);
}

TEST(LargeMemory, WhatCannotBeHadIsNullAndLeavesTheOldBlock)
{
    EXPECT_EQ(ormalux::allocateBlock(SIZE_MAX - mega), nullptr);
    for (std::size_t size : {mega, 8 * mega}) {
        auto* block = static_cast<std::uint8_t*>(ormalux::allocateBlock(size));
        std::fill_n(block, size, std::uint8_t(7));
        EXPECT_EQ(ormalux::resizeBlock(block, size, SIZE_MAX / 4), nullptr);
        EXPECT_EQ(std::count(block, block + size, 7), std::ptrdiff_t(size));
        ormalux::freeBlock(block, size);
    }
}
