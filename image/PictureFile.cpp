#include "image/PictureFile.h"

#include "image/BmpReader.h"
#include "platform/File.h"
#include "platform/Path.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <new>

namespace ormalux {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t headers = 14 + 40;

void put(std::uint8_t* at, std::int64_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        at[i] = std::uint8_t(value >> (8 * i));
}

/// Both headers and, for gray, the palette: entry i is (i, i, i).
std::vector<std::uint8_t> bmpHead(const PixelSource& picture, std::int64_t pixelBytes)
{
    const std::size_t size = headers + (picture.bitCount == 8 ? 4 * 256 : 0);
    std::vector<std::uint8_t> head(size);
    head[0] = 'B';
    head[1] = 'M';
    put(&head[2], std::int64_t(size) + pixelBytes, 4);
    put(&head[10], std::int64_t(size), 4);
    put(&head[14], 40, 4);
    put(&head[18], picture.width, 4);
    put(&head[22], picture.height, 4);
    put(&head[26], 1, 2);
    put(&head[28], picture.bitCount, 2);
    put(&head[34], pixelBytes, 4);
    put(&head[46], picture.bitCount == 8 ? 256 : 0, 4);
    for (std::size_t i = 0; headers + 4 * i < size; ++i)
        std::memset(&head[headers + 4 * i], int(i), 3);
    return head;
}

/// Large files are looked at before they are read: the beginning tells whether they can be pictures.
PictureRefusal whyNotWorthReading(const char* path, std::uint64_t length, const WhyNoPicture& whyNone)
{
    constexpr std::uint64_t small = std::uint64_t(64) << 20;
    // The most that the largest picture takes: 16 bits of four channels, or the doubled file of a colour
    // image.
    constexpr std::uint64_t longest = std::uint64_t(largestPicture) * 8 + small;
    if (length <= small)
        return {};
    const auto head = readFile(path, std::uint64_t(1) << 16);
    if (!head || head->size() < 2)
        return unknownKind();
    const bool bmp = (*head)[0] == 'B' && (*head)[1] == 'M';
    const PictureRefusal why = bmp ? PictureRefusal() : whyNone(*head);
    return why.none() && length > longest ? tooLarge() : why;
}

/// Of a file that gave no bytes.
PictureFault faultOf(const char* path)
{
    std::error_code error;
    const auto status = std::filesystem::status(nativePath(path), error);
    if (!std::filesystem::exists(status))
        return PictureFault::NotFound;
    if (std::filesystem::is_directory(status))
        return PictureFault::Directory;
    return std::filesystem::is_regular_file(status) ? PictureFault::NoPermission : PictureFault::NotAFile;
}

PictureFile decodeOrKeep(Bytes file, bool indicesAreGray)
{
    PictureFile opened;
    BmpOutcome outcome = readBmp(file, indicesAreGray, opened.picture);
    if (outcome == BmpOutcome::NotOurs)
        outcome = readWideBmp(file, opened.picture);
    switch (outcome) {
    case BmpOutcome::Read:
        break;
    case BmpOutcome::Truncated:
        opened.why = truncatedFile();
        break;
    case BmpOutcome::TooLarge:
        opened.why = tooLarge();
        break;
    case BmpOutcome::NoMemory:
        throw std::bad_alloc();
    case BmpOutcome::NotOurs:
        opened.bytes = std::move(file);
        break;
    }
    return opened;
}

} // namespace

PictureRefusal tooLarge()
{
    return {PictureFault::TooLarge, "it is larger than 512 megapixels"};
}

PictureRefusal unknownKind()
{
    return {PictureFault::NotAPicture, "it is not a picture of a known kind"};
}

PictureRefusal truncatedFile()
{
    return {PictureFault::Truncated, "it is truncated"};
}

std::string readingError(const char* path, const std::string& why)
{
    return "cannot read '" + std::string(path ? path : "") + "': " + why;
}

PictureFile openPicture(const char* path, bool indicesAreGray, const WhyNoPicture& whyNone)
{
    PictureFile opened;
    if (!path) {
        opened.why = {PictureFault::NotFound, "no path was given"};
        return opened;
    }
    const auto length = fileLength(path);
    if (length)
        opened.why = whyNotWorthReading(path, *length, whyNone);
    if (!opened.why.none())
        return opened;
    auto file = length ? readFile(path) : std::nullopt;
    if (file && !file->empty())
        return decodeOrKeep(std::move(*file), indicesAreGray);
    opened.why = file ? PictureRefusal{PictureFault::Empty, "it is empty"}
                      : PictureRefusal{faultOf(path), readFailure(path)};
    return opened;
}

bool writeOrTell(const char* path, std::string* error, const std::function<bool(std::string& why)>& write)
{
    std::string why = "it cannot be created";
    bool written = false;
    try {
        written = path && write(why);
    } catch (const std::bad_alloc&) {
        why = "memory is short";
    }
    if (!written && error)
        *error = "cannot write '" + std::string(path ? path : "") + "': " + why;
    return written;
}

bool writeBmp(const char* path, const PixelSource& picture, std::string* error)
{
    return writeOrTell(path, error, [&](std::string& why) {
        const std::int64_t stride = paddedRow(picture.width, picture.bitCount);
        why = picture.empty() ? "there is no picture" : "it is larger than a BMP may be";
        if (picture.empty() || stride * picture.height > INT32_MAX - 2048)
            return false;
        const std::vector<std::uint8_t> head = bmpHead(picture, stride * picture.height);
        std::vector<std::uint8_t> rows(std::size_t(stride) * std::size_t(picture.height));
        for (int y = 0; y < picture.height; ++y)
            std::memcpy(rows.data() + stride * (picture.height - 1 - y), picture.row(y),
                        std::size_t(picture.width) * std::size_t(picture.bitCount / 8));
        const std::array<std::span<const std::uint8_t>, 2> parts{head, rows};
        std::error_code failure;
        const bool written = writeFile(path, parts, &failure);
        why = writeFailure(failure);
        return written;
    });
}

std::string fileEnding(const char* path)
{
    const std::u8string name = nativePath(path).filename().u8string();
    const std::size_t dot = name.rfind(u8'.');
    std::string ending;
    if (dot != std::u8string::npos)
        ending.assign(name.begin() + std::ptrdiff_t(dot) + 1, name.end());
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    return ending;
}

} // namespace ormalux
