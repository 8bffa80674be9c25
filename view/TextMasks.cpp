#include "view/TextMasks.h"

#include "view/PenCache.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <string>
#include <unordered_map>

namespace ormalux {

namespace {

/// What is kept at most, in bytes of masks; then all are dropped and made anew as they are asked for.
constexpr std::size_t keptBytes = std::size_t(16) << 20;

struct MaskCache
{
    std::mutex mutex;
    std::unordered_map<std::string, std::shared_ptr<const TextMask>> masks;
    std::size_t bytes = 0;
};

/// Never destroyed, as the fonts that it draws with.
MaskCache& maskCache()
{
    static MaskCache* const cache = new MaskCache;
    return *cache;
}

/// The text in white on nothing, with room around it for letters that lean out.
QImage inked(const QString& text, int height, qreal scale)
{
    const QFont& font = cachedFont(height);
    const QFontMetrics metrics(font);
    const int room = metrics.height();
    const QSize size(metrics.horizontalAdvance(text) + 2 * room, 3 * room);
    QImage image((QSizeF(size) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QPoint(room, room + fontAscent(height)), text);
    return image;
}

QRect inkOf(const QImage& image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        const auto covers = [](QRgb pixel) { return qAlpha(pixel) != 0; };
        const auto* const first = std::find_if(row, row + image.width(), covers);
        if (first == row + image.width())
            continue;
        const auto* last = row + image.width() - 1;
        while (!covers(*last))
            --last;
        ink |= QRect(QPoint(int(first - row), y), QPoint(int(last - row), y));
    }
    return ink;
}

TextMask makeMask(std::string_view text, int height, qreal scale)
{
    const QImage image = inked(QString::fromUtf8(text.data(), qsizetype(text.size())), height, scale);
    const QRect ink = inkOf(image);
    const int room = int(std::lround(QFontMetrics(cachedFont(height)).height() * scale));
    TextMask mask{ink.left() - room, ink.top() - room, ink.width(), ink.height(), {}};
    mask.cover.reserve(std::size_t(ink.width()) * std::size_t(ink.height()));
    for (int y = ink.top(); y <= ink.bottom(); ++y)
        for (int x = ink.left(); x <= ink.right(); ++x)
            mask.cover.push_back(std::uint8_t(qAlpha(image.pixel(x, y))));
    return mask;
}

/// Each pixel twice as covered as the most covered one within so many pixels: small letters are nowhere
/// whole.
TextMask widened(const TextMask& mask, int by)
{
    TextMask wide{mask.left - by, mask.top - by, mask.width + 2 * by, mask.height + 2 * by, {}};
    wide.cover.resize(std::size_t(wide.width) * std::size_t(wide.height));
    for (int y = 0; y < mask.height; ++y)
        for (int x = 0; x < mask.width; ++x)
            for (int down = 0; down <= 2 * by; ++down)
                for (int right = 0; right <= 2 * by; ++right) {
                    std::uint8_t& cover = wide.cover[std::size_t((y + down) * wide.width + x + right)];
                    const int ink = 2 * mask.cover[std::size_t(y * mask.width + x)];
                    cover = std::max(cover, std::uint8_t(std::min(ink, 255)));
                }
    return wide;
}

template <class Make>
std::shared_ptr<const TextMask> kept(std::string_view text, int height, qreal scale, int halo, Make make)
{
    MaskCache& cache = maskCache();
    std::string key(text);
    key += '\0';
    key += char(height);
    key += char(halo);
    key.append(reinterpret_cast<const char*>(&scale), sizeof scale);
    const std::lock_guard lock(cache.mutex);
    if (const auto found = cache.masks.find(key); found != cache.masks.end())
        return found->second;
    if (cache.bytes > keptBytes) {
        cache.masks.clear();
        cache.bytes = 0;
    }
    auto mask = std::make_shared<const TextMask>(make());
    constexpr std::size_t overhead = 200; // the entry itself
    cache.bytes += mask->cover.size() + key.size() + overhead;
    cache.masks.emplace(std::move(key), mask);
    return mask;
}

/// Between two colours, share of 256; a pair of channels at once, whose differences borrow from each other
/// and give it back.
QRgb mixed(QRgb under, QRgb ink, std::uint32_t share)
{
    constexpr std::uint32_t pair = 0x00ff00ffu;
    const std::uint32_t low = (under & pair) + (((ink & pair) - (under & pair)) * share >> 8);
    const std::uint32_t high = (under >> 8 & pair) + (((ink >> 8 & pair) - (under >> 8 & pair)) * share >> 8);
    return (low & pair) | (high & pair) << 8;
}

} // namespace

std::shared_ptr<const TextMask> textMask(std::string_view text, int height, qreal scale)
{
    return kept(text, height, scale, 0, [&] { return makeMask(text, height, scale); });
}

std::shared_ptr<const TextMask> haloMask(std::string_view text, int height, qreal scale, int width)
{
    return kept(text, height, scale, width, [&] { return widened(makeMask(text, height, scale), width); });
}

void blendMask(const DeviceCanvas& canvas, std::int64_t x, std::int64_t y, const TextMask& mask, QRgb color)
{
    const RECT& bounds = canvas.bounds;
    const std::int64_t firstX = std::max<std::int64_t>(0, bounds.left - x);
    const std::int64_t endX = std::min<std::int64_t>(mask.width, bounds.right - x);
    const std::int64_t firstY = std::max<std::int64_t>(0, bounds.top - y);
    const std::int64_t endY = std::min<std::int64_t>(mask.height, bounds.bottom - y);
    if (firstX >= endX)
        return;
    for (std::int64_t row = firstY; row < endY; ++row) {
        const std::uint8_t* const cover = mask.cover.data() + row * mask.width;
        std::uint32_t* const out = canvas.at(x + firstX, y + row);
        for (std::int64_t column = firstX; column < endX; ++column)
            if (const std::uint32_t share = cover[column] + (cover[column] >> 7))
                out[column - firstX] = mixed(out[column - firstX], color, share);
    }
}

} // namespace ormalux
