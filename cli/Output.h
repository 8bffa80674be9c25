#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace ormalux::cli {

/// Standard output takes no more: its disk is full, its reader has gone, or it was closed. The program ends
/// at once with exit code 2, for what it would still find reaches nobody.
struct OutputLost : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// The only way to standard output. A line that cannot be written throws OutputLost.
void putLine(std::string_view line);
/// Text that ends with its own line break.
void putText(std::string_view text);
/// Hands on what was put so far; throws OutputLost when it does not arrive.
void flushOutput();
/// The same for the last time: also what the system only tells when a file is closed.
void closeOutput();

/// The only way to standard error: one line that begins with the program's name, safe for a terminal and at
/// most some hundred bytes long whatever the message holds.
void complain(std::string_view message);

/// The same without the program's name: a line that begins with the file that it is about.
void explain(std::string_view message);

/// A message as complain() prints it.
std::string messageText(std::string_view message);

} // namespace ormalux::cli
