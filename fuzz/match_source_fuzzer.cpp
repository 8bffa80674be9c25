#include "array/MatchSourceFile.h"

#include <cstdlib>

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

/// Any bytes as a match source file: what is accepted lies within the bytes and has exactly its size.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::span<const std::uint8_t> bytes(data, size);
    const auto header = ormalux::parseMatchSourceHeader(bytes);
    require(header.has_value() || !ormalux::parseMatchSource(bytes));
    require(!header || (size >= ormalux::matchSourceHeaderSize && header->width >= 0 && header->height >= 0));
    const auto parsed = ormalux::parseMatchSource(bytes);
    if (!parsed)
        return 0;
    const std::uint64_t area = std::uint64_t(parsed->source.width) * std::uint64_t(parsed->source.height);
    require(parsed->pixels.size() == area && parsed->source.data == nullptr);
    require(parsed->source.key == data[0]);
    std::uint8_t sum = 0;
    for (const std::uint8_t pixel : parsed->pixels) // every pixel can be read
        sum = std::uint8_t(sum + pixel);
    // A byte less than it needs is refused.
    require(
        !ormalux::parseMatchSource(bytes.first(ormalux::matchSourceHeaderSize + parsed->pixels.size() - 1)));
    static volatile std::uint8_t seen;
    seen = sum;
    return 0;
}
