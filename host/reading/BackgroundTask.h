#pragma once

#include "host/reading/ReadProgress.h"
#include "host/reading/Signal.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <string>
#include <utility>

/// Reading that one thread does and another one waits for. It uses no object that others know.
class BackgroundTask {
public:
    virtual ~BackgroundTask() = default;
    BackgroundTask(const BackgroundTask&) = delete;
    BackgroundTask& operator=(const BackgroundTask&) = delete;

    /// For the thread that reads: does it, unless it was left before.
    void Run();

    // For the thread that waits.

    /// How far it is, for users; "" once it is over.
    std::string HowFar() const;
    bool IsOver() const;
    /// Waits for the end; whether it has come.
    bool WaitFor(std::chrono::nanoseconds patience);
    /// Ends what the reading does at this time. While it gets the bytes of a text, it goes through
    /// those that it has got by then; while it goes through them, it ends. What was read until then
    /// is the result.
    void Stop();
    bool WasStopped() const;
    /// Nobody wants the result any more: the reading ends with its next step.
    void Leave();

protected:
    /// Sets `news` when there is something new to tell, and `call`, unless that is null, when a
    /// reading that waits for more is to ask. Both outlive it. `begin` is told until it reads.
    BackgroundTask(Signal& news, Signal* call, const ReadState& begin);

    /// Reads, on the thread that does so.
    virtual void Read(ReadProgress& progress) = 0;
    /// After the end: throws what reading has thrown, once.
    void Check();

private:
    class Progress;

    bool Advance(const ReadState& state);
    bool IsLeft() const;
    void Call();

    Signal& m_News;
    Signal* m_Call;
    mutable std::mutex m_Mutex; ///< for all that follows
    std::condition_variable m_Ended;
    std::string m_Text; ///< how far it is
    bool m_IsStopWanted = false;
    bool m_IsStopped = false;
    bool m_IsLeft = false;
    bool m_IsOver = false;
    std::exception_ptr m_Failure;
};

/// Reading with a result.
template <class Result>
class Task final : public BackgroundTask {
public:
    using Work = std::function<Result(ReadProgress& progress)>;

    Task(Work work, Signal& news, Signal* call, const ReadState& begin = {})
        : BackgroundTask(news, call, begin), m_Work(std::move(work)) {}

    /// What was read, once, after the end. Throws what reading has thrown.
    Result Take() {
        Check();
        return std::exchange(m_Result, Result());
    }

private:
    void Read(ReadProgress& progress) override { m_Result = m_Work(progress); }

    Work m_Work;
    Result m_Result{};
};
