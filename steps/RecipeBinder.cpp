#include "steps/ArgumentText.h"
#include "steps/Bind.h"
#include "steps/BindContext.h"
#include "steps/RecipePlan.h"

#include <algorithm>
#include <new>

namespace ormalux {

namespace {

using Part = RecipeDocuments::Part;

// Made when they are asked for: loading the library takes no memory.
std::vector<std::string> topFields()
{
    return {"$schema", "name", "bits", "values", "scale", "steps", "limits", "include"};
}
/// What every step may have besides its parameters.
std::vector<std::string> stepFields()
{
    return {"step", "name", "in"};
}

/// Makes a plan of documents; everything that is wrong is reported.
class Binder
{
public:
    Binder(const RecipeDocuments& documents, Faults& faults)
        : m_documents(documents), m_faults(faults), m_plan(std::make_shared<RecipePlan>())
    {}

    std::shared_ptr<const RecipePlan> bind(const std::vector<Part>& parts)
    {
        for (const Part& part : parts)
            bindTop(part);
        for (const Part& part : parts)
            bindSteps(part);
        if (m_plan->steps.empty() && !parts.empty() && m_faults.empty())
            m_faults.add(parts.back().file, parts.back().root.line, "steps", "at least one step is expected");
        for (const Part& part : parts)
            bindLimits(part);
        m_plan->showsName = !m_plan->name.empty() && (m_isNew || parts.size() > 1);
        return m_plan;
    }

private:
    void bindTop(const Part& part)
    {
        const auto& root = part.root;
        const std::vector<std::string> fields = topFields();
        for (std::size_t i = 0; i < root.keys.size(); ++i) {
            const std::string& key = root.keys[i];
            if (std::find(fields.begin(), fields.end(), key) == fields.end())
                m_faults.add(part.file, root.keyLines[i], "", unknownName("field", key, fields));
            m_isNew = m_isNew || (key != "steps" && key != "name" && key != "$schema");
        }
        const Node* const steps = root.find("steps");
        if (!steps || !steps->isList())
            m_faults.add(part.file, steps ? steps->line : root.line, "steps", "a list of steps is expected");
        if (const Node* const name = root.find("name")) {
            if (name->isText())
                m_plan->name = name->text;
            else
                m_faults.add(part.file, name->line, "name", shownValue(*name) + ": expected a text");
        }
        if (const Node* const bits = root.find("bits")) {
            const Node given = substituted(*bits, part, "bits");
            if (given.kind == Node::Kind::Integer && given.integer >= 8 && given.integer <= 16)
                m_plan->bits = int(given.integer);
            else
                m_faults.add(part.file, bits->line, "bits",
                             shownValue(given) + ": expected a whole number from 8 to 16");
        }
        if (const Node* const scale = root.find("scale"))
            m_plan->scale = readScale(
                substituted(*scale, part, "scale"), part.folder,
                [&](int line, const std::string& why) { m_faults.add(part.file, line, "scale", why); });
    }

    /// The value with every "$name" in it replaced.
    Node substituted(const Node& given, const Part& part, const std::string& where)
    {
        if (given.isText() && given.text.starts_with('$') && isName(std::string_view(given.text).substr(1))) {
            m_isNew = true;
            const Node* const value = m_documents.value(std::string_view(given.text).substr(1));
            if (!value) {
                m_faults.add(part.file, given.line, where,
                             unknownName("value", given.text.substr(1), m_documents.valueNames()));
                m_refused = true;
                return given;
            }
            Node node = *value;
            node.line = given.line;
            return node;
        }
        Node node = given;
        for (std::size_t i = 0; i < node.items.size(); ++i)
            node.items[i] =
                substituted(given.items[i], part, given.isObject() && where.empty() ? given.keys[i] : where);
        return node;
    }

    void bindSteps(const Part& part)
    {
        const Node* const steps = part.root.find("steps");
        if (!steps || !steps->isList())
            return;
        for (std::size_t i = 0; i < steps->items.size(); ++i)
            bindStep(part, steps->items[i], i + 1);
    }

