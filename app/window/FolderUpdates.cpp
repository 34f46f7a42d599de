#include "app/window/FolderUpdates.h"

#include <SDL.h>
#include <algorithm>
#include <utility>

FolderUpdates::FolderUpdates(FolderWatch& watch, FolderScans& scans, Session& session)
    : m_Watch(watch), m_Scans(scans), m_Session(session), m_WatchWaker(watch.News()),
      m_ScansWaker(scans.News()) {}

void FolderUpdates::Hear(const SDL_Event& event) {
    m_AreChanged |= m_WatchWaker.IsFrom(event);
    m_HasScanNews |= m_ScansWaker.IsFrom(event);
}

void FolderUpdates::Update() {
    m_Scans.RenewPatience();
    if (std::exchange(m_HasScanNews, false)) {
        const bool isBegun = m_Scanned.empty();
        m_Scanned = m_Scans.TakeNews();
        m_WasStopped &= !isBegun || m_Scanned.empty();
        m_AreChanged |= m_Scans.HasAnswers();
        m_ScansWaker.Arm();
    }
    if (UntilNext() == 0) {
        ReadChanged();
    }
}

/// However quickly they change, a fifth of the time goes into it at most.
void FolderUpdates::ReadChanged() {
    constexpr uint64_t kRest = 4;
    const uint64_t begin = SDL_GetTicks64();
    m_AreChanged = false;
    m_Watch.Take();
    m_Session.ReadChangedFolders();
    m_WatchWaker.Arm();
    const uint64_t end = SDL_GetTicks64();
    m_RestUntil = end + kRest * (end - begin);
}

std::optional<int64_t> FolderUpdates::UntilNext() const {
    if (!m_AreChanged) {
        return {};
    }
    const uint64_t now = SDL_GetTicks64();
    return static_cast<int64_t>(std::max(m_RestUntil, now) - now);
}

void FolderUpdates::Stop() {
    m_Scans.Stop();
    m_WasStopped = true;
}
