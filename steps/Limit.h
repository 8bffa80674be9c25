#pragma once

#include "steps/Faults.h"
#include "steps/Findings.h"
#include "steps/Node.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ormalux {

/// What a value that was found must be.
struct Limit
{
    enum class Of
    {
        Count,
        Cell,
        Fact,
        Min,
        Max,
        Mean,
        Range,
        Std
    };

    std::string name; ///< as written: "gap.distance_mm"
    int step = -1;
    Of of = Of::Count;
    int row = 1;
    int column = 0; ///< or the fact
    std::optional<double> low, high;
    std::optional<std::string> expected;              ///< of the others: as JSON, for the result
    std::function<bool(const std::string&)> fitsText; ///< of a text; numbers come as their JSON
    std::function<bool(double)> fitsNumber;
    bool warns = false;
};

/// What a limit was judged by.
struct Measured
{
    bool known = false; ///< false when the row was not found, or there was nothing to take it of
    bool isText = false, isWhole = false;
    double number = 0;
    std::string text;
};

Measured measure(const Limit& limit, const Findings& found);
bool fits(const Limit& limit, const Measured& value);

/// A step that limits may speak of.
struct LimitTarget
{
    std::string name;
    const Layout* layout;
};

/// Reads the limits; what is wrong is reported with the number of the limit, its field and line.
std::vector<Limit> readLimits(const Node& list, const std::vector<LimitTarget>& steps,
                              const std::function<void(std::size_t number, const std::string& field, int line,
                                                       const std::string& why)>& fault);

} // namespace ormalux
