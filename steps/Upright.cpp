#include "steps/Upright.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace ormalux {

namespace {

/// The level between four pixels; the picture goes on with its border's levels.
std::uint8_t between(const ConstGrayView& view, double x, double y)
{
    x = std::clamp(x, 0.0, view.width - 1.0);
    y = std::clamp(y, 0.0, view.height - 1.0);
    const int left = std::min(int(x), std::max(view.width - 2, 0));
    const int top = std::min(int(y), std::max(view.height - 2, 0));
    const int right = std::min(left + 1, view.width - 1), bottom = std::min(top + 1, view.height - 1);
    const double u = x - left, v = y - top;
    const std::uint8_t *const above = view.row(top), *const below = view.row(bottom);
    const double first = above[left] + u * (above[right] - above[left]);
    const double second = below[left] + u * (below[right] - below[left]);
    return std::uint8_t(first + v * (second - first) + 0.5);
}

CKestImage resampled(const CKestImage& picture, const RECT& region, const Motion& motion)
{
    CKestImage made(region.right - region.left + 1, region.bottom - region.top + 1);
    if (made.IsEmpty())
        throw std::bad_alloc();
    const ConstGrayView from = picture.view();
    const GrayView to = made.view();
    for (int y = 0; y < to.height; ++y)
        for (int x = 0; x < to.width; ++x) {
            const auto at = motion.map(region.left + x, region.top + y);
            to.row(y)[x] = between(from, at.x, at.y);
        }
    return made;
}

/// Moves what was found from the resampled region to the picture.
class Replacer
{
public:
    Replacer(Findings& found, const RECT& region, const Motion& motion)
        : m_found(found), m_region(region), m_motion(motion)
    {}

    void move(std::size_t row)
    {
        Place& place = m_found.place(row);
        const Place before = place;
        movePoint(place.x, place.y);
        if (place.kind == Place::Kind::Box) {
            const RECT moved =
                m_motion.map(RECT{LONG(before.x1) + m_region.left, LONG(before.y1) + m_region.top,
                                  LONG(before.x2) + m_region.left, LONG(before.y2) + m_region.top});
            place.x1 = moved.left;
            place.y1 = moved.top;
            place.x2 = moved.right;
            place.y2 = moved.bottom;
        } else {
            movePoint(place.x1, place.y1);
            movePoint(place.x2, place.y2);
        }
        place.angle = lineTurnOf(place.angle + m_motion.degrees());
        moveCells(row, place);
    }

private:
    void movePoint(double& x, double& y) const
    {
        const auto moved = m_motion.map(x + m_region.left, y + m_region.top);
        x = moved.x;
        y = moved.y;
    }

    void moveCells(std::size_t row, const Place& place)
    {
        const auto& columns = m_found.layout().columns;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (columns[i].source >= 0)
                continue;
            if (columns[i].name == "left") {
                const double corners[] = {place.x1, place.y1, place.x2, place.y2};
                for (std::size_t k = 0; k < 4; ++k)
                    m_found.cell(row, i + k).integer = std::int64_t(corners[k]);
                i += 3;
            } else if (columns[i].quantity == Quantity::X) {
                Cell &x = m_found.cell(row, i), &y = m_found.cell(row, i + 1);
                double px = x.number(), py = y.number();
                if (std::isnan(px) || std::isnan(py))
                    continue;
                movePoint(px, py);
                set(x, px);
                set(y, py);
                ++i;
            } else if (columns[i].name == "angle" || columns[i].name == "orientation") {
                Cell& angle = m_found.cell(row, i);
                if (angle.kind == Cell::Kind::Real)
                    angle.real = lineTurnOf(angle.real + m_motion.degrees());
            }
        }
    }

    static void set(Cell& cell, double value)
    {
        if (cell.kind == Cell::Kind::Integer)
            cell.integer = std::int64_t(std::floor(value + 0.5));
        else
            cell.real = value;
    }

    Findings& m_found;
    RECT m_region;
    const Motion& m_motion;
};

} // namespace

void runUpright(const Operation& operation, const std::optional<RECT>& roi, Work& work, Findings& found)
{
    const RECT region = roi.value_or(wholeOf(work.gray()));
    if (std::int64_t(region.right) - region.left >= 65536 ||
        std::int64_t(region.bottom) - region.top >= 65536)
        throw PictureError("an upright region of more than 65536 pixels a side");
    const Motion& motion = *work.frame;
    const CKestImage upright = resampled(work.gray(), region, motion);
    Work part;
    part.takeGray(upright.view());
    part.findings = work.findings;
    const RECT whole = wholeOf(upright);
    part.limit = &whole;
    operation.run(part, found);
    found.finish();
    Replacer replacer(found, region, motion);
    for (std::size_t row = 0; row < found.rows(); ++row)
        replacer.move(row);
}

} // namespace ormalux
