#include "view/LabelPlacer.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ormalux {

namespace {

constexpr int gap = 2;                   ///< from a box to the text beside it
constexpr int bandHeight = 32;           ///< rows that are searched together
constexpr LONG farthest = LONG(1) << 28; ///< sums of coordinates stay within the integers

bool meet(const RECT& a, const RECT& b)
{
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

/// Whether a label lies across the outline of a box, whose right and bottom belong to it.
bool crosses(const RECT& label, const RECT& box)
{
    const bool within = label.left > box.left && label.right <= box.right && label.top > box.top &&
                        label.bottom <= box.bottom;
    return !within && meet(label, {box.left, box.top, box.right + 1, box.bottom + 1});
}

/// The left top corners around a box, the wished one first.
std::array<POINT, 7> placesOf(const RECT& box, SIZE text, LABEL_PLACE wished)
{
    const int above = box.top - gap - text.cy;
    const int below = box.bottom + 1 + gap;
    const int flushRight = box.right + 1 - text.cx;
    std::array<POINT, 7> places{{{box.left, above},
                                 {box.left, below},
                                 {box.left, box.top},
                                 {flushRight, above},
                                 {flushRight, below},
                                 {box.right + 1 + gap, box.top},
                                 {box.left - gap - text.cx, box.top}}};
    if (wished == LABEL_BELOW || wished == LABEL_CORNER)
        std::rotate(places.begin(), places.begin() + int(wished), places.begin() + int(wished) + 1);
    if (wished != LABEL_CORNER) // it hides what the box is about
        std::rotate(places.begin() + 2, places.begin() + 3, places.end());
    return places;
}

} // namespace

LabelPlacer::LabelPlacer(const RECT& shown)
    : m_shown(shown), m_area(std::int64_t(std::max<LONG>(shown.right - shown.left, 0)) *
                             std::max<LONG>(shown.bottom - shown.top, 0)),
      m_labelsOf(std::size_t(std::max<LONG>(shown.bottom - shown.top, 0)) / bandHeight + 1),
      m_boxesOf(m_labelsOf.size())
{}

std::size_t LabelPlacer::bandOf(int y) const
{
    const int row = std::clamp<int>(y, m_shown.top, std::max(m_shown.top, m_shown.bottom - 1));
    return std::size_t(row - m_shown.top) / bandHeight;
}

void LabelPlacer::addBox(const RECT& outline)
{
    const auto held = [](LONG at) { return std::clamp<LONG>(at, -farthest, farthest); };
    const RECT box{held(outline.left), held(outline.top), held(outline.right), held(outline.bottom)};
    for (std::size_t band = bandOf(box.top); band <= bandOf(box.bottom); ++band)
        m_boxesOf[band].push_back({box, m_boxes.size()});
    m_boxes.push_back(box);
}

bool LabelPlacer::isFree(const RECT& label, std::size_t box, bool besideBoxes) const
{
    for (std::size_t band = bandOf(label.top); band <= bandOf(label.bottom - 1); ++band) {
        if (std::ranges::any_of(m_labelsOf[band], [&](const RECT& other) { return meet(label, other); }))
            return false;
        if (besideBoxes && std::ranges::any_of(m_boxesOf[band], [&](const Box& other) {
                return other.index != box && crosses(label, other.rect);
            }))
            return false;
    }
    return true;
}

std::optional<POINT> LabelPlacer::place(std::size_t box, SIZE text, LABEL_PLACE wished)
{
    const RECT& around = m_boxes[box];
    const RECT room{m_shown.left + halo, m_shown.top + halo, m_shown.right - halo - text.cx,
                    m_shown.bottom - halo - text.cy};
    if (room.left > room.right || room.top > room.bottom)
        return std::nullopt;
    for (const bool besideBoxes : {true, false})
        for (const POINT wanted : placesOf(around, text, wished)) {
            // A box that is partly shown has its label at the shown part.
            const POINT at{std::clamp(wanted.x, room.left, room.right), wanted.y};
            const bool beside = at.x == wanted.x || (at.x <= around.right && at.x + text.cx > around.left);
            const bool sideways = wanted.y == around.top && at.x != wanted.x;
            const RECT label{at.x - halo, at.y - halo, at.x + text.cx + halo, at.y + text.cy + halo};
            if (!beside || sideways || at.y < room.top || at.y > room.bottom ||
                !isFree(label, box, besideBoxes))
                continue;
            for (std::size_t band = bandOf(label.top); band <= bandOf(label.bottom - 1); ++band)
                m_labelsOf[band].push_back(label);
            m_covered += std::int64_t(label.right - label.left) * (label.bottom - label.top);
            return at;
        }
    return std::nullopt;
}

} // namespace ormalux
