#pragma once

#include "host/reading/ReadProgress.h"
#include "host/reading/Signal.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

/// Reads on a thread of its own, which uses no object that others know. Its end, the destructor,
/// does not wait for more than the next step of the reading. Nothing in it is virtual: the thread
/// runs before all of the object is made.
class BackgroundWork {
public:
    BackgroundWork(const BackgroundWork&) = delete;
    BackgroundWork& operator=(const BackgroundWork&) = delete;

    // For the thread that started it.

    /// Readable when there is something new to tell, until it is asked for.
    int News() const { return m_News.Get(); }
    /// How far it is, for users; "" once it is over.
    std::string TakeNews();
    /// Waits for the end; whether it has come.
    bool WaitFor(std::chrono::milliseconds patience);
    /// Makes an end of what is being done: of reading bytes first, and, where they are gone through
    /// by then, of that. What was read until then is the result.
    void Stop();
    bool WasStopped() const;

protected:
    using Work = std::function<void(ReadProgress& progress)>;

    /// Starts. Throws std::system_error.
    explicit BackgroundWork(Work work);
    ~BackgroundWork();

    /// After the end: throws what the work has thrown, once.
    void Check();

private:
    class Progress;

    void Run(const Work& work);
    bool Advance(const ReadState& state);

    Signal m_News;              ///< readable for the one thread
    Signal m_Call;              ///< and for the other, when it is to ask
    mutable std::mutex m_Mutex; ///< for all that follows
    std::condition_variable m_Ended;
    std::string m_Text; ///< how far it is
    bool m_IsStopWanted = false;
    bool m_IsStopped = false;
    bool m_IsLeft = false; ///< nobody wants the result any more
    bool m_IsOver = false;
    std::exception_ptr m_Failure;
    std::thread m_Thread;
};

/// Where the thread puts its result: it is there before the thread is, and after it.
template <class Result>
struct BackgroundResult {
    Result m_Result{};
};

template <class Result>
class Background final : private BackgroundResult<Result>, public BackgroundWork {
public:
    /// Starts. Throws std::system_error.
    explicit Background(std::function<Result(ReadProgress& progress)> work)
        : BackgroundWork([this, work = std::move(work)](
                             ReadProgress& progress) { this->m_Result = work(progress); }) {}

    /// What was read, once, after the end. Throws what the work has thrown.
    Result Take() {
        Check();
        return std::exchange(this->m_Result, Result());
    }
};
