#pragma once

#include "array/BlobRectArray.h"
#include "tools/Tool.h"

namespace ormalux {

/// The connected regions of the area that are brighter, or not brighter, than a level.
struct BlobTool : Tool
{
    static constexpr int maxSize = 999999; ///< no picture is wider or higher
    /// More than this many are counted and not listed.
    static constexpr long long maxFound = 1000000;

    bool automatic = true;
    int level = 128;
    bool white = true;
    int minWidth = 2; ///< extents in pixels, both ends included
    int maxWidth = maxSize;
    int minHeight = 2;
    int maxHeight = maxSize;
    int order = 0; ///< an index of orders()

    struct Order
    {
        const char* recipeName;
        const char* call; ///< null for the order of the search
        void (CBlobRectArray::*sort)();
    };
    static constexpr int orderCount = 8;
    static const Order& orderAt(int index);

    struct Found
    {
        int threshold = 0;   ///< 0: none could be found, nothing was searched
        long long count = 0; ///< -1: memory was short
        long long pixels = 0;
        CBlobRectArray blobs; ///< all of them, or none beyond maxFound
    };
    Found run(const CKestImage& picture, const RECT& area) const;
    /// The first rows of the list, up to limit.
    static ResultList list(CBlobRectArray& blobs, int limit);

    CString script(const ToolScene& scene) const override;
    CString program(const ToolScene& scene) const override;
    QList<QJsonObject> recipeSteps(const ToolScene& scene) const override;
};

} // namespace ormalux
