#include "view/ViewImage.h"

#include "color/VisionImage24.h"
#include "image/VisionImage.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <functional>
#include <new>
#include <utility>

namespace ormalux {

namespace {

/// The bytes of a buffer; 0 for a size that makes none.
std::int64_t bufferLength(int width, int height, int bitCount)
{
    if (width < 1 || height < 1 || bitCount < 1 || bitCount > 64)
        return 0;
    const std::int64_t row = paddedRow(width, bitCount);
    return row <= INT_MAX / height ? row * height : 0;
}

void copyRows(const PixelSource& from, std::uint8_t* firstRow, std::ptrdiff_t step)
{
    const std::size_t bytes = std::size_t(from.width) * std::size_t(from.bitCount / 8);
    for (int y = 0; y < from.height; ++y)
        std::memmove(firstRow + y * step, from.row(y), bytes);
}

} // namespace

void ViewImage::release()
{
    if (m_owned)
        delete[] m_bits;
    m_bits = nullptr;
}

void ViewImage::adopt(std::uint8_t* bits, bool owned, int width, int height, int bitCount, RowOrder order)
{
    if (bits != m_bits)
        release();
    m_bits = bits;
    m_owned = owned;
    m_width = width;
    m_height = height;
    m_bitCount = bitCount;
    m_order = order;
}

bool ViewImage::owns(const std::uint8_t* bits) const
{
    const std::less<const std::uint8_t*> below;
    return m_owned && m_bits && !below(bits, m_bits) &&
           below(bits, m_bits + bufferLength(m_width, m_height, m_bitCount));
}

bool ViewImage::outgrows(const std::uint8_t* bits, std::int64_t length) const
{
    return owns(bits) && length > m_bits + bufferLength(m_width, m_height, m_bitCount) - bits;
}

std::uint8_t* ViewImage::roomFor(std::int64_t length, const std::uint8_t* from)
{
    const std::int64_t present = m_bits && m_owned ? bufferLength(m_width, m_height, m_bitCount) : 0;
    if (length > 0 && length == present && !owns(from))
        return m_bits;
    return length > 0 ? new (std::nothrow) std::uint8_t[std::size_t(length)] : nullptr;
}

void ViewImage::create(int width, int height, int bitCount, RowOrder order)
{
    const std::int64_t length = bufferLength(width, height, bitCount);
    adopt(length ? new (std::nothrow) std::uint8_t[std::size_t(length)]() : nullptr, true, width, height,
          bitCount, order);
}

void ViewImage::copy(int width, int height, int bitCount, const std::uint8_t* bits, RowOrder order)
{
    std::int64_t length = bits ? bufferLength(width, height, bitCount) : 0;
    if (outgrows(bits, length))
        length = 0;
    // The caller may pass the very buffer that is shown: it is freed only after the copy.
    std::uint8_t* const room = roomFor(length, bits);
    if (room)
        std::memcpy(room, bits, std::size_t(length));
    adopt(room, true, width, height, bitCount, order);
}

void ViewImage::link(int width, int height, int bitCount, std::uint8_t* bits, RowOrder order)
{
    const std::int64_t length = bits ? bufferLength(width, height, bitCount) : 0;
    if (length == 0 || outgrows(bits, length))
        return adopt(nullptr, false, width, height, bitCount, order);
    const bool own = owns(bits);
    std::uint8_t* const kept = own ? m_bits : bits;
    if (kept != bits)
        std::memmove(kept, bits, std::size_t(length));
    adopt(kept, own, width, height, bitCount, order);
}

bool ViewImage::assign(const PixelSource& picture, RowOrder order)
{
    const std::int64_t length =
        picture.empty() ? 0 : bufferLength(picture.width, picture.height, picture.bitCount);
    const std::ptrdiff_t step = paddedRow(picture.width, picture.bitCount);
    const bool down = order == RowOrder::TopDown;
    std::uint8_t* const room =
        roomFor(length, length ? std::min(picture.row(0), picture.row(picture.height - 1)) : nullptr);
    if (!room)
        return false;
    const std::ptrdiff_t used = std::ptrdiff_t(picture.width) * (picture.bitCount / 8);
    for (int y = 0; used < step && y < picture.height; ++y)
        std::memset(room + y * step + used, 0, std::size_t(step - used));
    copyRows(picture, down ? room : room + step * (picture.height - 1), down ? step : -step);
    adopt(room, true, picture.width, picture.height, picture.bitCount, order);
    return true;
}

std::uint8_t* ViewImage::byteAt(std::int64_t offset, std::int64_t count)
{
    const std::int64_t length = m_bits ? bufferLength(m_width, m_height, m_bitCount) : 0;
    return offset >= 0 && offset + count <= length ? m_bits + offset : nullptr;
}

PixelSource ViewImage::source() const
{
    if (!m_bits)
        return {};
    const std::ptrdiff_t step = stride();
    if (m_order == RowOrder::TopDown)
        return {m_bits, m_width, m_height, step, m_bitCount};
    return {m_bits + step * (m_height - 1), m_width, m_height, -step, m_bitCount};
}

std::optional<std::uint32_t> ViewImage::valueAt(int x, int y) const
{
    const PixelSource picture = source();
    if (picture.empty() || x < 0 || y < 0 || x >= m_width || y >= m_height)
        return std::nullopt;
    if (m_bitCount == 8)
        return picture.row(y)[x];
    const std::uint8_t* const pixel = picture.row(y) + std::ptrdiff_t(3) * x;
    return std::uint32_t(pixel[2]) << 16 | std::uint32_t(pixel[1]) << 8 | pixel[0];
}

Picture ViewImage::part(int x, int y, int width, int height, bool gray) const
{
    const PixelSource picture = source();
    const std::int64_t left = std::max(x, 0);
    const std::int64_t top = std::max(y, 0);
    const std::int64_t right = std::min<std::int64_t>(std::int64_t(x) + width, m_width);
    const std::int64_t bottom = std::min<std::int64_t>(std::int64_t(y) + height, m_height);
    Picture result;
    if (picture.empty() || left >= right || top >= bottom)
        return result;
    const int bytes = picture.bitCount / 8;
    try {
        result.pixels.resize(std::size_t((right - left) * (bottom - top) * bytes));
    } catch (const std::bad_alloc&) {
        return result;
    }
    result.width = int(right - left);
    result.height = int(bottom - top);
    result.bitCount = picture.bitCount;
    copyRows(
        {picture.row(int(top)) + left * bytes, result.width, result.height, picture.stride, picture.bitCount},
        result.pixels.data(), std::ptrdiff_t(result.width) * bytes);
    return gray ? toGray(std::move(result)) : result;
}

void ViewImage::writeBack(const PixelSource& result)
{
    if (result.empty())
        return;
    if (result.width != m_width || result.height != m_height) {
        assign(result, m_order);
        return;
    }
    const PixelSource target = source();
    if (result.bits != target.bits)
        copyRows(result, const_cast<std::uint8_t*>(target.bits), target.stride);
}

bool ViewImage::edit(const std::function<void(CKestImage&)>& operation)
{
    const PixelSource picture = source();
    if (picture.empty() || m_bitCount != 8)
        return false;
    CKestImage image;
    Picture packed;
    const bool direct = picture.stride == m_width;
    if (!direct) {
        packed = part(0, 0, m_width, m_height, false);
        if (packed.empty())
            return false;
    }
    image.SetImagePtrLink(m_width, m_height, direct ? m_bits : packed.pixels.data());
    operation(image);
    const ConstGrayView result = std::as_const(image).view();
    writeBack({result.pixels, result.width, result.height, result.stride, 8});
    return true;
}

bool ViewImage::edit(const std::function<void(CKestImage24&)>& operation, ColorRows rows)
{
    const PixelSource picture = source();
    if (picture.empty() || m_bitCount != 24)
        return false;
    const std::ptrdiff_t step =
        rows == ColorRows::Padded ? paddedRow(m_width, 24) : std::ptrdiff_t(3) * m_width;
    CKestImage24 image;
    std::vector<std::uint8_t> copied;
    if (picture.stride != step) {
        try {
            copied.resize(std::size_t(paddedRow(m_width, 24) * m_height));
        } catch (const std::bad_alloc&) {
            return false;
        }
        copyRows(picture, copied.data(), step);
    }
    image.SetImagePtrLink(m_width, m_height, copied.empty() ? m_bits : copied.data());
    operation(image);
    const ConstColorView result = std::as_const(image).view();
    const std::ptrdiff_t outStep =
        rows == ColorRows::Padded ? paddedRow(result.width, 24) : std::ptrdiff_t(3) * result.width;
    writeBack({result.pixels, result.width, result.height, outStep, 24});
    return true;
}

} // namespace ormalux
