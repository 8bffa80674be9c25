#include "steps/PictureLoader.h"

#include "image/VisionImage.h"
#include "platform/File.h"

#include <atomic>
#include <cstdint>
#include <span>

namespace ormalux {

namespace {

constexpr std::uint64_t largestFile = std::uint64_t(2) << 30;

std::uint32_t number(std::span<const std::uint8_t> file, std::size_t at, int bytes)
{
    std::uint32_t value = 0;
    for (int i = bytes - 1; i >= 0; --i)
        value = value << 8 | file[at + std::size_t(i)];
    return value;
}

/// The gray level of a stored pixel: its palette entry's or its channels' mean.
std::uint8_t levelAt(std::span<const std::uint8_t> file, std::size_t at, int bits, std::size_t palette)
{
    const std::size_t color = bits == 8 ? palette + 4 * std::size_t(file[at]) : at;
    return std::uint8_t((file[color] + file[color + 1] + file[color + 2]) / 3);
}

std::shared_ptr<const CKestImage> readBmp(const std::string& path, std::string& why)
{
    const auto bytes = readFile(path.c_str(), largestFile);
    if (!bytes) {
        why = "cannot be read";
        return nullptr;
    }
    const std::span<const std::uint8_t> file(*bytes);
    why = "not an uncompressed BMP of 8, 24 or 32 bits, which is all that is read here";
    if (file.size() < 54 || file[0] != 'B' || file[1] != 'M' || number(file, 14, 4) < 40 ||
        number(file, 30, 4) != 0)
        return nullptr;
    const int bits = int(number(file, 28, 2));
    const std::int64_t width = std::int32_t(number(file, 18, 4)), rows = std::int32_t(number(file, 22, 4));
    const std::int64_t height = rows < 0 ? -rows : rows, stride = (width * bits + 31) / 32 * 4;
    const std::uint64_t start = number(file, 10, 4), palette = 14 + std::uint64_t(number(file, 14, 4));
    if ((bits != 8 && bits != 24 && bits != 32) || width < 1 || height < 1 || width > 65535 || height > 65535)
        return nullptr;
    if (start < 54 || start + std::uint64_t(stride * height) > file.size() ||
        (bits == 8 && palette + 1024 > file.size())) {
        why = "truncated";
        return nullptr;
    }
    auto image = std::make_shared<CKestImage>(int(width), int(height));
    const GrayView view = image->view();
    if (view.empty()) {
        why = "too little memory";
        return nullptr;
    }
    for (std::int64_t y = 0; y < height; ++y) {
        const std::size_t row = std::size_t(start) + std::size_t(stride * (rows < 0 ? y : height - 1 - y));
        for (std::int64_t x = 0; x < width; ++x)
            view.row(int(y))[x] = levelAt(file, row + std::size_t(x * bits / 8), bits, std::size_t(palette));
    }
    return image;
}

std::atomic<PictureLoader> loader{readBmp};

} // namespace

void setPictureLoader(PictureLoader other)
{
    loader = other ? other : readBmp;
}

std::shared_ptr<const CKestImage> loadRecipePicture(const std::string& path, std::string& why)
{
    return loader.load()(path, why);
}

} // namespace ormalux
