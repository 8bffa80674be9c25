#pragma once

#include <csignal>
#include <ctime>

#include <pthread.h>

namespace ormalux {

/// While one lives, what this thread writes to a pipe without reader or beyond the limit of file sizes fails
/// there and does not end the host's process by a signal.
class QuietSignals
{
public:
    QuietSignals()
    {
        sigemptyset(&m_own);
        sigset_t pending;
        sigpending(&pending);
        for (const int signal : {SIGPIPE, SIGXFSZ})
            if (!sigismember(&pending, signal)) // one that waits already is not ours to take
                sigaddset(&m_own, signal);
        pthread_sigmask(SIG_BLOCK, &m_own, &m_before);
    }
    QuietSignals(const QuietSignals&) = delete;
    QuietSignals& operator=(const QuietSignals&) = delete;
    ~QuietSignals()
    {
        const timespec now{};
        while (sigtimedwait(&m_own, nullptr, &now) > 0) {
        }
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }

private:
    sigset_t m_own{};
    sigset_t m_before{};
};

} // namespace ormalux
