#include "cli/Recipe.h"

#include "platform/File.h"
#include "platform/Path.h"

namespace ormalux::cli {

namespace {

constexpr std::uint64_t largestRecipe = 1 << 20;

Json parseFile(const std::string& file)
{
    const auto bytes = readFile(file.c_str(), largestRecipe);
    if (!bytes)
        throw InputError(file + ": cannot be read");
    try {
        return Json::parse(bytes->begin(), bytes->end(), nullptr, true, true);
    } catch (const Json::parse_error& error) {
        throw InputError(file + ": not JSON: " + error.what());
    }
}

BoundStep bindStep(const Json& entry, const std::string& file, std::size_t number)
{
    std::string where = file + ": step " + std::to_string(number);
    if (!entry.is_object() || !entry.contains("step") || !entry.at("step").is_string())
        throw InputError(where + ": an object with the field step is expected");
    const std::string name = entry.at("step").get<std::string>();
    const Step* const step = findStep(name);
    if (!step)
        throw InputError(where + ": step: unknown step " + name);
    where += " (" + name + ")";
    Json given = entry;
    given.erase("step");
    return {step, checkedArguments(*step, given, where)};
}

} // namespace

Recipe loadRecipe(const std::string& file)
{
    const Json document = parseFile(file);
    if (!document.is_object() || !document.contains("steps") || !document.at("steps").is_array())
        throw InputError(file + ": an object with a list of steps is expected");
    for (const auto& [name, value] : document.items())
        if (name != "steps" && name != "name" && name != "$schema")
            throw InputError(file + ": unknown field " + name);
    Recipe recipe;
    const std::u8string folder = nativePath(file.c_str()).parent_path().u8string();
    recipe.folder.assign(folder.begin(), folder.end());
    for (const Json& entry : document.at("steps"))
        recipe.steps.push_back(bindStep(entry, file, recipe.steps.size() + 1));
    if (recipe.steps.empty())
        throw InputError(file + ": steps: at least one step is expected");
    return recipe;
}

Json runRecipe(const Recipe& recipe, const std::string& file, Workpiece& work)
{
    loadPicture(file, work);
    work.sourceFolder = recipe.folder;
    Json results = Json::array();
    for (const BoundStep& bound : recipe.steps) {
        const std::size_t before = work.findings.size();
        bound.step->run(work, bound.arguments);
        for (std::size_t i = before; i < work.findings.size(); ++i) {
            Json result = {{"step", bound.step->name}};
            result.update(work.findings[i].facts);
            result[work.findings[i].recordName] = work.findings[i].records;
            results.push_back(std::move(result));
        }
    }
    return {{"file", file}, {"steps", std::move(results)}};
}

std::string exampleRecipe()
{
    return R"(// A recipe: the steps run in turn on every picture. 'ormalux recipe schema' prints what every step takes.
// Run it with: ormalux run recipe.json pictures/ --annotate 'marked/{}.png'
{
    "name": "bright parts",
    "steps": [
        // Steps that change the picture; those behind see what is left.
        {"step": "gassian3x3"},
        {"step": "light", "brightness": 10, "contrast": 20},

        // Steps that measure; every one adds its findings to the picture's line of output.
        // A region is x1,y1,x2,y2: "roi": [0, 0, 319, 239]
        {"step": "blobs", "threshold": "auto", "object": "white", "min_size": "8x8", "sort": "pixels"},
        {"step": "histogram"}

        // Names of sources are looked for beside the recipe:
        // {"step": "match", "source": "lid.mcs", "threshold": "90..200", "min_yield": 0.8}
        // {"step": "ocr", "source": ["digits/"], "min_size": "4x8", "max_size": "40x60"}
        // {"step": "gauge-line", "box": [10, 10, 200, 120], "direction": "horizontal", "threshold": 128}
    ]
}
)";
}

namespace {

Json parameterSchema(const Parameter& parameter)
{
    Json schema = {{"description", parameter.help}};
    switch (parameter.kind) {
    case Kind::Integer:
    case Kind::Real:
        schema.update({{"type", parameter.kind == Kind::Integer ? "integer" : "number"},
                       {"minimum", parameter.low},
                       {"maximum", parameter.high}});
        break;
    case Kind::Choice:
        schema["enum"] = parameter.choices;
        break;
    case Kind::Threshold:
    case Kind::Level:
        schema["oneOf"] = {
            {{"type", "integer"}, {"minimum", 0}, {"maximum", 255}},
            {{"type", "string"},
             {"pattern",
              parameter.kind == Kind::Level ? "^(auto|[0-9]+)$" : "^(auto|[0-9]+|[0-9]+\\.\\.[0-9]+)$"}}};
        break;
    case Kind::Region:
    case Kind::Point: {
        const int count = parameter.kind == Kind::Region ? 4 : 2;
        const std::string more = "(,-?[0-9]+){" + std::to_string(count - 1) + "}";
        schema["oneOf"] = {
            {{"type", "array"}, {"items", {{"type", "integer"}}}, {"minItems", count}, {"maxItems", count}},
            {{"type", "string"}, {"pattern", "^-?[0-9]+" + more + "$"}}};
        break;
    }
    case Kind::Size:
        schema.update({{"type", "string"}, {"pattern", "^[0-9]+x[0-9]+$"}});
        break;
    case Kind::Text:
        schema["type"] = "string";
        break;
    case Kind::Files:
        schema["oneOf"] = {{{"type", "string"}},
                           {{"type", "array"}, {"items", {{"type", "string"}}}, {"minItems", 1}}};
        break;
    case Kind::Kernel:
        schema["oneOf"] = {
            {{"type", "array"}, {"items", {{"type", "integer"}}}, {"minItems", 1}, {"maxItems", 961}},
            {{"type", "string"}, {"pattern", "^-?[0-9]+( -?[0-9]+)*$"}}};
        break;
    }
    if (!parameter.fallback.is_null())
        schema["default"] = parameter.fallback;
    return schema;
}

} // namespace

Json recipeSchema()
{
    Json variants = Json::array();
    for (const Step& step : allSteps()) {
        Json properties = {{"step", {{"const", step.name}}}};
        Json required = {"step"};
        for (const Parameter& parameter : step.parameters) {
            properties[parameter.name] = parameterSchema(parameter);
            if (parameter.fallback.is_null() && !parameter.optional)
                required.push_back(parameter.name);
        }
        variants.push_back({{"description", step.help},
                            {"type", "object"},
                            {"properties", properties},
                            {"required", required},
                            {"additionalProperties", false}});
    }
    return {{"$schema", "https://json-schema.org/draft/2020-12/schema"},
            {"title", "Ormalux recipe"},
            {"type", "object"},
            {"properties",
             {{"$schema", {{"type", "string"}}},
              {"name", {{"type", "string"}}},
              {"steps", {{"type", "array"}, {"minItems", 1}, {"items", {{"oneOf", variants}}}}}}},
            {"required", {"steps"}},
            {"additionalProperties", false}};
}

} // namespace ormalux::cli
