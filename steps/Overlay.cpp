#include "steps/Overlay.h"

#include <cstdio>

namespace ormalux {

namespace {

constexpr COLORREF searchedColor = RGB(255, 200, 0);

Shape::Kind kindOf(Trace::Kind kind)
{
    return kind == Trace::Kind::Line        ? Shape::Kind::Line
           : kind == Trace::Kind::Rectangle ? Shape::Kind::Rectangle
                                            : Shape::Kind::Circle;
}

std::string labelOf(const Step& step, const Findings& found, std::size_t row)
{
    const Layout& layout = found.layout();
    const std::string number = std::to_string(row + 1);
    if (step.look == Look::NumberedBox)
        return number;
    if (step.look == Look::PartBox) {
        const int column = layout.column("yield");
        char label[48];
        std::snprintf(label, sizeof label, "%s: %.0f %%", number.c_str(),
                      100 * (column < 0 ? 0 : found.cell(row, std::size_t(column)).number()));
        return label;
    }
    for (std::size_t i = 0; i < layout.columns.size(); ++i)
        if (layout.columns[i].type == CellType::Text)
            return std::string(found.text(found.cell(row, i)));
    return {};
}

void addCross(std::vector<Shape>& shapes, const Step& step, double x, double y, double arm)
{
    shapes.push_back({Shape::Kind::Cross, x, y, x, y, arm, 1, step.color, {}});
}

void addRow(std::vector<Shape>& shapes, const Step& step, const Findings& found, std::size_t row)
{
    const Place& p = found.place(row);
    switch (step.look) {
    case Look::None:
        break;
    case Look::NumberedBox:
    case Look::PartBox:
    case Look::CharacterBox:
        shapes.push_back(
            {Shape::Kind::Box, p.x1, p.y1, p.x2, p.y2, 0, 1, step.color, labelOf(step, found, row)});
        break;
    case Look::Cross:
        addCross(shapes, step, p.x, p.y, 4);
        break;
    case Look::Dot:
        addCross(shapes, step, p.x, p.y, 0);
        break;
    case Look::Line:
        shapes.push_back({Shape::Kind::Line, p.x1, p.y1, p.x2, p.y2, 0, 2, step.color, {}});
        addCross(shapes, step, p.x, p.y, 5);
        break;
    case Look::Circle:
        shapes.push_back({Shape::Kind::Circle, p.x, p.y, p.x, p.y, p.radius, 2, step.color, {}});
        addCross(shapes, step, p.x, p.y, 5);
        break;
    }
}

} // namespace

std::vector<Shape> overlayOf(const Step& step, const Findings& found)
{
    std::vector<Shape> shapes;
    for (const Trace& trace : found.traces())
        shapes.push_back(
            {kindOf(trace.kind), trace.x1, trace.y1, trace.x2, trace.y2, trace.radius, 1, searchedColor, {}});
    for (std::size_t row = 0; row < found.rows(); ++row)
        addRow(shapes, step, found, row);
    return shapes;
}

} // namespace ormalux
