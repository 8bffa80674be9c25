#pragma once

#include <string>
#include <vector>

namespace ormalux::cli {

/// Throws InputError, which names both, when two outputs of one call would be the same file, or an output
/// would take the place of something that the call reads. Every pattern that is not empty gives one output a
/// picture; "{}" stands for the picture's name. Links and spellings of a path are seen through; devices and
/// pipes, which nothing replaces, may be named twice.
void checkOutputNames(const std::vector<std::string>& pictures, const std::vector<std::string>& patterns,
                      const std::vector<std::string>& otherInputs = {});

} // namespace ormalux::cli
