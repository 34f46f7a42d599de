#pragma once

#include "app/window/Waker.h"
#include "host/sources/Source.h"

#include <optional>
#include <string>

/// How far the reading of a window's source is, while the window has nothing to show yet.
class ReadingNews {
public:
    /// `reading` outlives it, and is null where all is read already. SDL is started. Throws
    /// std::system_error.
    explicit ReadingNews(BackgroundReading* reading);

    /// Whether it goes on.
    bool IsOn() const { return m_Reading != nullptr; }
    /// Shows what was read until now instead of all.
    void Stop() { m_Reading->Stop(); }
    /// Whether the user has stopped it, once it is over.
    bool WasStopped() const { return m_WasStopped; }
    /// The user lets it be read again.
    void ForgetStop() { m_WasStopped = false; }

    void Hear(const SDL_Event& event);
    /// What was read, once, when it is over. Throws what reading has thrown.
    std::optional<SourceMaker> Take();
    /// How far it is, for users.
    const std::string& HowFar() const { return m_HowFar; }

private:
    BackgroundReading* m_Reading; ///< null once it is over
    std::optional<Waker> m_Waker;
    std::string m_HowFar;
    bool m_HasNews; ///< it is not known yet how far it is
    bool m_WasStopped = false;
};
