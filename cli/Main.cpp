#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Input.h"
#include "cli/Output.h"

#include <CLI/CLI.hpp>
#include <QGuiApplication>

#include <algorithm>
#include <exception>
#include <new>
#include <sstream>

using namespace ormalux::cli;

namespace {

int runProgram(std::vector<std::string> arguments)
{
    CLI::App program{"Ormalux: measures and finds parts in camera pictures, without a display.", "ormalux"};
    program.allow_windows_style_options(false); // a slash begins a path on every system
    program.footer("Exit code: 0 done, 1 nothing found, 2 bad usage or input.\n"
                   "'ormalux COMMAND --help' tells a command's options.");
    program.set_version_flag("--version", "ormalux " ORMALUX_VERSION);
    program.require_subcommand(1);
    program.get_formatter()->column_width(34);

    Chosen chosen = [] { return int(BadInput); };
    addInfo(program, chosen);
    addThreshold(program, chosen);
    addProcess(program, chosen);
    addPlane(program, chosen);
    addStep(program, "blobs", "blobs", chosen);
    addSource(program, chosen);
    addStep(program, "match", "match", chosen);
    addStep(program, "ocr", "ocr", chosen);
    CLI::App* gauge = program.add_subcommand("gauge", "Measure edges");
    gauge->require_subcommand(1);
    addStep(*gauge, "point", "gauge-point", chosen);
    addStep(*gauge, "line", "gauge-line", chosen);
    addStep(program, "sample", "sample", chosen);
    addStep(program, "histogram", "histogram", chosen);
    addRun(program, chosen);
    addRecipe(program, chosen);

    try {
        std::reverse(arguments.begin(), arguments.end()); // the parser takes them from the end
        program.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) // neither help nor version
            throw InputError(std::string(error.what()) + "; --help tells more");
        std::ostringstream text;
        program.exit(error, text, text);
        putText(text.str());
        return Done;
    }
    return chosen();
}

/// The exit code, once all output has arrived.
int runToTheEnd(std::vector<std::string> arguments)
{
    try {
        const int code = runProgram(std::move(arguments));
        closeOutput();
        return code;
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
