#pragma once

#include <cstdint>
#include <random>
#include <vector>

namespace testing_support {

/// Repeatable random bytes.
inline std::vector<std::uint8_t> randomBytes(std::size_t count, unsigned seed)
{
    std::mt19937 engine(seed);
    std::vector<std::uint8_t> bytes(count);
    for (auto& byte : bytes)
        byte = std::uint8_t(engine() >> 24);
    return bytes;
}

} // namespace testing_support
