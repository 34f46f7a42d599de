#include "app/window/SidePanel.h"

#include "app/window/WindowInput.h"

#include <SDL.h>

void SidePanel::Open() {
    m_Panel.emplace(m_Session.Tree(), [this](const std::string& text, int32_t status) {
        m_Session.Note(text, StatusText(status));
        m_IsSet = true;
    });
}

int32_t SidePanel::WidthBeside(int32_t windowWidth) const {
    return windowWidth - (m_Panel ? Panel::WidthIn(windowWidth) : 0);
}

bool SidePanel::IsOnPanel(double x, Size window) const {
    return m_Panel && x >= WidthBeside(window.m_Width);
}

bool SidePanel::HandleKey(const SDL_Event& event) {
    if (!m_Panel || (event.type != SDL_TEXTINPUT && event.type != SDL_KEYDOWN)) {
        return false;
    }
    if (event.type == SDL_TEXTINPUT) {
        m_Panel->Type(event.text.text);
    } else if (const auto key = PanelKeyOf(event.key.keysym.sym)) {
        m_Panel->Press(*key);
    }
    if (m_Panel->IsClosed()) {
        m_Panel.reset();
    }
    return true;
}

/// A finger that goes down on the panel is a click there, and no pan of the tree.
bool SidePanel::HandleFinger(const SDL_Event& event, Size window) {
    if (event.type != SDL_FINGERDOWN ||
        !IsOnPanel(double(event.tfinger.x) * window.m_Width, window)) {
        return false;
    }
    m_Panel->Click(double(event.tfinger.y) * window.m_Height);
    return true;
}

/// While a button is held, the pointer belongs to where it went down.
bool SidePanel::HandlePointer(const Input& input, Size window) {
    const auto* pointer = std::get_if<PointerInput>(&input);
    if (!pointer) {
        return false;
    }
    const bool isOnPanel = IsOnPanel(pointer->m_X, window);
    if (pointer->m_Action == POINTERACTION_PRESS) {
        m_IsPressed = isOnPanel;
        if (isOnPanel) {
            m_Panel->Click(pointer->m_Y);
        }
    }
    const bool isHeld = (pointer->m_State & (POINTERSTATE_PRIMARY | POINTERSTATE_SECONDARY)) != 0;
    return isHeld ? m_IsPressed : isOnPanel;
}
