#pragma once

#include "cli/Command.h"
#include "cli/Report.h"

#include <functional>
#include <string>
#include <vector>

namespace ormalux::cli {

/// Exit codes.
enum Exit
{
    Done = 0,
    NothingFound = 1,
    BadInput = 2
};

/// The pictures of one call and how their findings are written.
struct Batch
{
    std::vector<std::string> files;
    std::string annotate; ///< pattern of the annotated picture's name; empty for none
    bool json = false;
    bool csv = false;

    /// Replaces folders by the pictures inside, by name; throws InputError for one without pictures.
    void expandFolders();

    /// Adds the pictures and the output options to a subcommand.
    void addTo(Command& command, bool withAnnotation);
    bool several() const { return files.size() > 1; }

    /// Works on every picture in turn, shows progress and writes the findings. A picture that cannot be used
    /// is told on standard error and does not stop the others. The exit code: BadInput when one failed,
    /// NothingFound when no picture gave a record (or a true fact), else Done. Throws InputError before the
    /// first picture when outputs (patterns beside `annotate`) or inputs would take each other's place.
    /// What `work` returns must stand until it is called again.
    int run(const std::function<const Findings&(const std::string& file)>& work,
            std::vector<std::string> outputs = {}, const std::vector<std::string>& otherInputs = {});
};

} // namespace ormalux::cli
