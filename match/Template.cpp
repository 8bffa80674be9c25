#include "match/Template.h"

#include "measure/kernels/BlobKernels.h"

#include <algorithm>
#include <cstring>

namespace ormalux {

namespace {

constexpr std::size_t wordBytes = sizeof(std::uint64_t);

std::size_t wordsOf(std::size_t width)
{
    return (width + 63) / 64;
}

/// What a plane takes: its last row is written as whole words.
std::size_t planeWords(std::size_t stride, std::size_t rows)
{
    if (rows == 0)
        return 0;
    const std::size_t words = (stride * (rows - 1) + wordBytes - 1) / wordBytes + wordsOf(stride * 8);
    return (words + kernels::planeStep - 1) / kernels::planeStep * kernels::planeStep;
}

/// The part of a source that is packed.
struct Extent
{
    std::size_t width;
    std::size_t rows;
};

Extent metExtent(const _stMatchSource& source, int mostWidth, int mostHeight)
{
    const int width = std::min(source.width, mostWidth);
    const int rows = std::min(source.height, mostHeight);
    if (!source.data || width < 1 || rows < 1)
        return {1, 0};
    return {std::size_t(width), std::size_t(rows)};
}

/// Rows of a word each, written stride bytes apart: the next row takes the place of what a word has too much.
void putRows(const std::uint64_t* rows, std::size_t count, std::size_t stride, std::uint64_t* plane)
{
    auto* to = reinterpret_cast<unsigned char*>(plane);
    for (std::size_t y = 0; y < count; ++y)
        std::memcpy(to + y * stride, rows + y, wordBytes);
}

/// Packs the pixels of a level; rows has room for a word a row.
void packPlane(const kernels::GrayRows& gray, std::uint8_t level, std::size_t stride, std::uint64_t* rows,
               std::uint64_t* plane)
{
    if (stride % wordBytes == 0)
        return kernels::packLevels(gray, level, level, plane, stride / wordBytes);
    kernels::packLevels(gray, level, level, rows, 1);
    putRows(rows, gray.rows, stride, plane);
}

} // namespace

bool Templates::pack(std::span<const _stMatchSource> sources, int mostWidth, int mostHeight)
{
    m_count = 0;
    m_rows = 0;
    std::size_t widest = 1;
    for (const _stMatchSource& source : sources) {
        const Extent extent = metExtent(source, mostWidth, mostHeight);
        widest = std::max(widest, extent.width);
        m_rows = std::max(m_rows, extent.rows);
    }
    const bool close = widest <= 64;
    const auto strideOf = [&](std::size_t width) { return close ? (widest + 7) / 8 : wordsOf(width) * 8; };
    m_stride = strideOf(widest);
    std::size_t words = 0;
    for (const _stMatchSource& source : sources) {
        const Extent extent = metExtent(source, mostWidth, mostHeight);
        words += 2 * planeWords(strideOf(extent.width), extent.rows);
    }
    Growable<std::uint64_t> rows;
    if (!m_planes.reserve(sources.size()) || !m_facts.reserve(sources.size()) || !m_words.reserve(words) ||
        !rows.reserve(m_rows))
        return false;
    if (words > 0)
        std::memset(m_words.data(), 0, words * wordBytes);
    std::uint64_t* next = m_words.data();
    for (const _stMatchSource& source : sources) {
        const Extent extent = metExtent(source, mostWidth, mostHeight);
        const std::size_t stride = strideOf(extent.width), plane = planeWords(stride, extent.rows);
        const kernels::GrayRows gray{source.data, source.width, extent.width, extent.rows};
        if (extent.rows > 0) {
            packPlane(gray, 255, stride, rows.data(), next);
            packPlane(gray, 0, stride, rows.data(), next + plane);
        }
        m_planes[m_count] = {next, next + plane, stride, extent.rows, plane};
        m_facts[m_count++] = {source.key, float(source.black_count), float(source.white_count),
                              float(std::int64_t(source.width) * source.height)};
        next += 2 * plane;
    }
    return true;
}

bool BoxBits::prepare(const Templates& templates)
{
    const std::size_t plane = planeWords(templates.stride(), templates.rows());
    if (!m_words.reserve(2 * plane + templates.rows()))
        return false;
    m_planes = {m_words.data(), m_words.data() + plane, templates.stride(), templates.rows(), plane};
    return true;
}

void BoxBits::pack(const std::uint8_t* pixels, std::ptrdiff_t stride, int width, int height, int threshold)
{
    const std::size_t plane = m_planes.words;
    if (plane == 0)
        return;
    std::memset(m_words.data(), 0, 2 * plane * wordBytes);
    if (width < 1 || height < 1)
        return;
    const kernels::GrayRows gray{pixels, stride, std::min(std::size_t(width), m_planes.stride * 8),
                                 std::min(std::size_t(height), m_planes.rows)};
    std::uint64_t* white = m_words.data();
    std::uint64_t* black = white + plane;
    // Rows closer than words are packed apart first.
    const bool close = m_planes.stride % wordBytes != 0;
    std::uint64_t* rows = close ? black + plane : white;
    const std::size_t rowWords = close ? 1 : m_planes.stride / wordBytes;
    if (threshold < 255)
        kernels::packLevels(gray, std::uint8_t(std::max(threshold, -1) + 1), 255, rows, rowWords);
    else if (close)
        std::memset(rows, 0, gray.rows * wordBytes);
    if (close)
        putRows(rows, gray.rows, m_planes.stride, white);
    const std::size_t words = wordsOf(gray.width);
    const std::uint64_t lastWord = ~std::uint64_t(0) >> (words * 64 - gray.width);
    std::uint64_t* inverse = close ? rows : black;
    for (std::size_t y = 0; y < gray.rows; ++y, rows += rowWords, inverse += rowWords)
        for (std::size_t i = 0; i < words; ++i)
            inverse[i] = ~rows[i] & (i + 1 < words ? ~std::uint64_t(0) : lastWord);
    if (close)
        putRows(inverse - gray.rows, gray.rows, m_planes.stride, black);
}

} // namespace ormalux
