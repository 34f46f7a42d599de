#pragma once

#include "app/session/Session.h"
#include "app/window/Waker.h"
#include "host/folders/FolderScans.h"
#include "host/folders/FolderWatch.h"

#include <cstdint>
#include <optional>
#include <string>

/// Brings the folders that a window shows up to what is on disk, as their watch hears of changes
/// and as what was looked into beside the window's thread is there.
class FolderUpdates {
public:
    /// All of them outlive it. SDL is started. Throws std::system_error.
    FolderUpdates(FolderWatch& watch, FolderScans& scans, Session& session);

    void Hear(const SDL_Event& event);
    /// Reads what has changed, once for each picture, however many changes there were.
    void Update();
    /// Milliseconds until Update has something to do by itself; none while nothing has changed.
    std::optional<int64_t> UntilNext() const;

    /// What is looked into and how far that is, for users; "" while nothing is.
    const std::string& Scanned() const { return m_Scanned; }
    /// Shows what was found until now instead of all.
    void Stop();
    /// Whether the user has stopped what was begun last.
    bool WasStopped() const { return m_WasStopped; }
    /// The user lets the folders be read again.
    void ForgetStop() { m_WasStopped = false; }

private:
    void ReadChanged();

    FolderWatch& m_Watch;
    FolderScans& m_Scans;
    Session& m_Session;
    Waker m_WatchWaker;
    Waker m_ScansWaker;
    bool m_AreChanged = false; ///< or what was looked into is there
    bool m_HasScanNews = false;
    uint64_t m_RestUntil = 0; ///< milliseconds of SDL's clock
    std::string m_Scanned;
    bool m_WasStopped = false;
};
