#include "cli/Progress.h"

#include "platform/SafeText.h"

#include <cstdio>

#if defined(_WIN32)
#include <io.h>
#define isatty _isatty
#define STDERR_FILENO 2
#else
#include <unistd.h>
#endif

namespace ormalux::cli {

Progress::Progress(std::size_t total) : m_total(total), m_shown(total > 1 && isatty(STDERR_FILENO)) {}

Progress::~Progress()
{
    clear();
}

void Progress::advance(const std::string& next)
{
    ++m_done;
    if (!m_shown)
        return;
    const int width = 30;
    const int filled = int(m_done * width / m_total);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    const double left = seconds / double(m_done) * double(m_total - m_done);
    std::fprintf(stderr, "\r\033[K[%.*s%*s] %zu/%zu, %.0f s left  %s", filled,
                 "##############################", width - filled, "", m_done, m_total, left,
                 shortened(shown(next), 40).c_str());
    std::fflush(stderr);
    m_visible = true;
}

void Progress::clear()
{
    if (m_visible)
        std::fputs("\r\033[K", stderr);
    m_visible = false;
}

} // namespace ormalux::cli
