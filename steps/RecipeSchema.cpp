#include "steps/RecipeSchema.h"

#include "steps/ArgumentText.h"
#include "steps/Step.h"

#include <nlohmann/json.hpp>

namespace ormalux {

namespace {

using Json = nlohmann::ordered_json;

Json reference(const char* name)
{
    return {{"$ref", std::string("#/$defs/") + name}};
}

/// A value, or the name of one that stands in "values".
Json orNamed(Json schema)
{
    return {{"anyOf", {std::move(schema), reference("named")}}};
}

Json numbers(int count)
{
    return {{"type", "array"},
            {"items", orNamed({{"type", "number"}})},
            {"minItems", count},
            {"maxItems", count}};
}

Json coordinates(int count)
{
    const std::string more = "(,-?[0-9.]+){" + std::to_string(count - 1) + "}";
    return {
        {"anyOf",
         {numbers(count), {{"type", "string"}, {"pattern", "^-?[0-9.]+" + more + "$"}}, reference("named")}}};
}

Json number(const char* type, double low, double high)
{
    return {{"type", type}, {"minimum", low}, {"maximum", high}};
}

Json fractions(const Parameter& parameter)
{
    Json schema = {{"type", "object"}, {"properties", Json::object()}, {"additionalProperties", false}};
    for (const std::string& name : parameter.choices)
        schema["properties"][name] = orNamed(number("number", parameter.low, parameter.high));
    return schema;
}

Json conditions(const Step& step)
{
    Json schema = {{"type", "object"}, {"properties", Json::object()}, {"additionalProperties", false}};
    for (const Column& column : step.columns)
        if (column.type != CellType::Text)
            schema["properties"][column.name] = reference("range");
    return schema;
}

Json columnNames(const Step& step)
{
    Json names = Json::array();
    for (const char* sign : {"", "-"})
        for (const Column& column : step.columns)
            names.push_back(sign + column.name);
    return {{"enum", names}};
}

Json valueSchema(const Step& step, const Parameter& parameter)
{
    switch (parameter.kind) {
    case Kind::Integer:
        return orNamed(number("integer", parameter.low, parameter.high));
    case Kind::Real:
        return orNamed(number("number", parameter.low, parameter.high));
    case Kind::Flag:
        return orNamed({{"type", "boolean"}});
    case Kind::Choice:
        return orNamed({{"enum", parameter.choices}});
    case Kind::Threshold:
        return reference("threshold");
    case Kind::Level:
        return reference("level");
    case Kind::Region:
    case Kind::Corners:
        return coordinates(4);
    case Kind::Point:
    case Kind::Pair:
        return coordinates(2);
    case Kind::Triple:
        return coordinates(3);
    case Kind::Box:
        return coordinates(5);
    case Kind::Size:
        return orNamed({{"type", "string"}, {"pattern", "^[0-9]+x[0-9]+$"}});
    case Kind::Extent:
        return {{"anyOf",
                 {number("integer", parameter.low, parameter.high),
                  {{"type", "string"}, {"pattern", "^[0-9]+(x[0-9]+)?$"}},
                  reference("named")}}};
    case Kind::Text:
        return {{"type", "string"}};
    case Kind::Files:
        return {
            {"anyOf",
             {{{"type", "string"}}, {{"type", "array"}, {"items", {{"type", "string"}}}, {"minItems", 1}}}}};
    case Kind::Kernel:
        return {{"anyOf",
                 {{{"type", "array"},
                   {"items", orNamed({{"type", "integer"}})},
                   {"minItems", 1},
                   {"maxItems", 961}},
                  {{"type", "string"}, {"pattern", "^-?[0-9]+( -?[0-9]+)*$"}},
                  reference("named")}}};
    case Kind::Reference:
        return {{"type", "string"}, {"pattern", "^[A-Za-z][A-Za-z0-9_]*(\\[[0-9]+\\])?$"}};
    case Kind::Fractions:
        return fractions(parameter);
    case Kind::Conditions:
        return conditions(step);
    case Kind::Column:
        return columnNames(step);
    }
    return Json::object();
}

/// The fallback in the type that the schema gives the value.
Json fallbackOf(const Parameter& parameter)
{
    if (parameter.kind == Kind::Integer)
        return std::int64_t(*parseReal(parameter.fallback));
    if (parameter.kind == Kind::Real)
        return *parseReal(parameter.fallback);
    if (parameter.kind == Kind::Flag)
        return parameter.fallback == "true";
    if (parameter.kind != Kind::Fractions)
        return parameter.fallback;
    const auto values = *parseReals(parameter.fallback, ",");
    Json object = Json::object();
    for (std::size_t i = 0; i < values.size(); ++i)
        object[parameter.choices[i]] = values[i];
    return object;
}

Json stepSchema(const Step& step)
{
    Json properties = {
        {"step", {{"const", step.name}}}, {"name", reference("name")}, {"in", reference("name")}};
    Json required = Json::array({"step"});
    if (step.name == "frame")
        required.push_back("name");
    if (step.measures && step.parameter("roi"))
        properties["upright"] = {{"type", "boolean"},
                                 {"description", "Resample the region of a turned plate upright"}};
    for (const Parameter& parameter : step.parameters) {
        Json schema = valueSchema(step, parameter);
        schema["description"] = parameter.help;
        if (!parameter.fallback.empty())
            schema["default"] = fallbackOf(parameter);
        properties[parameter.name] = std::move(schema);
        if (parameter.required())
            required.push_back(parameter.name);
    }
    return {{"description", step.help},
            {"type", "object"},
            {"properties", properties},
            {"required", required},
            {"additionalProperties", false}};
}

Json limitSchema()
{
    const Json value = orNamed({{"type", "number"}});
    Json ends = {{"anyOf",
                  {{{"type", "number"}, {"minimum", 0}},
                   {{"type", "array"}, {"items", value}, {"minItems", 2}, {"maxItems", 2}},
                   reference("named")}}};
    return {{"type", "object"},
            {"properties",
             {{"of",
               {{"type", "string"},
                {"description", "STEP.count, STEP.COLUMN, STEP[2].COLUMN, STEP.min(COLUMN)"}}},
              {"nominal", value},
              {"tolerance", std::move(ends)},
              {"at_least", value},
              {"at_most", value},
              {"equals", Json::object()},
              {"matches", {{"type", "string"}}},
              {"one_of", {{"type", "array"}, {"minItems", 1}}},
              {"severity", {{"enum", {"fail", "warn"}}}}}},
            {"required", {"of"}},
            {"additionalProperties", false}};
}

Json scaleSchema()
{
    return {{"anyOf",
             {{{"type", "string"}, {"description", "A file that holds a scale"}},
              {{"type", "object"},
               {"properties",
                {{"unit", {{"type", "string"}, {"pattern", "^[A-Za-z]+$"}}},
                 {"per_pixel", orNamed({{"type", "number"}, {"exclusiveMinimum", 0}})},
                 {"points", {{"type", "array"}, {"items", numbers(4)}, {"minItems", 4}}}}},
               {"required", {"unit"}}}}}};
}

Json shared()
{
    const auto text = [](const char* pattern) { return Json{{"type", "string"}, {"pattern", pattern}}; };
    const Json level = {{"type", "integer"}, {"minimum", 0}, {"maximum", 255}};
    const Json end = {{"type", {"number", "string", "null"}}};
    return {{"name", text("^[A-Za-z][A-Za-z0-9_]*$")},
            {"named", text("^\\$[A-Za-z][A-Za-z0-9_]*$")},
            {"level", {{"anyOf", {level, text("^(auto|[0-9]+)$"), reference("named")}}}},
            {"threshold", {{"anyOf", {level, text("^(auto|[0-9]+(\\.\\.[0-9]+)?)$"), reference("named")}}}},
            {"range", {{"type", "array"}, {"items", end}, {"minItems", 2}, {"maxItems", 2}}},
            {"scale", scaleSchema()},
            {"limit", limitSchema()}};
}

} // namespace

std::string recipeSchema()
{
    Json defs = shared();
    Json names = Json::array(), choices = Json::array();
    for (const Step& step : allSteps()) {
        const std::string name = "step-" + step.name;
        names.push_back(step.name);
        choices.push_back(
            {{"if", {{"properties", {{"step", {{"const", step.name}}}}}, {"required", {"step"}}}},
             {"then", reference(name.c_str())}});
        defs[name] = stepSchema(step);
    }
    const Json items = {{"type", "object"},
                        {"properties", {{"step", {{"enum", names}}}}},
                        {"required", {"step"}},
                        {"allOf", choices}};
    const Json schema = {{"$schema", "https://json-schema.org/draft/2020-12/schema"},
                         {"title", "Ormalux recipe"},
                         {"type", "object"},
                         {"properties",
                          {{"$schema", {{"type", "string"}}},
                           {"name", {{"type", "string"}}},
                           {"bits", orNamed(number("integer", 8, 16))},
                           {"values", {{"type", "object"}, {"propertyNames", reference("name")}}},
                           {"scale", reference("scale")},
                           {"include", {{"type", "array"}, {"items", {{"type", "string"}}}}},
                           {"steps", {{"type", "array"}, {"items", items}}},
                           {"limits", {{"type", "array"}, {"items", reference("limit")}}}}},
                         {"required", {"steps"}},
                         {"additionalProperties", false},
                         {"$defs", defs}};
    return schema.dump(2);
}

} // namespace ormalux
