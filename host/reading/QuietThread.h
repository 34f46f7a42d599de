#pragma once

#include <csignal>
#include <thread>
#include <utility>

/// Starts a thread that hears no signals: they have to end the main thread's waiting.
template <class Function>
std::thread StartQuietThread(Function function) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread thread(std::move(function));
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
}
