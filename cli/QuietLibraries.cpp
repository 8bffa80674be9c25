#include "cli/QuietLibraries.h"

#include <cstdio>

#include <fcntl.h>

#if defined(_WIN32)
#include <io.h>
#define close _close
#define dup _dup
#define dup2 _dup2
#define open _open
#else
#include <unistd.h>
#endif

namespace ormalux::cli {

namespace {

constexpr int standardError = 2;
#if defined(_WIN32)
constexpr const char* nowhere = "NUL";
#else
constexpr const char* nowhere = "/dev/null";
#endif

} // namespace

QuietLibraries::QuietLibraries()
{
    std::fflush(stderr);
    const int sink = open(nowhere, O_WRONLY);
    if (sink < 0)
        return;
    m_kept = dup(standardError);
    if (m_kept >= 0)
        dup2(sink, standardError);
    close(sink);
}

QuietLibraries::~QuietLibraries()
{
    if (m_kept < 0)
        return;
    std::fflush(stderr);
    dup2(m_kept, standardError);
    close(m_kept);
}

} // namespace ormalux::cli
