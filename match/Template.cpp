#include "match/Template.h"

#include "measure/kernels/BlobKernels.h"

#include <algorithm>
#include <cstring>

namespace ormalux {

namespace {

std::size_t paddedWords(std::size_t stride, std::size_t rows)
{
    return (stride * rows + kernels::planeStep - 1) / kernels::planeStep * kernels::planeStep;
}

struct Extent
{
    std::size_t width;
    std::size_t rows;
    std::size_t stride;
};

Extent metExtent(const _stMatchSource& source, int mostWidth, int mostHeight)
{
    const int width = std::min(source.width, mostWidth);
    const int rows = std::min(source.height, mostHeight);
    if (!source.data || width < 1 || rows < 1)
        return {0, 0, 1};
    return {std::size_t(width), std::size_t(rows), (std::size_t(width) + 63) / 64};
}

} // namespace

bool Templates::pack(std::span<const _stMatchSource> sources, int mostWidth, int mostHeight)
{
    m_count = 0;
    m_stride = 1;
    m_rows = 0;
    std::size_t words = 0;
    for (const _stMatchSource& source : sources) {
        const Extent extent = metExtent(source, mostWidth, mostHeight);
        words += 2 * paddedWords(extent.stride, extent.rows);
        m_stride = std::max(m_stride, extent.stride);
        m_rows = std::max(m_rows, extent.rows);
    }
    if (!m_planes.reserve(sources.size()) || !m_facts.reserve(sources.size()) || !m_words.reserve(words))
        return false;
    if (words > 0)
        std::memset(m_words.data(), 0, words * sizeof(std::uint64_t));
    std::uint64_t* next = m_words.data();
    for (const _stMatchSource& source : sources) {
        const Extent extent = metExtent(source, mostWidth, mostHeight);
        const std::size_t plane = paddedWords(extent.stride, extent.rows);
        const kernels::GrayRows gray{source.data, source.width, extent.width, extent.rows};
        if (extent.rows > 0) {
            kernels::packLevels(gray, 255, 255, next, extent.stride);
            kernels::packLevels(gray, 0, 0, next + plane, extent.stride);
        }
        m_planes[m_count] = {next, next + plane, extent.stride, extent.rows};
        m_facts[m_count++] = {source.key, float(source.black_count), float(source.white_count),
                              float(std::int64_t(source.width) * source.height)};
        next += 2 * plane;
    }
    return true;
}

bool BoxBits::prepare(const Templates& templates)
{
    const std::size_t plane = paddedWords(templates.stride(), templates.rows());
    if (!m_words.reserve(2 * plane))
        return false;
    m_planes = {m_words.data(), m_words.data() + plane, templates.stride(), templates.rows()};
    return true;
}

void BoxBits::pack(const std::uint8_t* pixels, std::ptrdiff_t stride, int width, int height, int threshold)
{
    const std::size_t plane = paddedWords(m_planes.stride, m_planes.rows);
    if (plane == 0)
        return;
    std::memset(m_words.data(), 0, 2 * plane * sizeof(std::uint64_t));
    if (width < 1 || height < 1)
        return;
    const kernels::GrayRows gray{pixels, stride, std::min(std::size_t(width), m_planes.stride * 64),
                                 std::min(std::size_t(height), m_planes.rows)};
    std::uint64_t* white = m_words.data();
    std::uint64_t* black = white + plane;
    if (threshold < 255)
        kernels::packLevels(gray, std::uint8_t(std::max(threshold, -1) + 1), 255, white, m_planes.stride);
    const std::size_t words = (gray.width + 63) / 64;
    const std::uint64_t lastWord = ~std::uint64_t(0) >> (words * 64 - gray.width);
    for (std::size_t y = 0; y < gray.rows; ++y, white += m_planes.stride, black += m_planes.stride)
        for (std::size_t i = 0; i < words; ++i)
            black[i] = ~white[i] & (i + 1 < words ? ~std::uint64_t(0) : lastWord);
}

} // namespace ormalux
