#include "view/PenCache.h"

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QPen>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <mutex>
#include <string>
#include <tuple>
#include <unordered_map>

namespace ormalux {

namespace {

constexpr int defaultHeight = 12;

struct Caches
{
    std::mutex mutex;
    // Node based: a reference handed out stays good while others are added.
    std::map<std::tuple<int, int, COLORREF>, QPen> pens;
    std::map<std::pair<int, std::string>, QFont> fonts;
    std::unordered_map<int, int> ascents;
};

/// Never destroyed: pens and fonts live as long as the process.
Caches& caches()
{
    static Caches* const all = new Caches;
    return *all;
}

Qt::PenStyle penStyle(int style, int width)
{
    static constexpr Qt::PenStyle styles[] = {Qt::SolidLine,   Qt::DashLine,       Qt::DotLine,
                                              Qt::DashDotLine, Qt::DashDotDotLine, Qt::NoPen};
    if (style < 0 || style > 5)
        return Qt::SolidLine;
    return width > 1 && style < 5 ? Qt::SolidLine : styles[style];
}

QPen makePen(int style, int width, COLORREF color)
{
    const Qt::PenStyle line = penStyle(style, width);
    const bool thin = width <= 1;
    // A square end makes the last pixel part of a thin line; dashes would grow by it.
    const Qt::PenCapStyle end = !thin ? Qt::RoundCap : line == Qt::SolidLine ? Qt::SquareCap : Qt::FlatCap;
    return QPen(toQColor(color), std::max(width, 1), line, end, thin ? Qt::MiterJoin : Qt::RoundJoin);
}

int letterHeight(int height)
{
    return height == 0 ? defaultHeight : std::abs(height);
}

void substituteFace()
{
    // Windows has the face itself, though only under its Latin name and only where Korean was installed; the
    // second is on each of them.
    QFont::insertSubstitutions(
        QString::fromUtf8(displayFace),
        {QStringLiteral("Gulim"), QStringLiteral("Malgun Gothic"), QStringLiteral("NanumGothic")});
}

} // namespace

QColor toQColor(COLORREF color)
{
    return QColor(GetRValue(color), GetGValue(color), GetBValue(color));
}

bool isThinPen(int style, int width)
{
    return width <= 1 && penStyle(style, width) == Qt::SolidLine;
}

const QPen& cachedPen(int style, int width, COLORREF color)
{
    Caches& all = caches();
    const std::lock_guard lock(all.mutex);
    const std::tuple key(style, width, color);
    const auto found = all.pens.find(key);
    return found != all.pens.end() ? found->second
                                   : all.pens.emplace(key, makePen(style, width, color)).first->second;
}

const QFont& cachedFont(int height, const char* face)
{
    static std::once_flag substituted;
    std::call_once(substituted, substituteFace);
    Caches& all = caches();
    const std::lock_guard lock(all.mutex);
    const std::pair key(letterHeight(height), std::string(face && *face ? face : displayFace));
    const auto found = all.fonts.find(key);
    if (found != all.fonts.end())
        return found->second;
    QFont font(QString::fromStdString(key.second));
    font.setPixelSize(key.first);
    font.setWeight(QFont::Normal);
    font.setStyleStrategy(QFont::PreferAntialias);
    return all.fonts.emplace(key, font).first->second;
}

int fontAscent(int height)
{
    const QFont& font = cachedFont(height);
    Caches& all = caches();
    const std::lock_guard lock(all.mutex);
    const auto [entry, fresh] = all.ascents.try_emplace(letterHeight(height), 0);
    if (fresh)
        entry->second = QFontMetrics(font).ascent();
    return entry->second;
}

} // namespace ormalux
