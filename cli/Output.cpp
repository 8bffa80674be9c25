#include "cli/Output.h"

#include "platform/SafeText.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace ormalux::cli {

namespace {

constexpr std::size_t longestMessage = 480; // with its mark and its line end below 500 bytes

[[noreturn]] void lost(int error)
{
    if (error == EPIPE)
        throw OutputLost("standard output: its reader has closed it before all was written");
    throw OutputLost(std::string("standard output cannot be written: ") +
                     (error && error != EBADF ? std::strerror(error) : "it is closed"));
}

} // namespace

void putText(std::string_view text)
{
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        lost(errno);
}

void putLine(std::string_view line)
{
    putText(line);
    putText("\n");
}

void flushOutput()
{
    errno = 0;
    if (std::fflush(stdout) != 0 || std::ferror(stdout))
        lost(errno);
}

void closeOutput()
{
    flushOutput();
    errno = 0;
    if (std::fclose(stdout) != 0)
        lost(errno);
}

std::string messageText(std::string_view message)
{
    while (message.ends_with('\n'))
        message.remove_suffix(1);
    // Cut before it is escaped as well: escapes make a text up to four times as long.
    return shortened(shown(shortened(message, 4 * longestMessage)), longestMessage);
}

void complain(std::string_view message)
{
    explain("ormalux: " + messageText(message));
}

void explain(std::string_view message)
{
    const std::string line = messageText(message) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
}

} // namespace ormalux::cli
