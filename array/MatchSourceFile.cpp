#include "array/MatchSourceFile.h"

#include "platform/File.h"

#include <array>

namespace ormalux {

namespace {

std::uint64_t pixelCount(const _stMatchSource& source)
{
    return std::uint64_t(source.width) * std::uint64_t(source.height);
}

LONG readNumber(const std::uint8_t* bytes)
{
    return LONG(bytes[0] | DWORD(bytes[1]) << 8 | DWORD(bytes[2]) << 16 | DWORD(bytes[3]) << 24);
}

void writeNumber(std::uint8_t* bytes, LONG number)
{
    for (int i = 0; i < 4; ++i)
        bytes[i] = std::uint8_t(DWORD(number) >> (8 * i));
}

} // namespace

std::optional<_stMatchSource> parseMatchSourceHeader(std::span<const std::uint8_t> bytes)
{
    if (bytes.size() < matchSourceHeaderSize)
        return std::nullopt;
    _stMatchSource source;
    source.key = bytes[0];
    source.black_count = readNumber(&bytes[1]);
    source.white_count = readNumber(&bytes[5]);
    source.threshold = readNumber(&bytes[9]);
    source.width = readNumber(&bytes[13]);
    source.height = readNumber(&bytes[17]);
    if (source.width < 0 || source.height < 0)
        return std::nullopt;
    return source;
}

std::optional<ParsedMatchSource> parseMatchSource(std::span<const std::uint8_t> bytes)
{
    const auto header = parseMatchSourceHeader(bytes);
    if (!header || pixelCount(*header) > bytes.size() - matchSourceHeaderSize)
        return std::nullopt;
    return ParsedMatchSource{*header, bytes.subspan(matchSourceHeaderSize, std::size_t(pixelCount(*header)))};
}

bool writeMatchSource(const char* path, const _stMatchSource& source, std::error_code* why)
{
    if (why)
        *why = std::make_error_code(std::errc::invalid_argument);
    if (!path || source.width < 0 || source.height < 0 || (pixelCount(source) > 0 && !source.data))
        return false;
    std::array<std::uint8_t, matchSourceHeaderSize> header;
    header[0] = source.key;
    writeNumber(&header[1], source.black_count);
    writeNumber(&header[5], source.white_count);
    writeNumber(&header[9], source.threshold);
    writeNumber(&header[13], source.width);
    writeNumber(&header[17], source.height);
    const std::span<const std::uint8_t> parts[] = {header, {source.data, std::size_t(pixelCount(source))}};
    return writeFile(path, parts, why);
}

} // namespace ormalux
