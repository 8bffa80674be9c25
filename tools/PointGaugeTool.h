#pragma once

#include "array/PixelArray.h"
#include "tools/Tool.h"

#include <vector>

namespace ormalux {

/// What the two gauges have in common: what counts as an edge.
struct EdgeChoice
{
    int polarity = 0; ///< BLACK_AND_WHITE or WHITE_AND_BLACK
    bool automatic = true;
    int level = 128;

    /// The polarity as programs name it, and as recipes do.
    const char* name() const;
    const char* recipeName() const;
    /// "auto" or the level, as recipes have it.
    QJsonValue recipeThreshold() const;
};

/// The edges along a straight line.
struct PointGaugeTool : Tool
{
    POINT from{};
    POINT to{};
    EdgeChoice edge;

    struct Sample
    {
        POINT at;
        int level;
    };
    struct Found
    {
        int threshold = 0; ///< 0: none could be found
        POINT from{};      ///< the line as it is walked
        POINT to{};
        CPixelArray edges; ///< as GetPointGauge lists them
        int best = -1;     ///< the edge that GetPointGauge takes for the best; -1 without any

        ResultList list() const;
    };
    Found run(const CKestImage& picture) const;
    /// The gray levels along the line as it is walked; one outside the picture is left out.
    std::vector<Sample> profile(const CKestImage& picture) const;

    CString script(const ToolScene& scene) const override;
    CString program(const ToolScene& scene) const override;
    QList<QJsonObject> recipeSteps(const ToolScene& scene) const override;
};

} // namespace ormalux
