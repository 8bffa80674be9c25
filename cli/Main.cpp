#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Input.h"
#include "cli/Output.h"
#include "steps/PictureLoader.h"
#include "steps/Step.h"

#include <exception>
#include <new>

using namespace ormalux::cli;

namespace {

/// Whether a step measures without what other steps have found, under a name that is not a group's.
bool standsAlone(const ormalux::Step& step)
{
    for (const ormalux::Parameter& parameter : step.parameters)
        if (parameter.kind == ormalux::Kind::Reference)
            return false;
    return step.measures && !step.name.starts_with("gauge-");
}

void declareCommands(Command& program)
{
    addInfo(program);
    addThreshold(program);
    addProcess(program);
    addPlane(program);
    addStep(program, "blobs", "blobs");
    addSource(program);
    addStep(program, "match", "match");
    addStep(program, "ocr", "ocr");
    addStep(program, "read", "read");
    Command gauge = program.add("gauge", "Measure edges");
    gauge.needsCommand();
    addStep(gauge, "point", "gauge-point");
    addStep(gauge, "line", "gauge-line");
    for (const ormalux::Step& step : ormalux::allSteps())
        if (standsAlone(step) && !program.has(step.name))
            addStep(program, step.name, step.name);
    addRun(program);
    addRecipe(program);
}

int runProgram(std::vector<std::string> arguments)
{
    std::string text;
    const Chosen chosen = readCommandLine(std::move(arguments), declareCommands, text);
    if (chosen)
        return chosen();
    putText(text);
    return Done;
}

/// The exit code, once all output has arrived.
int runToTheEnd(std::vector<std::string> arguments)
{
    try {
        const int code = runProgram(std::move(arguments));
        closeOutput();
        return code;
    } catch (const RecipeFault& fault) {
        for (const std::string& line : fault.lines)
            explain(line);
    } catch (const std::bad_alloc&) {
        complain("too little memory");
    } catch (const std::exception& error) {
        complain(error.what());
    }
    return BadInput;
}

} // namespace

int main(int argc, char** argv)
{
    const Console console;
    ormalux::setPictureLoader(readGrayPicture);
    return runToTheEnd(programArguments(argc, argv));
}
