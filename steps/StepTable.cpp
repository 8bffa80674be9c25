#include "steps/Step.h"

namespace ormalux {

const Parameter* Step::parameter(std::string_view parameterName) const
{
    for (const Parameter& each : parameters)
        if (each.name == parameterName)
            return &each;
    return nullptr;
}

const std::vector<Step>& allSteps()
{
    static const std::vector<Step> steps = [] {
        std::vector<Step> all;
        for (const auto& part : {imageSteps(), planeSteps(), blobSteps(), matchSteps(), gaugeSteps(),
                                 sampleSteps(), histogramSteps(), neighbourhoodSteps(), edgeSteps(),
                                 relationSteps(), featureSteps(), frameSteps(), readSteps()})
            all.insert(all.end(), part.begin(), part.end());
        return all;
    }();
    return steps;
}

const Step* findStep(std::string_view name)
{
    for (const Step& step : allSteps())
        if (step.name == name)
            return &step;
    return nullptr;
}

std::vector<std::string> stepNames()
{
    std::vector<std::string> names;
    for (const Step& step : allSteps())
        names.push_back(step.name);
    return names;
}

Parameter wholeNumber(const char* name, double low, double high, const char* help, std::string fallback)
{
    return {name, Kind::Integer, std::move(fallback), help, low, high};
}

Parameter realNumber(const char* name, double low, double high, const char* help, std::string fallback)
{
    return {name, Kind::Real, std::move(fallback), help, low, high};
}

Parameter choice(const char* name, std::vector<std::string> choices, const char* help, std::string fallback)
{
    return {name, Kind::Choice, std::move(fallback), help, 0, 0, std::move(choices)};
}

Parameter optional(Parameter parameter)
{
    parameter.optional = true;
    return parameter;
}

Parameter regionOnly(const char* help)
{
    return optional({"roi", Kind::Region, "", help});
}

Parameter levelThreshold()
{
    return {"threshold", Kind::Level, "auto", "auto or a level 0..255"};
}

Parameter objectColor()
{
    return choice("object", {"white", "black"}, "white: brighter than the threshold; black: not brighter",
                  "white");
}

Parameter sizeLimit(const char* name, const char* help, std::string fallback)
{
    Parameter parameter{name, Kind::Size, std::move(fallback), help};
    parameter.optional = parameter.fallback.empty();
    return parameter;
}

} // namespace ormalux
