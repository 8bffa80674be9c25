#pragma once

#include <QStringList>

namespace ormalux::viewer {

/// The exit codes, those of the command line program.
enum ExitCode
{
    Done = 0,
    BadInput = 2
};

/// The program's arguments without its name, whatever the system's code page is. Wildcards are expanded where
/// the shell leaves that to the program.
QStringList programArguments(int argc, char** argv);

/// Prints to where the program was started from: standard output for Done, else standard error.
void print(ExitCode code, const QString& text);

} // namespace ormalux::viewer
