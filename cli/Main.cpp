#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Input.h"
#include "cli/Output.h"

#include <QGuiApplication>

#include <exception>
#include <new>

using namespace ormalux::cli;

namespace {

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
    addStep(program, "sample", "sample");
    addStep(program, "histogram", "histogram");
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
    // Fonts and picture readers without a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
#ifdef Q_OS_WIN
    // Without a display the toolkit does not look for the system's fonts.
    if (!qEnvironmentVariableIsSet("QT_QPA_FONTDIR"))
        qputenv("QT_QPA_FONTDIR", qgetenv("WINDIR") + "/Fonts");
#endif
    // What is wrong with a picture is told by the reader, in one line that names it.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg)
            complain(text.toStdString());
    });
    int qtArguments = 1;
    const QGuiApplication application(qtArguments, argv);
    return runToTheEnd(programArguments(argc, argv));
}