    void bindStep(const Part& part, const Node& given, std::size_t number)
    {
        std::string label = "step " + std::to_string(number);
        const Node* const own = given.find("name");
        if (own && own->isText() && isName(own->text))
            label = "step " + own->text;
        const ArgumentFault fault = [&](const std::string& field, int line, const std::string& why) {
            m_faults.add(part.file, line, field.empty() ? label : label + ", " + field, why);
        };
        BoundStep bound;
        const Node* const kind = given.find("step");
        if (!given.isObject() || !kind || !kind->isText())
            return fault("step", kind ? kind->line : given.line,
                         "an object with the field \"step\" is expected");
        bound.step = findStep(kind->text);
        bindName(bound, own, given.line, fault);
        if (!bound.step)
            fault("step", kind->line, unknownName("step", kind->text, stepNames()));
        else
            bindArguments(bound, part, given, fault, label);
        m_plan->steps.push_back(std::move(bound)); // a wrong one too: later ones may name it
    }

    void bindName(BoundStep& bound, const Node* own, int line, const ArgumentFault& fault)
    {
        if (!own) {
            if (bound.step && bound.step->name == "frame")
                fault("name", line, "a frame needs a name");
            return;
        }
        m_isNew = true;
        if (!own->isText() || !isName(own->text))
            return fault("name", own->line,
                         shownValue(*own) + ": expected letters, digits and underscores, a letter first");
        for (const BoundStep& other : m_plan->steps)
            if (other.name == own->text)
                return fault("name", own->line, "\"" + own->text + "\" is used twice");
        bound.name = own->text;
    }

    void bindArguments(BoundStep& bound, const Part& part, const Node& given, const ArgumentFault& fault,
                       const std::string& label)
    {
        const std::size_t before = m_faults.count();
        Node object = given;
        for (std::size_t i = 0; i < object.items.size(); ++i)
            if (object.keys[i] != "step" && object.keys[i] != "name")
                object.items[i] = substituted(given.items[i], part, label + ", " + object.keys[i]);
        std::vector<std::string> besides = stepFields();
        const bool canBeUpright = bound.step->measures && bound.step->parameter("roi");
        if (canBeUpright)
            besides.push_back("upright");
        if (const Node* const in = object.find("in"))
            bindFrame(bound, *in, fault);
        if (const Node* const upright = object.find("upright"); upright && canBeUpright) {
            m_isNew = true;
            bound.upright = upright->kind == Node::Kind::Flag && upright->flag;
            if (upright->kind != Node::Kind::Flag)
                fault("upright", upright->line, shownValue(*upright) + ": expected true or false");
            else if (bound.upright && !object.find("in"))
                fault("upright", upright->line, "goes with \"in\"");
        }
        Arguments arguments = readArguments(*bound.step, object, besides, fault);
        checkSizes(arguments, object, fault);
        if (m_faults.count() == before)
            checkReferences(arguments, object, fault);
        makeLayout(bound);
        if (m_faults.count() != before)
            return;
        if (bound.upright)
            bound.roi = arguments.region("roi");
        BindContext context(
            part.folder,
            [&](const std::string& field, int, const std::string& why) {
                const Node* const at = object.find(field);
                fault(field, at ? at->line : object.line, why);
            },
            object.line);
        bound.operation = bound.step->make(arguments, context);
    }

    void bindFrame(BoundStep& bound, const Node& in, const ArgumentFault& fault)
    {
        m_isNew = true;
        std::vector<std::string> frames;
        for (std::size_t i = 0; i < m_plan->steps.size(); ++i) {
            const BoundStep& other = m_plan->steps[i];
            if (!other.step || other.step->name != "frame" || other.name.empty())
                continue;
            frames.push_back(other.name);
            if (in.isText() && other.name == in.text)
                bound.frame = int(i);
        }
        if (!in.isText())
            fault("in", in.line, shownValue(in) + ": expected the name of a frame");
        else if (bound.frame < 0)
            fault("in", in.line, unknownName("frame", in.text, frames) + "; it must be defined before");
    }

