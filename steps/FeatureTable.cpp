#include "steps/FeatureTable.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormalux {

namespace {

constexpr double nothing = std::numeric_limits<double>::quiet_NaN();

struct FeatureColumn
{
    const char* name;
    CellType type;
    Quantity quantity;
    double (*value)(const CBlobFeature& blob);
};

constexpr CellType whole = CellType::Integer, real = CellType::Real;

constexpr FeatureColumn table[] = {
    {"area", whole, Quantity::Area, [](const CBlobFeature& b) { return double(b.area); }},
    {"centroid_x", real, Quantity::X, [](const CBlobFeature& b) { return b.centroid_x; }},
    {"centroid_y", real, Quantity::Y, [](const CBlobFeature& b) { return b.centroid_y; }},
    {"left", whole, Quantity::X, [](const CBlobFeature& b) { return double(b.left); }},
    {"top", whole, Quantity::Y, [](const CBlobFeature& b) { return double(b.top); }},
    {"right", whole, Quantity::X, [](const CBlobFeature& b) { return double(b.right); }},
    {"bottom", whole, Quantity::Y, [](const CBlobFeature& b) { return double(b.bottom); }},
    {"width", whole, Quantity::Width, [](const CBlobFeature& b) { return double(b.right - b.left + 1); }},
    {"height", whole, Quantity::Height, [](const CBlobFeature& b) { return double(b.bottom - b.top + 1); }},
    {"perimeter", real, Quantity::Length, [](const CBlobFeature& b) { return b.perimeter; }},
    {"circularity", real, Quantity::None,
     [](const CBlobFeature& b) { return b.perimeter > 0 ? b.circularity : nothing; }},
    {"orientation", real, Quantity::None, [](const CBlobFeature& b) { return b.orientation; }},
    {"major", real, Quantity::Length, [](const CBlobFeature& b) { return b.major; }},
    {"minor", real, Quantity::Length, [](const CBlobFeature& b) { return b.minor; }},
    {"holes", whole, Quantity::None, [](const CBlobFeature& b) { return double(b.holes); }},
    {"mean", real, Quantity::None, [](const CBlobFeature& b) { return b.mean; }},
};

int columnOf(const std::string& name)
{
    for (std::size_t i = 0; i < std::size(table); ++i)
        if (table[i].name == name)
            return int(i);
    return -1;
}

void move(CBlobFeature& blob, int left, int top)
{
    blob.left += left;
    blob.right += left;
    blob.top += top;
    blob.bottom += top;
    blob.centroid_x += left;
    blob.centroid_y += top;
}

} // namespace

FeatureChoice::FeatureChoice(const Arguments& arguments) : m_where(arguments.conditions("where"))
{
    for (const Condition& condition : m_where)
        m_columns.push_back(columnOf(condition.column));
    if (!arguments.given("sort"))
        return;
    const std::string& sort = arguments.text("sort");
    m_descending = sort.starts_with('-');
    m_sort = columnOf(sort.substr(m_descending ? 1 : 0));
}

void FeatureChoice::list(std::vector<CBlobFeature>& blobs, bool hasLevels, Findings& found, int left,
                         int top) const
{
    for (CBlobFeature& blob : blobs) {
        move(blob, left, top);
        if (!hasLevels)
            blob.mean = nothing;
    }
    // A value that is not known passes no condition.
    std::erase_if(blobs, [&](const CBlobFeature& blob) {
        for (std::size_t i = 0; i < m_where.size(); ++i) {
            const double value = table[m_columns[i]].value(blob);
            if (std::isnan(value) || value < m_where[i].low || value > m_where[i].high)
                return true;
        }
        return false;
    });
    if (m_sort >= 0)
        std::stable_sort(blobs.begin(), blobs.end(), [&](const CBlobFeature& a, const CBlobFeature& b) {
            const double x = table[m_sort].value(a), y = table[m_sort].value(b);
            if (std::isnan(x) || std::isnan(y))
                return !std::isnan(x) && std::isnan(y);
            return m_descending ? x > y : x < y;
        });
    for (const CBlobFeature& blob : blobs) {
        Place place = Place::box({blob.left, blob.top, blob.right, blob.bottom});
        place.x = blob.centroid_x;
        place.y = blob.centroid_y;
        place.angle = blob.orientation;
        found.addRow(place);
        for (const FeatureColumn& column : table) {
            const double value = column.value(blob);
            if (std::isnan(value))
                found.addNull();
            else if (column.type == whole)
                found.add(std::int64_t(value));
            else
                found.add(value);
        }
    }
}

std::vector<Column> featureColumns()
{
    std::vector<Column> columns;
    for (const FeatureColumn& column : table)
        columns.push_back({column.name, column.type, column.quantity});
    return columns;
}

std::vector<Parameter> featureParameters()
{
    return {choice("connectivity", {"4", "8"}, "How pixels touch: by their sides, or by corners too", "4"),
            optional({"where", Kind::Conditions, "", "Only rows whose columns lie in these ranges"}),
            optional({"sort", Kind::Column, "", "Order by a column; '-' before it for the largest first"})};
}

} // namespace ormalux
