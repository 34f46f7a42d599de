#pragma once

#include "app/session/Session.h"
#include "app/settings/Panel.h"

#include <optional>

union SDL_Event;

/// The settings beside a window's tree, and what the user does there. While it is closed, nothing
/// is for it.
class SidePanel {
public:
    /// `session` outlives it: what is set is recorded there.
    explicit SidePanel(Session& session) : m_Session(session) {}

    /// Throws what Panel throws.
    void Open();
    bool IsOpen() const { return m_Panel.has_value(); }
    /// Null while it is closed.
    Panel* Shown() { return m_Panel ? &*m_Panel : nullptr; }
    /// What is left for the tree of a window's width, in pixels.
    int32_t WidthBeside(int32_t windowWidth) const;

    // Each answers whether the event is for the panel, in a window of that size.

    bool HandleKey(const SDL_Event& event);
    bool HandleFinger(const SDL_Event& event, Size window);
    bool HandlePointer(const Input& input, Size window);

    /// Whether something was set since the last time it was asked for.
    bool TakeSet() { return std::exchange(m_IsSet, false); }

private:
    bool IsOnPanel(double x, Size window) const;

    Session& m_Session;
    std::optional<Panel> m_Panel;
    bool m_IsPressed = false; ///< the button that is held went down on the panel
    bool m_IsSet = false;
};
