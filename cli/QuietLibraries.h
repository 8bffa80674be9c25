#pragma once

namespace ormalux::cli {

/// While it lives, what libraries print on standard error by themselves is dropped: decoders chatter about
/// every unknown field and damaged byte, without naming the file. For one thread, around one call.
class QuietLibraries
{
public:
    QuietLibraries();
    ~QuietLibraries();
    QuietLibraries(const QuietLibraries&) = delete;
    QuietLibraries& operator=(const QuietLibraries&) = delete;

private:
    int m_kept = -1;
};

} // namespace ormalux::cli
