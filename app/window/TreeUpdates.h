#pragma once

#include "app/session/Session.h"
#include "app/window/Waker.h"
#include "host/folders/FolderWatch.h"
#include "host/reading/BackgroundReads.h"

#include <cstdint>
#include <optional>
#include <string>

/// Brings the tree that a window shows up to date, as the watch of its folders hears of changes and
/// as what was read beside the window's thread is there.
class TreeUpdates {
public:
    /// All of them outlive it. SDL is started. Throws std::system_error.
    TreeUpdates(FolderWatch& watch, BackgroundReads& reads, Session& session);

    void Hear(const SDL_Event& event);
    /// The user does something: what that begins to read is waited for a little.
    void HearUser() { m_Reads.RenewPatience(); }
    /// Takes what has changed, for a turn, however many changes there were. Between two pictures.
    void Update();
    /// Milliseconds until Update has something to do by itself; none while nothing has changed.
    std::optional<int64_t> UntilNext() const;

    /// What is read and how far that is, for users; "" while nothing is.
    const std::string& Reading() const { return m_Reading; }
    /// Shows what was read until now instead of all.
    void Stop();
    /// Whether the user has stopped what was begun last.
    bool WasStopped() const { return m_WasStopped; }
    /// The user lets it be read again.
    void ForgetStop() { m_WasStopped = false; }

private:
    void ReadChanged();

    FolderWatch& m_Watch;
    BackgroundReads& m_Reads;
    Session& m_Session;
    Waker m_WatchWaker;
    Waker m_ReadsWaker;
    bool m_AreChanged = false; ///< or what was read is there
    bool m_HasReadNews = false;
    uint64_t m_Spent = 0;     ///< milliseconds, in the turns of one reading
    uint64_t m_RestUntil = 0; ///< milliseconds of SDL's clock
    std::string m_Reading;
    bool m_WasStopped = false;
};
