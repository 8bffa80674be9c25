#pragma once

#include "measure/BlobFeature.h"
#include "steps/Step.h"

#include <vector>

namespace ormalux {

/// What of the measured blobs is listed, and in which order.
class FeatureChoice
{
public:
    explicit FeatureChoice(const Arguments& arguments);
    /// Adds a row each; their coordinates are moved by left and top. Blobs of a mask have no mean level.
    void list(std::vector<CBlobFeature>& blobs, bool hasLevels, Findings& found, int left = 0,
              int top = 0) const;

private:
    std::vector<Condition> m_where;
    std::vector<int> m_columns; ///< of the conditions
    int m_sort = -1;
    bool m_descending = false;
};

std::vector<Column> featureColumns();
/// "connectivity", "where" and "sort".
std::vector<Parameter> featureParameters();

} // namespace ormalux
