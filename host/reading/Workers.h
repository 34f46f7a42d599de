#pragma once

#include "host/reading/BackgroundTask.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

/// A few threads that do one task after the other, in the order in which they come. A thread is
/// started when none is free, and stays.
class Workers {
public:
    /// At most so many threads.
    explicit Workers(size_t most) : m_Most(most) {}
    /// Waits for what is being done, which has been left by then, and does nothing more.
    ~Workers();
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    /// Throws std::bad_alloc, and std::system_error where not even one thread is to be had; the
    /// task is not done then.
    void Do(std::shared_ptr<BackgroundTask> task);

private:
    void Work();

    size_t m_Most;
    std::mutex m_Mutex; ///< for all that follows but the threads
    std::condition_variable m_HasMore;
    std::deque<std::shared_ptr<BackgroundTask>> m_Tasks;
    size_t m_Free = 0; ///< threads that wait
    bool m_IsEnding = false;
    std::vector<std::thread> m_Threads;
};
