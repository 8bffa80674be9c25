#include "match/InkTemplate.h"

#include "match/MiddleLevel.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ormalux {

namespace {

constexpr int ring = 1;
/// What sizes may differ by besides the factor of two: cut and broken strokes of small characters.
constexpr int slack = 4;
constexpr int fullInk = 255;

std::size_t strideOf(int width)
{
    return (std::size_t(width) + kernels::inkStep - 1) / kernels::inkStep * kernels::inkStep;
}

bool hasPixels(const _stMatchSource& source)
{
    return source.data && source.width > 0 && source.height > 0;
}

/// The share of ink that each gray level is, from the mean levels of both sides of the threshold.
struct InkScale
{
    std::uint8_t of[256];

    InkScale(const ConstGrayView& pixels, const InkLevels& levels)
    {
        LevelCounts counts{};
        for (int y = 0; y < pixels.height; ++y)
            for (int x = 0; x < pixels.width; ++x)
                ++counts[pixels.row(y)[x]];
        const SideMeans means = sideMeans(counts, middleLevel(counts, levels.threshold));
        const double inkMean = levels.bright ? means.high : means.low;
        const double ground = levels.bright ? means.low : means.high;
        const double none = ground + (inkMean - ground) / 4, full = inkMean - (inkMean - ground) / 4;
        for (int level = 0; level < 256; ++level) {
            const double share = (level - none) / (full - none);
            of[level] = std::uint8_t(std::floor(fullInk * std::clamp(share, 0.0, 1.0) + 0.5));
        }
    }
};

} // namespace

bool InkTemplates::pack(std::span<const _stMatchSource> sources, const InkLevels& levels)
{
    m_count = 0;
    std::size_t bytes = 0;
    for (const _stMatchSource& source : sources)
        bytes += hasPixels(source) ? strideOf(source.width) * std::size_t(source.height) : 0;
    if (!m_templates.reserve(sources.size()) || !m_bytes.reserve(bytes))
        return false;
    if (bytes > 0)
        std::memset(m_bytes.data(), 0, bytes);
    std::uint8_t* next = m_bytes.data();
    const std::uint8_t inkLevel = levels.bright ? 255 : 0;
    for (const _stMatchSource& source : sources) {
        if (!hasPixels(source))
            continue;
        InkTemplate& made = m_templates[m_count++];
        made = {source.key, int(source.width), int(source.height), 0, {}};
        made.mask = {next, strideOf(made.width), std::size_t(made.height)};
        const std::uint8_t* pixel = source.data;
        for (int y = 0; y < made.height; ++y, next += made.mask.stride)
            for (int x = 0; x < made.width; ++x, ++pixel)
                if (*pixel == inkLevel) {
                    next[x] = fullInk;
                    ++made.ink;
                }
    }
    return true;
}

bool InkBox::take(const ConstGrayView& image, const CharacterBox& box, const InkLevels& levels, int shift)
{
    m_width = box.width() + 2 * ring;
    m_height = box.height() + 2 * ring;
    m_shift = shift;
    // A template of twice the size, shifted, stays in the padding.
    m_padX = box.width() / 2 + slack + shift;
    m_padY = box.height() / 2 + slack + shift;
    m_stride = m_width + 2 * m_padX + std::ptrdiff_t(kernels::inkStep);
    const std::size_t bytes = std::size_t(m_stride) * (m_height + 2 * m_padY);
    if (!m_bytes.reserve(bytes))
        return false;
    std::memset(m_bytes.data(), 0, bytes);
    const int left = std::max(box.left - ring, 0), right = std::min(box.right + ring, image.width - 1);
    const int top = std::max(box.top - ring, 0), bottom = std::min(box.bottom + ring, image.height - 1);
    const ConstGrayView pixels = image.part(left, top, right - left + 1, bottom - top + 1);
    const InkScale scale(pixels, levels);
    std::uint8_t* to =
        m_bytes.data() + (m_padY + top - box.top + ring) * m_stride + m_padX + left - box.left + ring;
    m_sum = m_squares = 0;
    for (int y = 0; y < pixels.height; ++y, to += m_stride)
        for (int x = 0; x < pixels.width; ++x) {
            const int ink = to[x] = scale.of[pixels.row(y)[x]];
            m_sum += ink;
            m_squares += ink * ink;
        }
    return true;
}

bool InkBox::comparable(const InkTemplate& candidate) const
{
    const auto alike = [](std::int64_t a, std::int64_t b) {
        return a <= 2 * b + slack && b <= 2 * a + slack;
    };
    return alike(candidate.width, m_width - 2 * ring) && alike(candidate.height, m_height - 2 * ring);
}

std::optional<double> InkBox::share(const InkTemplate& candidate, double least) const
{
    if (!comparable(candidate))
        return std::nullopt;
    const double area = double(std::max(candidate.width + 2 * ring, m_width)) *
                        double(std::max(candidate.height + 2 * ring, m_height));
    const double ink = double(candidate.ink), sum = double(m_sum);
    const double variances = (area * ink - ink * ink) * (area * double(m_squares) - sum * sum);
    const auto shareOf = [&](double common) {
        const double covariance = area * common - ink * sum;
        return covariance > 0 && variances > 0 ? covariance * covariance / variances : 0.0;
    };
    if (shareOf(std::min(ink * fullInk, sum)) <= least)
        return std::nullopt;
    const auto floorHalf = [](int value) { return value >= 0 ? value / 2 : -((1 - value) / 2); };
    const int x = m_padX + floorHalf(m_width - candidate.width);
    const int y = m_padY + floorHalf(m_height - candidate.height);
    const double common =
        double(kernels::mostInkUnder(m_bytes.data() + y * m_stride + x, m_stride, candidate.mask, m_shift));
    return std::min(shareOf(common), 1.0);
}

} // namespace ormalux
