#include "array/MatchSourceFile.h"
#include "array/TemplatePixels.h"
#include "platform/File.h"

namespace ormalux {

std::optional<_stMatchSource> readMatchSource(const char* path)
{
    if (!path)
        return std::nullopt;
    const auto head = readFile(path, matchSourceHeaderSize);
    const auto length = fileLength(path);
    if (!head || !length)
        return std::nullopt;
    const auto header = parseMatchSourceHeader(*head);
    if (!header)
        return std::nullopt;
    const std::uint64_t pixelCount = std::uint64_t(header->width) * std::uint64_t(header->height);
    if (matchSourceHeaderSize + pixelCount > *length)
        return std::nullopt;
    const auto bytes = readFile(path, matchSourceHeaderSize + pixelCount);
    if (!bytes)
        return std::nullopt;
    const auto parsed = parseMatchSource(*bytes); // the file may have changed meanwhile
    if (!parsed)
        return std::nullopt;
    _stMatchSource source = parsed->source;
    if (!parsed->pixels.empty()) {
        source.data = keepTemplatePixels(parsed->pixels);
        if (!source.data)
            return std::nullopt;
    }
    return source;
}

} // namespace ormalux
