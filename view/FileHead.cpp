#include "view/FileHead.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace ormalux {

using Bytes = std::span<const std::uint8_t>;

std::uint64_t number(Bytes file, std::uint64_t at, int bytes, bool littleEndian)
{
    if (at > file.size() || file.size() - at < std::uint64_t(bytes))
        return 0;
    std::uint64_t value = 0;
    for (int i = 0; i < bytes; ++i)
        value = value << 8 | file[std::size_t(at) + std::size_t(littleEndian ? bytes - 1 - i : i)];
    return value;
}

namespace {

bool beginsWith(Bytes file, std::string_view text)
{
    return file.size() >= text.size() && std::memcmp(file.data(), text.data(), text.size()) == 0;
}

/// Walks the chunks to the one that ends the picture.
FileHead pngHead(Bytes file)
{
    FileHead head;
    const bool palette = number(file, 25, 1) == 3;
    head.bits = palette ? 0 : int(number(file, 24, 1));
    head.truncated = true;
    for (std::uint64_t at = 8; at + 12 <= file.size(); at += 12 + number(file, at, 4, false))
        if (beginsWith(file.subspan(std::size_t(at) + 4), "IEND")) {
            head.truncated = false;
            break;
        }
    return head;
}

/// Walks the segments to the compressed pixels, behind which the end of the picture must be marked; bytes
/// that look like that mark do not occur among them.
FileHead jpegHead(Bytes file)
{
    FileHead head;
    head.truncated = true;
    for (std::uint64_t at = 2; at + 4 <= file.size() && file[std::size_t(at)] == 0xFF;) {
        const int marker = file[std::size_t(at) + 1];
        if (marker == 0xFF) {
            ++at; // a byte that fills up
            continue;
        }
        const bool frame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame)
            head.bits = int(number(file, at + 4, 1));
        if (marker == 0xDA) {
            static constexpr std::uint8_t end[] = {0xFF, 0xD9};
            const Bytes pixels = file.subspan(std::size_t(at));
            head.truncated = std::ranges::search(pixels, end).empty();
            break;
        }
        at += 2 + number(file, at + 2, 2, false);
    }
    return head;
}

/// The kinds of BMP that the toolkit fills up in silence when rows are missing.
FileHead bmpHead(Bytes file)
{
    const bool old = number(file, 14, 4) == 12;
    const std::int64_t width = old ? std::int64_t(number(file, 18, 2)) : std::int32_t(number(file, 18, 4));
    const std::int64_t height = old ? std::int64_t(number(file, 20, 2)) : std::int32_t(number(file, 22, 4));
    const auto bits = std::int64_t(number(file, old ? 24 : 28, 2));
    const auto compression = old ? 0 : number(file, 30, 4);
    const auto start = std::int64_t(number(file, 10, 4));
    const std::int64_t rows = height < 0 ? -height : height;
    const bool packed = compression != 0 && compression != 3; // 3 names the bits of each colour
    FileHead head;
    if (width <= 0 || rows == 0 || bits > 32)
        return head;
    const std::int64_t rowBytes = packed ? 0 : (width * bits + 31) / 32 * 4;
    const std::int64_t last = packed ? std::int64_t(number(file, 34, 4)) : (width * bits + 7) / 8;
    const std::int64_t room = std::int64_t(file.size()) - start - last;
    // Divided, for the product of sizes that no file holds may outgrow the number.
    head.truncated = room < 0 || (rowBytes > 0 && rows - 1 > room / rowBytes);
    return head;
}

/// "P5 width height largest", with comments between; the bits that the largest level needs.
FileHead pnmHead(Bytes file)
{
    std::size_t at = 2;
    std::uint32_t value = 0;
    for (int i = 0; i < 3; ++i) {
        while (at < file.size() && (file[at] <= ' ' || file[at] == '#'))
            if (file[at++] == '#')
                while (at < file.size() && file[at] != '\n')
                    ++at;
        for (value = 0; at < file.size() && file[at] >= '0' && file[at] <= '9' && value < 1000000; ++at)
            value = 10 * value + (file[at] - std::uint32_t('0'));
    }
    return {std::min(int(std::bit_width(value)), 16)};
}

} // namespace

FileHead readFileHead(std::span<const std::uint8_t> file)
{
    using namespace std::string_view_literals;
    if (beginsWith(file, "\x89PNG"))
        return pngHead(file);
    if (beginsWith(file, "II*\0"sv) || beginsWith(file, "MM\0*"sv) || beginsWith(file, "II+\0"sv) ||
        beginsWith(file, "MM\0+"sv))
        return tiffHead(file);
    if (beginsWith(file, "\xFF\xD8\xFF"))
        return jpegHead(file);
    if (beginsWith(file, "BM"))
        return bmpHead(file);
    for (const std::string_view kind : {"P2", "P3", "P5", "P6"})
        if (beginsWith(file, kind))
            return pnmHead(file);
    return {};
}

} // namespace ormalux
