#pragma once

#include "tools/PointGaugeTool.h"

namespace ormalux {

/// A straight edge inside the area, as GetLineGauge measures it on this machine: with a step above 1 the
/// columns measured depend on the number of processors, which the recipe therefore names.
struct LineGaugeTool : Tool
{
    EdgeChoice edge;
    int direction = 0; ///< DIRECTION_VERTICAL or DIRECTION_HORIZENTAL
    int step = 1;      ///< columns between scan lines; rows ignore it

    struct Found
    {
        int threshold = 0; ///< 0: none could be found
        bool measured = false;
        POINT first{}; ///< the ends of the edge
        POINT second{};
        POINT center{};
        double angle = 0; ///< degrees, always a number

        ResultList list() const;
    };
    Found run(const CKestImage& picture, const RECT& area) const;

    struct ScanLine
    {
        POINT from; ///< as it is walked
        POINT to;
        bool hasEdge;
        bool used; ///< it has an edge and so has its mirror line
        POINT edge;
    };
    /// The lines that the measurement goes along in its order, without the mirror lines that it does not
    /// come to by itself.
    std::vector<ScanLine> scanLines(const CKestImage& picture, const RECT& area, int threshold) const;

    CString script(const ToolScene& scene) const override;
    CString program(const ToolScene& scene) const override;
    QList<QJsonObject> recipeSteps(const ToolScene& scene) const override;

private:
    bool horizontal() const;
    const char* directionName() const;
};

} // namespace ormalux
