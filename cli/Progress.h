#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace ormalux::cli {

/// A bar on standard error while many pictures are worked on; silent unless that is a terminal.
class Progress
{
public:
    explicit Progress(std::size_t total);
    ~Progress();
    /// One more picture is done; the next is named.
    void advance(const std::string& next);
    /// Takes the bar off the line, so that other output is not written into it.
    void clear();

private:
    std::size_t m_total;
    std::size_t m_done = 0;
    bool m_shown = false;
    bool m_visible = false;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

} // namespace ormalux::cli
