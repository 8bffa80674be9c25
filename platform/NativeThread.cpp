#include "platform/NativeThread.h"

#include <atomic>
#include <new>
#include <thread>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace ormalux {

struct NativeThread::State
{
    Body body = nullptr;
    void* context = nullptr;
    std::atomic<bool> left{false};
#if defined(_WIN32)
    HANDLE handle = nullptr;
#else
    std::thread thread;
#endif
};

NativeThread::NativeThread() = default;
NativeThread::~NativeThread() = default;

#if defined(_WIN32)

bool NativeThread::start(Body body, void* context)
{
    m_state.reset(new (std::nothrow) State);
    if (!m_state)
        return false;
    m_state->body = body;
    m_state->context = context;
    const auto routine = [](void* argument) -> DWORD {
        auto* state = static_cast<State*>(argument);
        state->body(state->context);
        state->left.store(true, std::memory_order_release);
        return 1;
    };
    m_state->handle = CreateThread(nullptr, 0, routine, m_state.get(), 0, nullptr);
    if (m_state->handle)
        return true;
    m_state.reset();
    return false;
}

void NativeThread::end(std::chrono::steady_clock::time_point deadline)
{
    if (!m_state)
        return;
    // A thread cannot finish while its module is being unloaded; having left its body is as far as it comes,
    // and there it needs nothing of the module any more. Only one that is still busy is stopped: stopping a
    // thread on its way out could leave the system's loader locked for ever.
    while (WaitForSingleObject(m_state->handle, 1) == WAIT_TIMEOUT &&
           std::chrono::steady_clock::now() < deadline) {
    }
    if (!m_state->left.load(std::memory_order_acquire))
        TerminateThread(m_state->handle, 1);
    CloseHandle(m_state->handle);
    m_state.reset();
}

bool NativeThread::wasKilled() const
{
    return m_state && WaitForSingleObject(m_state->handle, 0) == WAIT_OBJECT_0 &&
           !m_state->left.load(std::memory_order_acquire);
}

#else

bool NativeThread::wasKilled() const
{
    return false;
}

bool NativeThread::start(Body body, void* context)
{
    m_state.reset(new (std::nothrow) State);
    if (!m_state)
        return false;
    m_state->body = body;
    m_state->context = context;
    try {
        m_state->thread = std::thread([state = m_state.get()] { state->body(state->context); });
        return true;
    } catch (...) { // no thread to give, or no memory to start it with
        m_state.reset();
        return false;
    }
}

void NativeThread::end(std::chrono::steady_clock::time_point)
{
    if (!m_state)
        return;
    m_state->thread.join();
    m_state.reset();
}

#endif

} // namespace ormalux
