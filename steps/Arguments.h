#pragma once

#include "steps/Node.h"
#include "steps/Parameter.h"

#include <functional>
#include <optional>

namespace ormalux {

struct Step;

/// The values of a step's parameters in their own types: read once, where text comes in.
class Arguments
{
public:
    explicit Arguments(const Step& step);

    bool given(const char* name) const { return value(name).index() != 0; }
    int integer(const char* name) const { return int(std::get<std::int64_t>(value(name))); }
    double real(const char* name) const { return std::get<double>(value(name)); }
    bool flag(const char* name) const { return std::get<bool>(value(name)); }
    /// Also of choices and columns.
    const std::string& text(const char* name) const { return std::get<std::string>(value(name)); }
    bool is(const char* name, const char* choice) const { return text(name) == choice; }
    const ThresholdChoice& threshold(const char* name) const
    {
        return std::get<ThresholdChoice>(value(name));
    }
    /// Nothing when it is not given.
    std::optional<RECT> region(const char* name) const;
    SIZE size(const char* name, SIZE otherwise = {}) const;
    const std::vector<double>& numbers(const char* name) const
    {
        return std::get<std::vector<double>>(value(name));
    }
    const std::vector<long>& kernel(const char* name) const
    {
        return std::get<std::vector<long>>(value(name));
    }
    const std::vector<std::string>& files(const char* name) const
    {
        return std::get<std::vector<std::string>>(value(name));
    }
    const RowReference& reference(const char* name) const { return std::get<RowReference>(value(name)); }
    /// None when they are not given.
    std::vector<Condition> conditions(const char* name) const;

    const Step& step() const { return *m_step; }
    const Argument& at(std::size_t index) const { return m_values[index]; }
    Argument& at(std::size_t index) { return m_values[index]; }

private:
    const Argument& value(const char* name) const;

    const Step* m_step;
    std::vector<Argument> m_values; ///< one a parameter
};

/// Where an argument is wrong: the field, its line (0 for an option), and why.
using ArgumentFault = std::function<void(const std::string& field, int line, const std::string& why)>;

/// Reads the fields of an object for a step: every parameter checked, the absent ones filled in, every fault
/// reported. Fields in `besides` are somebody else's. Text that stands for a number is read as one.
Arguments readArguments(const Step& step, const Node& object, const std::vector<std::string>& besides,
                        const ArgumentFault& fault);

/// One value; why it is refused is written to `why`.
std::optional<Argument> readArgument(const Step& step, const Parameter& parameter, const Node& value,
                                     std::string& why);

} // namespace ormalux
