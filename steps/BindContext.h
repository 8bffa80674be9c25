#pragma once

#include "array/MatchArray.h"
#include "steps/Arguments.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class CKestImage;

namespace ormalux {

/// What a step asks for while it is made ready: files, and whom to tell what is wrong with them.
class BindContext
{
public:
    BindContext(std::string folder, ArgumentFault fault, int line)
        : m_folder(std::move(folder)), m_fault(std::move(fault)), m_line(line)
    {}

    /// The sources in the files named and, of folders, in all source files of the ending by name. What cannot
    /// be read is reported.
    CMatchSrcArray sources(const std::vector<std::string>& names, const char* ending);
    /// The files themselves.
    std::vector<std::string> sourceFiles(const std::vector<std::string>& names, const char* ending);
    /// A picture named in the recipe, as a gray picture; one that cannot be read is reported.
    std::shared_ptr<const CKestImage> picture(const char* field, const std::string& name);
    /// The path of a file named in the recipe.
    std::string path(const std::string& name) const;
    void fault(const std::string& field, const std::string& why) { m_fault(field, m_line, why); }

private:
    std::string m_folder; ///< where relative names are looked for; empty for the working folder
    ArgumentFault m_fault;
    int m_line;
};

/// The source in the file at a path in UTF-8. What a file holds is kept until it holds something else, so
/// that a recipe may be read as often as a host likes. Nothing when it cannot be read or is refused. Safe to
/// call from any thread.
std::optional<_stMatchSource> cachedSource(const std::string& path);

} // namespace ormalux