    /// References name a step before that finds places.
    void checkReferences(Arguments& arguments, const Node& object, const ArgumentFault& fault)
    {
        const auto& parameters = arguments.step().parameters;
        for (std::size_t i = 0; i < parameters.size(); ++i) {
            auto* const reference = std::get_if<RowReference>(&arguments.at(i));
            if (!reference)
                continue;
            m_isNew = true;
            std::vector<std::string> known;
            for (std::size_t k = 0; k < m_plan->steps.size(); ++k) {
                const BoundStep& other = m_plan->steps[k];
                if (other.name.empty() || (other.step && other.step->list.empty()))
                    continue;
                known.push_back(other.name);
                if (other.name == reference->name)
                    reference->step = int(k);
            }
            const int line = object.find(parameters[i].name)->line;
            if (reference->step < 0)
                fault(parameters[i].name, line,
                      unknownName("step", reference->name, known) + "; it must be defined before");
            else if (const Step* const other = m_plan->steps[std::size_t(reference->step)].step;
                     other && other->look == Look::None)
                fault(parameters[i].name, line, "\"" + reference->name + "\" finds no places");
            else if (other && (arguments.step().name == "angle" || arguments.step().name == "intersection") &&
                     other->look != Look::Line)
                fault(parameters[i].name, line, "\"" + reference->name + "\" finds no lines");
        }
    }

    void makeLayout(BoundStep& bound)
    {
        bound.layout = layoutOf(*bound.step, bound.name);
        m_plan->scale.addColumns(bound.layout.columns);
    }

    void bindLimits(const Part& part)
    {
        const Node* const limits = part.root.find("limits");
        if (!limits)
            return;
        if (!limits->isList())
            return m_faults.add(part.file, limits->line, "limits", "a list of limits is expected");
        std::vector<LimitTarget> targets;
        for (const BoundStep& bound : m_plan->steps)
            targets.push_back({bound.step ? bound.name : std::string(), &bound.layout});
        const auto read =
            readLimits(substituted(*limits, part, "limits"), targets,
                       [&](std::size_t number, const std::string& field, int line, const std::string& why) {
                           std::string where = "limit " + std::to_string(number);
                           if (!field.empty())
                               where += ", " + field;
                           m_faults.add(part.file, line, where, why);
                       });
        for (const Limit& limit : read)
            m_plan->limits.push_back(limit);
    }

    const RecipeDocuments& m_documents;
    Faults& m_faults;
    std::shared_ptr<RecipePlan> m_plan;
    bool m_isNew = false;
    bool m_refused = false;
};

} // namespace

void checkSizes(const Arguments& arguments, const Node& object, const ArgumentFault& fault)
{
    if (!arguments.step().parameter("min_size") || !arguments.step().parameter("max_size") ||
        !arguments.given("min_size") || !arguments.given("max_size"))
        return;
    const SIZE least = arguments.size("min_size"), most = arguments.size("max_size");
    const Node* const at = object.find("min_size") ? object.find("min_size") : object.find("max_size");
    if (least.cx > most.cx || least.cy > most.cy)
        fault("min_size", at ? at->line : object.line,
              std::to_string(least.cx) + "x" + std::to_string(least.cy) + " is above max_size " +
                  std::to_string(most.cx) + "x" + std::to_string(most.cy));
}

Layout layoutOf(const Step& step, const std::string& name)
{
    return {step.name, name, step.list, step.facts, step.columns};
}

BoundStep bindAlone(const Step& step, const Node& object, const ArgumentFault& fault)
{
    bool right = true;
    const ArgumentFault reported = [&](const std::string& field, int line, const std::string& why) {
        right = false;
        fault(field, line, why);
    };
    BoundStep bound;
    bound.step = &step;
    bound.layout = layoutOf(step, {});
    const Arguments arguments = readArguments(step, object, {}, reported);
    checkSizes(arguments, object, reported);
    BindContext context({}, reported, object.line);
    if (right)
        bound.operation = step.make(arguments, context);
    if (!right)
        bound.operation.reset();
    return bound;
}

std::shared_ptr<const RecipePlan> RecipeDocuments::bind(Faults& faults) const
{
    return Binder(*this, faults).bind(m_parts);
}

} // namespace ormalux
