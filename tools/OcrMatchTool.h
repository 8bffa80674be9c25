#pragma once

#include "array/MatchArray.h"
#include "tools/Tool.h"

namespace ormalux {

/// Reads dark characters on a light ground by comparing them with the sources of characters.
struct OcrMatchTool : Tool
{
    std::vector<std::string> sources; ///< files
    bool automatic = true;            ///< the level is the area's automatic one
    int level = 128;                  ///< given, or found by automatic
    int minWidth = 2, maxWidth = 100; ///< of a character
    int minHeight = 5, maxHeight = 100;

    struct Found
    {
        std::vector<std::vector<_stMatchResult>> lines; ///< in reading order; in coordinates of the picture
        std::vector<std::string> refused;               ///< files that are no sources
    };
    /// The automatic level of the area, 0 when it has no edge; else the level given.
    int levelOf(const CKestImage& picture, const RECT& area) const;
    /// Nothing without sources. Deliberate: the area's last column and row are not searched, as for every
    /// host that passes the area's corners to the library. May be called on any thread.
    Found run(const CKestImage& picture, const RECT& area) const;
    static ResultList list(const Found& found);
    /// What was read, a line a line.
    static std::string text(const Found& found);

    CString script(const ToolScene& scene) const override;
    CString program(const ToolScene& scene) const override;
    QList<QJsonObject> recipeSteps(const ToolScene& scene) const override;
};

} // namespace ormalux
