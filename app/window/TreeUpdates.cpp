#include "app/window/TreeUpdates.h"

#include <SDL.h>
#include <algorithm>
#include <utility>

TreeUpdates::TreeUpdates(FolderWatch& watch, BackgroundReads& reads, Session& session)
    : m_Watch(watch), m_Reads(reads), m_Session(session), m_WatchWaker(watch.News()),
      m_ReadsWaker(reads.News()) {}

void TreeUpdates::Hear(const SDL_Event& event) {
    m_AreChanged |= m_WatchWaker.IsFrom(event);
    m_HasReadNews |= m_ReadsWaker.IsFrom(event);
}

void TreeUpdates::Update() {
    if (std::exchange(m_HasReadNews, false)) {
        const bool isBegun = m_Reading.empty();
        m_Reading = m_Reads.TakeNews();
        m_WasStopped &= !isBegun || m_Reading.empty();
        m_AreChanged |= m_Reads.HasAnswers();
        m_ReadsWaker.Arm();
    }
    if (UntilNext() == 0) {
        ReadChanged();
    }
}

/// However quickly they change, a fifth of the time goes into it at most, but for the turns of one
/// reading, which follow each other. What the user wants to be read again is no part of that.
void TreeUpdates::ReadChanged() {
    constexpr uint64_t kRest = 4;
    const uint64_t begin = SDL_GetTicks64();
    if (!m_Session.IsReadingAgain()) {
        m_AreChanged = false;
        m_Spent = 0;
        m_Watch.Take();
        m_Reads.RenewPatience();
    }
    const bool isCounted = !m_Session.IsReadingAll();
    m_Session.ReadChanged();
    m_WatchWaker.Arm();
    if (isCounted) {
        const uint64_t end = SDL_GetTicks64();
        m_Spent += end - begin;
        m_RestUntil = end + kRest * m_Spent;
    }
}

std::optional<int64_t> TreeUpdates::UntilNext() const {
    if (m_Session.IsReadingAgain()) {
        return 0;
    }
    if (!m_AreChanged) {
        return {};
    }
    const uint64_t now = SDL_GetTicks64();
    return static_cast<int64_t>(std::max(m_RestUntil, now) - now);
}

void TreeUpdates::Stop() {
    m_Session.StopReadingAll();
    m_Reads.Stop();
    m_WasStopped = true;
}
