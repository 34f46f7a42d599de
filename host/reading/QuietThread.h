#pragma once

#include <csignal>
#include <thread>
#include <utility>

/// Keeps all signals from this thread, and from those that it starts, while the object lives.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_Before);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &m_Before, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t m_Before{};
};

/// Starts a thread that hears no signals: they have to end the main thread's waiting. Throws
/// std::system_error where no thread is to be had.
template <class Function>
std::thread StartQuietThread(Function function) {
    const SignalsBlocked blocked;
    return std::thread(std::move(function));
}
