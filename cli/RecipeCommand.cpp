#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Input.h"
#include "cli/Output.h"
#include "platform/File.h"
#include "platform/SafeText.h"
#include "steps/Faults.h"
#include "steps/RecipePlan.h"
#include "steps/RecipeSchema.h"

#include <memory>

namespace ormalux::cli {

namespace {

int writeExample(const std::string& file)
{
    const std::string text = exampleRecipe();
    if (fileLength(file.c_str()))
        throw InputError(file + ": exists already");
    std::error_code why;
    if (!writeFile(file.c_str(), std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()),
                   &why))
        throw InputError(file + ": cannot be written: " + writeFailure(why));
    return Done;
}

int check(const std::string& file)
{
    Faults faults;
    RecipeDocuments documents;
    documents.load(file, faults);
    const auto plan = documents.bind(faults);
    if (!faults.empty())
        throw RecipeFault(faults.lines());
    putLine(shown(file) + ": " + std::to_string(plan->steps.size()) + " steps, all right");
    return Done;
}

} // namespace

void addRecipe(Command& program)
{
    Command command = program.add("recipe", "Begin and check recipes");
    command.needsCommand();
    auto file = std::make_shared<std::string>();

    Command init = command.add("init", "Write a commented example");
    init.text({"file", "The file to write; none of that name may exist", true}, *file);
    init.runs([file] { return writeExample(*file); });

    Command checking = command.add("check", "Say whether a recipe is right");
    checking.text({"file", "The recipe", true}, *file);
    checking.runs([file] { return check(*file); });

    Command schema = command.add("schema", "Print the JSON schema of recipes");
    schema.runs([] {
        putLine(recipeSchema());
        return int(Done);
    });
}

} // namespace ormalux::cli
