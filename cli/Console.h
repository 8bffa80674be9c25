#pragma once

#include <string>
#include <vector>

namespace ormalux::cli {

/// Standard output and error as one finds them on every system: the same bytes, UTF-8 with plain line ends.
/// What it changes in the console goes back when it ends.
class Console
{
public:
    Console();
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

private:
    unsigned m_codePage = 0;
};

/// The program's arguments behind its name, in UTF-8 whatever the system's code page is. Wildcards are
/// expanded where the shell leaves that to the program.
std::vector<std::string> programArguments(int argc, char** argv);

} // namespace ormalux::cli
