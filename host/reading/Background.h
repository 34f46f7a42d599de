#pragma once

#include "host/reading/BackgroundTask.h"
#include "host/reading/QuietThread.h"

/// Reads on a thread of its own. The thread that made it uses it, and its end does not wait for
/// more than the next step of the reading.
template <class Result>
class Background {
public:
    /// Starts. Throws std::system_error.
    explicit Background(typename Task<Result>::Work work)
        : m_Task(std::move(work), m_News, &m_Call),
          m_Thread(StartQuietThread([this] { m_Task.Run(); })) {}
    ~Background() {
        m_Task.Leave();
        m_Thread.join();
    }
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    /// Readable when there is something new to tell, until it is asked for.
    int News() const { return m_News.Get(); }
    /// How far it is, for users; "" once it is over.
    std::string TakeNews() {
        m_News.Clear();
        return m_Task.HowFar();
    }
    /// Waits for the end; whether it has come.
    bool WaitFor(std::chrono::nanoseconds patience) { return m_Task.WaitFor(patience); }
    /// Makes an end of what is being done, as a task does.
    void Stop() { m_Task.Stop(); }
    bool WasStopped() const { return m_Task.WasStopped(); }
    /// What was read, once, after the end. Throws what reading has thrown.
    Result Take() { return m_Task.Take(); }

private:
    Signal m_News;
    Signal m_Call;
    Task<Result> m_Task;
    std::thread m_Thread;
};
