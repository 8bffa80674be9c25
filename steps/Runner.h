#pragma once

#include "steps/Frame.h"
#include "steps/RecipePlan.h"
#include "steps/Work.h"

#include <mutex>

class CKestInspection;

namespace ormalux {

/// A limit that does not hold, or a frame that was not found.
struct Breach
{
    const Limit* limit = nullptr;
    Measured value;
    std::string of, reason; ///< of a frame
};

struct InspectionData
{
    std::shared_ptr<const RecipePlan> plan; ///< the layouts of the findings are its own
    Work work;
    std::vector<Findings> findings; ///< one a step
    std::vector<std::optional<Motion>> motions;
    std::vector<Breach> failed, warned;
    std::string error, warning;
    double milliseconds = 0;
    bool timed = false;

    mutable std::mutex lock; ///< of the text, which is made when it is first asked for
    mutable std::string json;
    mutable bool hasJson = false;

    bool ran() const { return plan && error.empty(); }
    bool foundAny() const;
    /// Whether a verdict belongs to the result: there are limits, or a frame was not found.
    bool judged() const;
    int verdict() const;
};

/// Runs a recipe on a frame. Errors stand in the data.
void runPlan(const std::shared_ptr<const RecipePlan>& plan, const FrameSource& source, InspectionData& data);

/// The result as JSON: members, separated by commas, without the braces, so that others can stand before
/// them.
std::string resultMembers(const InspectionData& data);
/// The facts and the list of findings, likewise.
void appendMembers(std::string& json, const Findings& found);

} // namespace ormalux
