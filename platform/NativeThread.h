#pragma once

#include <chrono>
#include <memory>

namespace ormalux {

/// A thread that a module can end while it is being unloaded, when some systems let no thread run to its end.
class NativeThread
{
public:
    NativeThread();
    /// The thread must have been ended.
    ~NativeThread();
    NativeThread(const NativeThread&) = delete;
    NativeThread& operator=(const NativeThread&) = delete;

    using Body = void (*)(void* context);
    /// False when the system has no thread to give, or memory is short.
    bool start(Body body, void* context);
    /// Gives a thread that was told to quit until the deadline; then it is ended as the platform can: where a
    /// thread can be stopped from outside it is, elsewhere it is waited for.
    void end(std::chrono::steady_clock::time_point deadline);
    /// Whether the system ended the thread before it left its body, as Windows does with all others before
    /// the last thread of a process unloads the modules. What such threads were waiting for can no longer be
    /// used.
    bool wasKilled() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace ormalux
