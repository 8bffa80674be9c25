#include "cli/Annotation.h"
#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Input.h"
#include "cli/Output.h"
#include "cli/OutputNames.h"
#include "cli/Parallel.h"
#include "cli/Progress.h"
#include "steps/ArgumentText.h"
#include "steps/JsonText.h"
#include "steps/Recipe.h"

#include <memory>
#include <new>

namespace ormalux::cli {

namespace {

struct RunOptions
{
    std::string recipe;
    std::vector<std::string> pictures;
    std::vector<std::string> values;
    std::string annotate;
    std::string output;
    std::string shard;
    int jobs = 0;
    int bits = 0;
    bool timing = false;
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

/// What one picture adds to the output.
struct Line
{
    enum Kind : char
    {
        Failed = '!', ///< could not be used
        Rejected = 'x',
        Found = '+',
        Empty = '-'
    };
    Kind kind = Failed;
    std::string text;
    std::string error;
};

/// Runs the recipe on pictures, one after the other.
class Inspector
{
public:
    Inspector(const CKestRecipe& recipe, const RunOptions& options, bool several)
        : m_recipe(recipe), m_options(options), m_several(several)
    {
        m_inspection.ShowTiming(options.timing);
    }

    Line inspect(const std::string& file)
    {
        Line line;
        LoadedPicture picture;
        std::string error;
        try {
            picture = readPictureFile(file, true);
        } catch (const InputError& fault) {
            error = fault.what();
        } catch (const std::bad_alloc&) {
            error = file + ": too little memory";
        }
        m_recipe.Run(frameOf(picture, m_options.bits), m_inspection);
        InspectionData& data = m_inspection.data();
        if (!data.error.empty() && error.empty())
            error = file + ": " + data.error;
        if (error.empty())
            error = write(file, data);
        data.error = messageText(error);
        line.text = "{\"file\":";
        appendText(line.text, file);
        const std::string members = resultMembers(data);
        line.text += (members.empty() ? "" : ",") + members + "}";
        line.error = data.error;
        const int verdict = data.verdict();
        line.kind = verdict < 0     ? Line::Failed
                    : data.judged() ? (verdict ? Line::Found : Line::Rejected)
                    : verdict       ? Line::Found
                                    : Line::Empty;
        return line;
    }

private:
    /// Writes the pictures that were asked for; why one could not be written.
    std::string write(const std::string& file, const InspectionData& data) const
    try {
        if (!m_options.annotate.empty()) {
            Annotation annotation;
            for (std::size_t i = 0; i < data.plan->steps.size(); ++i)
                annotation.add(*data.plan->steps[i].step, data.findings[i]);
            annotation.write(outputName(m_options.annotate, file, m_several), data.work);
        }
        if (!m_options.output.empty())
            savePicture(outputName(m_options.output, file, m_several), data.work);
        return {};
    } catch (const InputError& error) {
        return error.what();
    } catch (const std::bad_alloc&) {
        return file + ": too little memory";
    }

    const CKestRecipe& m_recipe;
    const RunOptions& m_options;
    bool m_several;
    CKestInspection m_inspection;
};

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

void loadRecipe(CKestRecipe& recipe, const std::string& file)
{
    if (!recipe.Load(file.c_str()))
        throw RecipeFault(linesOf(recipe.GetError()));
}

void setValues(CKestRecipe& recipe, const std::vector<std::string>& values)
{
    for (const std::string& value : values) {
        const std::size_t equals = value.find('=');
        if (equals == std::string::npos)
            throw InputError("--set " + value + ": expected NAME=VALUE");
        if (!recipe.Set(value.substr(0, equals).c_str(), value.substr(equals + 1).c_str()))
            throw RecipeFault(linesOf("--set " + value + ": " + recipe.GetError()));
    }
}

/// The exit code that the kinds of lines add up to.
class Outcome
{
public:
    explicit Outcome(bool judged) : m_judged(judged) {}

    void add(char kind)
    {
        m_failed = m_failed || kind == Line::Failed;
        m_rejected = m_rejected || kind == Line::Rejected;
        m_found = m_found || kind == Line::Found;
        m_any = true;
    }
    int code() const
    {
        if (m_failed)
            return BadInput;
        if (m_rejected)
            return NothingFound;
        return m_judged || m_found || !m_any ? Done : NothingFound;
    }

private:
    bool m_judged, m_failed = false, m_rejected = false, m_found = false, m_any = false;
};

int runAll(RunOptions& options)
{
    CKestRecipe recipe;
    loadRecipe(recipe, options.recipe);
    setValues(recipe, options.values);
    Batch batch;
    batch.files = options.pictures;
    batch.expandFolders();
    checkOutputNames(batch.files, {options.annotate, options.output}, {options.recipe});
    const Shard shard = parseShard(options.shard);
    std::vector<std::string> mine;
    for (std::size_t i = shard.index; i < batch.files.size(); i += shard.count)
        mine.push_back(batch.files[i]);

    if (options.jobs != 1 && mine.size() > 1) {
        std::vector<std::string> named = mine;
        if (!options.output.empty())
            named.push_back(options.output);
        if (!options.annotate.empty())
            named.push_back(options.annotate + "*"); // drawing needs it whatever the ending
        loadModuleFor(named);
    }

    Inspector inspector(recipe, options, batch.several());
    Outcome outcome(recipe.HasLimits());
    Progress progress(mine.size());
    std::size_t done = 0;
    inProcesses(
        mine.size(), options.jobs,
        [&](std::size_t i) {
            const Line line = inspector.inspect(mine[i]);
            return std::string(1, line.kind) + line.error + '\0' + line.text;
        },
        [&](const std::string& answer) {
            const std::size_t end = answer.find('\0');
            progress.clear();
            if (end > 1)
                complain(answer.substr(1, end - 1));
            putLine(answer.substr(end + 1));
            flushOutput();
            outcome.add(answer[0]);
            ++done;
            progress.advance(done < mine.size() ? mine[done] : std::string());
        });
    return outcome.code();
}

} // namespace

void addRun(Command& program)
{
    Command command = program.add("run", "Run a recipe on pictures: one JSON line a picture");
    auto options = std::make_shared<RunOptions>();
    command.text({"recipe", "The recipe, a JSON file ('ormalux recipe init' writes one)", true},
                 options->recipe);
    command.texts({"pictures", "Pictures or folders of them", true}, options->pictures);
    command.repeated({"--set", "Give a named value of the recipe another one, as NAME=VALUE"},
                     options->values);
    command.text(
        {"--annotate", "Write the picture with what was found drawn in; {} stands for the picture's name"},
        options->annotate);
    command.text({"-o,--output", "Write the picture as the steps left it; {} stands for the picture's name"},
                 options->output);
    command.number({"--bits", "Significant bits of 16-bit pictures, in place of the recipe's"}, options->bits,
                   8, 16);
    command.number({"-j,--jobs", "Processes; 0 is one for each processor", false, "0"}, options->jobs, 0,
                   1024);
    command.text({"--shard", "Only every N-th picture beginning with the I-th, as I/N (for job arrays)"},
                 options->shard);
    command.flag({"--timing", "Add the milliseconds that each picture took as \"ms\""}, options->timing);
    command.runs([options] { return runAll(*options); });
}

} // namespace ormalux::cli
