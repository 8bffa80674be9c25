#pragma once

#include "steps/Limit.h"
#include "steps/Scale.h"
#include "steps/Step.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ormalux {

struct BoundStep
{
    const Step* step = nullptr;
    std::string name; ///< the step's own; empty when it has none
    int frame = -1;   ///< the number of the frame step that it moves along with
    bool upright = false;
    std::optional<RECT> roi; ///< of an upright step: the region that is resampled
    Layout layout;
    std::unique_ptr<Operation> operation;
};

/// A recipe, read and checked: constant while it runs.
struct RecipePlan
{
    std::string name;
    /// Whether results carry the name. Recipes of steps without names, values, limits and the like have
    /// always given results without it.
    bool showsName = false;
    int bits = 0; ///< significant bits of 16-bit pictures; 0: not said
    Scale scale;
    std::vector<BoundStep> steps;
    std::vector<Limit> limits;
};

/// The documents of a recipe: itself behind those that it includes, and the values that they name.
class RecipeDocuments
{
public:
    /// Reads a recipe file and what it includes. What is wrong is added to faults.
    void load(const std::string& path, Faults& faults);
    /// The same for a text; relative names in it are looked for in the folder.
    void parse(std::string_view json, const std::string& folder, Faults& faults);

    /// Gives a named value another one, as JSON or, for a value that is a text, as plain text too. False with
    /// the reason when there is none of that name or the kind is another.
    bool set(const std::string& name, const std::string& json, std::string& why);
    const std::vector<std::string>& valueNames() const { return m_valueNames; }

    /// Makes the recipe ready to run. What is wrong is added to faults; the plan is then of no use.
    std::shared_ptr<const RecipePlan> bind(Faults& faults) const;

    struct Part
    {
        std::string file;   ///< as messages name it
        std::string folder; ///< empty for the working folder
        Node root;
    };
    /// The value that a text as "$level" stands for; null when it stands for none of that name.
    const Node* value(std::string_view name) const;

private:
    void add(std::string_view json, const std::string& file, const std::string& folder, Faults& faults,
             std::vector<std::string>& open);
    void addFile(const std::string& path, Faults& faults, std::vector<std::string>& open);
    void addIncluded(const Part& part, Faults& faults, std::vector<std::string>& open);
    void addValues(const Part& part, Faults& faults);

    std::vector<Part> m_parts; ///< what is included comes first
    std::vector<std::string> m_valueNames;
    std::vector<Node> m_values;
};

} // namespace ormalux
