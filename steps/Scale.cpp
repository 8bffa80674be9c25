#include "steps/Scale.h"

#include "measure/PlaneScale.h"
#include "platform/File.h"
#include "platform/Path.h"
#include "steps/Faults.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormalux {

namespace {

constexpr std::uint64_t largestScaleFile = 1 << 20;

bool isLetters(const std::string& text)
{
    return !text.empty() && text.size() <= 16 && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    });
}

} // namespace

Scale::Point Scale::map(double x, double y) const
{
    if (!m_plane)
        return {x * m_perPixel, y * m_perPixel};
    constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
    CPlanePoint to{nowhere, nowhere};
    mapPoint(m_matrix, {x, y}, to); // nothing of the plane is seen on or beyond its horizon
    return {to.x, to.y};
}

double Scale::distance(double x1, double y1, double x2, double y2) const
{
    const Point a = map(x1, y1), b = map(x2, y2);
    return std::hypot(a.x - b.x, a.y - b.y);
}

double Scale::factor(double x, double y) const
{
    if (!m_plane)
        return m_perPixel;
    const double scale = localScale(m_matrix, {x, y});
    return scale > 0 ? scale : std::numeric_limits<double>::quiet_NaN();
}

void Scale::addColumns(std::vector<Column>& columns) const
{
    if (!isSet())
        return;
    const std::size_t count = columns.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Quantity quantity = columns[i].quantity;
        if (quantity != Quantity::None)
            columns.push_back({columns[i].name + "_" + m_unit + (quantity == Quantity::Area ? "2" : ""),
                               CellType::Real, quantity, int(i)});
    }
}

void Scale::convert(Findings& found, std::size_t row) const
{
    const auto& columns = found.layout().columns;
    const Place& p = found.place(row);
    const auto number = [&](int column) { return found.cell(row, std::size_t(column)).number(); };
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int source = columns[i].source;
        if (source < 0)
            continue;
        double value = number(source);
        switch (columns[i].quantity) {
        case Quantity::X:
            value = map(value, number(source + 1)).x;
            break;
        case Quantity::Y:
            value = map(number(source - 1), value).y;
            break;
        case Quantity::Length:
            value *= factor(p.x, p.y);
            break;
        case Quantity::Width:
            value = distance(p.x1 - 0.5, (p.y1 + p.y2) / 2, p.x2 + 0.5, (p.y1 + p.y2) / 2);
            break;
        case Quantity::Height:
            value = distance((p.x1 + p.x2) / 2, p.y1 - 0.5, (p.x1 + p.x2) / 2, p.y2 + 0.5);
            break;
        case Quantity::Distance:
            value = distance(p.x1, p.y1, p.x2, p.y2);
            break;
        case Quantity::Area:
            value *= factor(p.x, p.y) * factor(p.x, p.y);
            break;
        case Quantity::None:
            break;
        }
        Cell& cell = found.cell(row, i);
        cell.kind = Cell::Kind::Real;
        cell.real = value;
    }
}

Scale readScale(const Node& node, const std::string& folder,
                const std::function<void(int line, const std::string& why)>& fault)
{
    Scale scale;
    if (node.isText()) {
        const auto path = nativePath(node.text.c_str());
        const std::u8string joined =
            (folder.empty() || path.is_absolute() ? path : nativePath(folder.c_str()) / path).u8string();
        const std::string file(joined.begin(), joined.end());
        const auto bytes = readFile(file.c_str(), largestScaleFile);
        Faults faults;
        Node inside;
        if (!bytes)
            fault(node.line, file + ": cannot be read");
        else if (!readDocument({reinterpret_cast<const char*>(bytes->data()), bytes->size()}, file, faults,
                               inside) ||
                 inside.isText())
            fault(node.line, faults.empty() ? file + ": not a scale" : faults.lines().front());
        else
            return readScale(inside, {}, [&](int line, const std::string& why) {
                fault(node.line, file + ":" + std::to_string(line) + ": " + why);
            });
        return scale;
    }
    if (!node.isObject()) {
        fault(node.line, "expected an object with \"unit\" and \"per_pixel\" or \"points\"");
        return scale;
    }
    const std::vector<std::string> fields{"unit", "per_pixel", "points", "residual", "pitch"};
    for (std::size_t i = 0; i < node.keys.size(); ++i)
        if (std::find(fields.begin(), fields.end(), node.keys[i]) == fields.end())
            fault(node.keyLines[i], unknownName("field", node.keys[i], fields));
    const Node* const unit = node.find("unit");
    const Node* const perPixel = node.find("per_pixel");
    const Node* const points = node.find("points");
    if (!unit || !unit->isText() || !isLetters(unit->text))
        fault(unit ? unit->line : node.line, "unit: expected letters, as \"mm\"");
    else
        scale.m_unit = unit->text;
    if (!perPixel == !points)
        fault(node.line, "expected one of \"per_pixel\" and \"points\"");
    if (perPixel) {
        scale.m_perPixel = perPixel->real;
        if (!perPixel->isNumber() || !(perPixel->real > 0))
            fault(perPixel->line, "per_pixel: expected a number above 0");
    }
    if (points && !perPixel) {
        std::vector<CPlanePair> pairs;
        for (const Node& point : points->items) {
            double values[4] = {};
            bool right = point.isList() && point.items.size() == 4;
            for (std::size_t i = 0; right && i < 4; ++i) {
                right = point.items[i].isNumber();
                values[i] = point.items[i].real;
            }
            if (!right)
                fault(point.line, "points: " + shownValue(point) + ": expected [x, y, X, Y]");
            pairs.push_back({{values[0], values[1]}, {values[2], values[3]}});
        }
        scale.m_plane = points->isList() && fitHomography(pairs, scale.m_matrix);
        if (!scale.m_plane)
            fault(points->line, "points: expected four or more points of a plane that do not lie in a line");
    }
    return scale;
}

} // namespace ormalux
