#include "cli/Annotation.h"
#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/OutputNames.h"
#include "cli/Parallel.h"
#include "cli/Progress.h"
#include "cli/Recipe.h"
#include "cli/SafeText.h"
#include "platform/File.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <new>

namespace ormalux::cli {

namespace {

struct RunOptions
{
    std::string recipe;
    std::vector<std::string> pictures;
    std::string annotate;
    std::string output;
    std::string shard;
    int jobs = 0;
};

/// "I/N": every N-th picture, beginning with the I-th.
struct Shard
{
    std::size_t index = 0, count = 1;
};

Shard parseShard(const std::string& text)
{
    if (text.empty())
        return {};
    const auto numbers = parseNumbers(text, "/");
    if (!numbers || numbers->size() != 2 || (*numbers)[1] < 1 || (*numbers)[0] < 0 ||
        (*numbers)[0] >= (*numbers)[1])
        throw InputError("--shard " + text + ": expected I/N with I from 0 to N - 1");
    return {std::size_t((*numbers)[0]), std::size_t((*numbers)[1])};
}

/// What one picture adds to the output, and whether it could be used and gave a record.
struct Line
{
    bool failed = false, found = false;
    std::string text;
};

bool anyRecord(const Json& result)
{
    for (const Json& step : result.at("steps"))
        for (const auto& [name, value] : step.items())
            if (value.is_array() && !value.empty())
                return true;
    return result.at("steps").empty();
}

Line failedLine(const std::string& file, std::string_view why)
{
    const Json line = {{"file", file}, {"error", messageText(why)}};
    return {true, false, line.dump(-1, ' ', false, Json::error_handler_t::replace)};
}

Line workOn(const Recipe& recipe, const RunOptions& options, const std::string& file, bool several)
{
    Line line;
    try {
        Workpiece work;
        const Json result = runRecipe(recipe, file, work);
        if (!options.annotate.empty())
            writeAnnotated(outputName(options.annotate, file, several), work);
        if (!options.output.empty())
            savePicture(outputName(options.output, file, several), work);
        line.found = anyRecord(result);
        line.text = result.dump(-1, ' ', false, Json::error_handler_t::replace);
    } catch (const InputError& error) {
        return failedLine(file, error.what());
    } catch (const std::bad_alloc&) {
        return failedLine(file, file + ": too little memory");
    }
    return line;
}

int runAll(RunOptions& options)
{
    const Recipe recipe = loadRecipe(options.recipe);
    Batch batch;
    batch.files = options.pictures;
    batch.expandFolders();
    const bool several = batch.several();
    checkOutputNames(batch.files, {options.annotate, options.output}, {options.recipe});
    const Shard shard = parseShard(options.shard);
    std::vector<std::string> mine;
    for (std::size_t i = shard.index; i < batch.files.size(); i += shard.count)
        mine.push_back(batch.files[i]);

    bool failed = false, found = false;
    Progress progress(mine.size());
    std::size_t done = 0;
    inProcesses(
        mine.size(), options.jobs,
        [&](std::size_t i) {
            const Line line = workOn(recipe, options, mine[i], several);
            return std::string(line.failed ? "!" : line.found ? "+" : "-") + line.text;
        },
        [&](const std::string& answer) {
            progress.clear();
            if (answer[0] == '!')
                complain(Json::parse(answer.substr(1)).value("error", "failed"));
            putLine(answer.substr(1));
            flushOutput();
            failed = failed || answer[0] == '!';
            found = found || answer[0] == '+';
            ++done;
            progress.advance(done < mine.size() ? mine[done] : std::string());
        });
    return failed ? BadInput : found || mine.empty() ? Done : NothingFound;
}

} // namespace

void addRun(CLI::App& program, Chosen& chosen)
{
    CLI::App* command = program.add_subcommand("run", "Run a recipe on pictures: one JSON line a picture");
    auto options = std::make_shared<RunOptions>();
    command
        ->add_option("recipe", options->recipe, "The recipe, a JSON file ('ormalux recipe init' writes one)")
        ->required();
    command->add_option("pictures", options->pictures, "Pictures or folders of them")->required();
    command->add_option("--annotate", options->annotate,
                        "Write the picture with what was found drawn in; {} stands for the picture's name");
    command->add_option("-o,--output", options->output,
                        "Write the picture as the steps left it; {} stands for the picture's name");
    command->add_option("-j,--jobs", options->jobs, "Processes; 0 is one a processor")
        ->capture_default_str()
        ->check(CLI::Range(0, 1024));
    command->add_option("--shard", options->shard,
                        "Only every N-th picture beginning with the I-th, as I/N (for job arrays)");
    command->callback([&chosen, options] { chosen = [options] { return runAll(*options); }; });
}

void addRecipe(CLI::App& program, Chosen& chosen)
{
    CLI::App* command = program.add_subcommand("recipe", "Begin and check recipes");
    command->require_subcommand(1);
    auto file = std::make_shared<std::string>();

    CLI::App* init = command->add_subcommand("init", "Write a commented example");
    init->add_option("file", *file, "The file to write; none of that name may exist")->required();
    init->callback([&chosen, file] {
        chosen = [file] {
            const std::string text = exampleRecipe();
            if (fileLength(file->c_str()))
                throw InputError(*file + ": exists already");
            std::error_code why;
            if (!writeFile(file->c_str(),
                           std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()), &why))
                throw InputError(*file + ": cannot be written: " + writeFailure(why));
            return int(Done);
        };
    });

    CLI::App* check = command->add_subcommand("check", "Say whether a recipe is right");
    check->add_option("file", *file, "The recipe")->required();
    check->callback([&chosen, file] {
        chosen = [file] {
            const std::size_t count = loadRecipe(*file).steps.size();
            putLine(shown(*file) + ": " + std::to_string(count) + " steps, all right");
            return int(Done);
        };
    });

    CLI::App* schema = command->add_subcommand("schema", "Print the JSON schema of recipes");
    schema->callback([&chosen] {
        chosen = [] {
            putLine(recipeSchema().dump(2));
            return int(Done);
        };
    });
}

} // namespace ormalux::cli
