#pragma once

#include "host/reading/BackgroundTask.h"
#include "host/reading/Workers.h"

#include <map>
#include <memory>
#include <optional>

/// Reads parts of trees beside the window's thread, which alone uses it: a few at once, and the
/// others after them. Who wants one is told apart by an address. Its end does not wait for more
/// than the next step of each reading.
class BackgroundReads {
public:
    /// What one thing that the user does begins is waited for, for so long in all; with 0 the
    /// answers always come later. Throws std::system_error.
    explicit BackgroundReads(std::chrono::nanoseconds patience)
        : m_Patience(patience), m_PatienceLeft(patience) {}
    ~BackgroundReads();
    BackgroundReads(const BackgroundReads&) = delete;
    BackgroundReads& operator=(const BackgroundReads&) = delete;

    /// The user does something else: what that begins is waited for again.
    void RenewPatience() { m_PatienceLeft = m_Patience; }

    /// Begins to read for somebody for whom nothing is read. `name` is what is read and `begin` how
    /// far that is at first, for users. Answers what was read if that is over soon. Throws what
    /// reading has thrown, std::bad_alloc, and std::system_error where no thread is to be had.
    template <class Result>
    std::optional<Result> Begin(const void* who, std::string name, typename Task<Result>::Work work,
        const ReadState& begin = {}) {
        const auto task = std::make_shared<Task<Result>>(std::move(work), m_News, nullptr, begin);
        Start(who, {std::move(name), task});
        return WaitFor(*task) ? Take<Result>(who) : std::nullopt;
    }
    /// What was read for somebody, of the type that it was begun with, when it is over; that is
    /// forgotten then. Throws what reading has thrown.
    template <class Result>
    std::optional<Result> Take(const void* who) {
        if (!IsOver(who)) {
            return {};
        }
        const auto read = m_Reads.extract(who); // also where it throws
        return static_cast<Task<Result>&>(*read.mapped().m_Task).Take();
    }

    /// Whether something goes on for somebody, or was not taken yet.
    bool IsBegun(const void* who) const { return m_Reads.contains(who); }
    /// Whether there is something to take for somebody.
    bool IsOver(const void* who) const;
    void Forget(const void* who);
    /// Whether there is something to take for anybody.
    bool HasAnswers() const;

    /// Readable when there is something new to tell, until it is asked for.
    int News() const { return m_News.Get(); }
    /// What goes on and how far it is, for users; "" when nothing does.
    std::string TakeNews();
    /// Makes an end of all: what was read until then is the answer.
    void Stop();

private:
    struct Reading {
        std::string m_Name;
        std::shared_ptr<BackgroundTask> m_Task;
    };

    void Start(const void* who, Reading reading);
    bool WaitFor(BackgroundTask& task);

    std::chrono::nanoseconds m_Patience;
    std::chrono::nanoseconds m_PatienceLeft;
    Signal m_News;
    std::map<const void*, Reading> m_Reads;
    Workers m_Workers{4}; ///< so that few readings of a slow disk do not keep a quick one waiting
};
using BackgroundReadsPtr = std::shared_ptr<BackgroundReads>;
