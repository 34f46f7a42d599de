#include "host/reading/Workers.h"

#include "host/reading/QuietThread.h"

#include <system_error>
#include <utility>

Workers::~Workers() {
    {
        const std::lock_guard lock(m_Mutex);
        m_IsEnding = true;
    }
    m_HasMore.notify_all();
    for (std::thread& each : m_Threads) {
        each.join();
    }
}

void Workers::Do(std::shared_ptr<BackgroundTask> task) {
    const std::lock_guard lock(m_Mutex);
    m_Tasks.push_back(std::move(task));
    m_HasMore.notify_one();
    if (m_Tasks.size() <= m_Free || m_Threads.size() == m_Most) {
        return;
    }
    try {
        m_Threads.reserve(m_Most);
        m_Threads.push_back(StartQuietThread([this] { Work(); }));
    } catch (...) {
        if (m_Threads.empty()) { // else those that there are come to it
            m_Tasks.pop_back();
            throw;
        }
    }
}

/// On each of the threads.
void Workers::Work() {
    std::unique_lock lock(m_Mutex);
    while (true) {
        ++m_Free;
        m_HasMore.wait(lock, [this] { return m_IsEnding || !m_Tasks.empty(); });
        --m_Free;
        if (m_IsEnding) {
            return;
        }
        auto task = std::move(m_Tasks.front());
        m_Tasks.pop_front();
        lock.unlock();
        task->Run();
        task.reset();
        lock.lock();
    }
}
