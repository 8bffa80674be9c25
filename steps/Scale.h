#pragma once

#include "measure/PlaneScale.h"
#include "steps/Findings.h"
#include "steps/Node.h"

#include <functional>
#include <string>
#include <vector>

namespace ormalux {

/// What pixels are in a plant's units: one factor, or a plane seen at an angle.
class Scale
{
public:
    bool isSet() const { return !m_unit.empty(); }
    /// Adds a column in units for each column in pixels.
    void addColumns(std::vector<Column>& columns) const;
    /// Fills the columns in units of the row that has been added last.
    void convert(Findings& found, std::size_t row) const;

    struct Point
    {
        double x, y;
    };
    Point map(double x, double y) const;
    /// Units a pixel around a point.
    double factor(double x, double y) const;

    friend Scale readScale(const Node&, const std::string&,
                           const std::function<void(int line, const std::string& why)>&);

private:
    double distance(double x1, double y1, double x2, double y2) const;

    std::string m_unit;
    double m_perPixel = 1;
    bool m_plane = false;
    Homography m_matrix{1, 0, 0, 0, 1, 0, 0, 0, 1};
};

/// Reads {"unit", "per_pixel"}, {"unit", "points"} or the name of a file that holds one of them.
Scale readScale(const Node& node, const std::string& folder,
                const std::function<void(int line, const std::string& why)>& fault);

} // namespace ormalux
