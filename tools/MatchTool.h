#pragma once

#include "array/MatchArray.h"
#include "tools/Tool.h"

#include <optional>

namespace ormalux {

/// Looks for the object of a pattern source, at a level or over a range of levels.
struct MatchTool : Tool
{
    std::vector<std::string> sources; ///< files; only the first is looked for
    bool automatic = true;            ///< the level is the area's automatic one
    int level = 128;                  ///< given, or found by automatic
    bool range = false;
    int below = 10; ///< the range begins so far below the level
    int above = 10;

    struct Found
    {
        /// The number that the best result goes by. Deliberate: the count of results, over a range one less;
        /// callers rely on both.
        int number = 0;
        std::optional<_stMatchResult> best; ///< in coordinates of the area; the last of equals
        std::vector<std::string> refused;   ///< the file that is no source
    };
    /// The automatic level of the area, 0 when it has no edge; else the level given.
    int levelOf(const CKestImage& picture, const RECT& area) const;
    /// Nothing without a source. May be called on any thread.
    Found run(const CKestImage& picture, const RECT& area) const;
    /// The best result's row; its box lies in the picture.
    static ResultList list(const Found& found, const RECT& area);

    CString script(const ToolScene& scene) const override;
    CString program(const ToolScene& scene) const override;
    QList<QJsonObject> recipeSteps(const ToolScene& scene) const override;

private:
    std::vector<std::string> first() const;
};

/// What the operator judges a result by, the mean of both yields.
float yieldOf(const _stMatchResult& result);

} // namespace ormalux
