#include "app/window/WindowInput.h"

#include <SDL.h>

namespace {

int32_t HeldKeys() {
    const SDL_Keymod held = SDL_GetModState();
    return ((held & KMOD_SHIFT) != 0 ? KEYS_SHIFT : 0) |
           ((held & KMOD_CTRL) != 0 ? KEYS_CONTROL : 0);
}

/// A press and a release carry their own button only: to the control a secondary press is one with
/// no other button.
std::vector<Input> TranslateButton(const SDL_MouseButtonEvent& event, double perStep) {
    const int32_t state = event.button == SDL_BUTTON_LEFT    ? POINTERSTATE_PRIMARY
                          : event.button == SDL_BUTTON_RIGHT ? POINTERSTATE_SECONDARY
                                                             : 0;
    if (state == 0) {
        return {};
    }
    const int32_t action =
        event.type == SDL_MOUSEBUTTONDOWN ? POINTERACTION_PRESS : POINTERACTION_RELEASE;
    return {PointerInput{state, action, HeldKeys(), event.x * perStep, event.y * perStep}};
}

std::vector<Input> TranslateMotion(const SDL_MouseMotionEvent& event, double perStep) {
    const int32_t state = ((event.state & SDL_BUTTON_LMASK) != 0 ? POINTERSTATE_PRIMARY : 0) |
                          ((event.state & SDL_BUTTON_RMASK) != 0 ? POINTERSTATE_SECONDARY : 0);
    return {
        PointerInput{state, POINTERACTION_MOVE, HeldKeys(), event.x * perStep, event.y * perStep}};
}

template <class Meaning>
struct KeyMeaning {
    SDL_Keycode m_Code;
    Meaning m_Meaning;
};

constexpr KeyMeaning<Key> kTreeKeys[] = {{SDLK_UP, Key::kUp}, {SDLK_DOWN, Key::kDown},
    {SDLK_PAGEUP, Key::kPageUp}, {SDLK_PAGEDOWN, Key::kPageDown}, {SDLK_HOME, Key::kHome},
    {SDLK_END, Key::kEnd}, {SDLK_RIGHT, Key::kRight}, {SDLK_LEFT, Key::kLeft},
    {SDLK_RETURN, Key::kEnter}, {SDLK_KP_ENTER, Key::kEnter}, {SDLK_BACKSPACE, Key::kBackspace},
    {SDLK_F5, Key::kF5}};
constexpr KeyMeaning<PanelKey> kPanelKeys[] = {{SDLK_UP, PanelKey::kUp},
    {SDLK_DOWN, PanelKey::kDown}, {SDLK_HOME, PanelKey::kHome}, {SDLK_END, PanelKey::kEnd},
    {SDLK_BACKSPACE, PanelKey::kBackspace}, {SDLK_RETURN, PanelKey::kEnter},
    {SDLK_KP_ENTER, PanelKey::kEnter}, {SDLK_F2, PanelKey::kKeep},
    {SDLK_ESCAPE, PanelKey::kCancel}};

template <class Meaning, size_t N>
std::optional<Meaning> MeaningOf(SDL_Keycode code, const KeyMeaning<Meaning> (&keys)[N]) {
    for (const auto& each : keys) {
        if (each.m_Code == code) {
            return each.m_Meaning;
        }
    }
    return {};
}

std::vector<Input> TranslateKey(const SDL_Keysym& pressed) {
    const bool isCopy = pressed.sym == SDLK_c && (pressed.mod & KMOD_CTRL) != 0;
    const auto key = isCopy ? Key::kCopy : MeaningOf(pressed.sym, kTreeKeys);
    return key ? std::vector<Input>{KeyInput{*key}} : std::vector<Input>();
}

} // namespace

std::optional<PanelKey> PanelKeyOf(int32_t code) {
    return MeaningOf(code, kPanelKeys);
}

std::vector<Input> WindowInput::TakeDue() {
    return m_Finger.TakeDue(SDL_GetTicks());
}

std::optional<int64_t> WindowInput::UntilNext() const {
    return m_Finger.UntilNext(SDL_GetTicks());
}

std::vector<Input> WindowInput::Translate(const SDL_Event& event, Size size, double perStep) {
    if (event.type == SDL_MOUSEBUTTONDOWN || event.type == SDL_MOUSEWHEEL ||
        event.type == SDL_KEYDOWN) {
        m_Finger.StopFling();
    }
    switch (event.type) {
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        return TranslateButton(event.button, perStep);
    case SDL_MOUSEMOTION:
        return TranslateMotion(event.motion, perStep);
    case SDL_MOUSEWHEEL:
        return TranslateWheel(event, perStep);
    case SDL_FINGERDOWN:
    case SDL_FINGERMOTION:
    case SDL_FINGERUP:
        return TranslateFinger(event, size);
    case SDL_KEYDOWN:
        return TranslateKey(event.key.keysym);
    case SDL_TEXTINPUT:
        return {TypedInput{event.text.text}};
    default:
        return {};
    }
}

/// The system counts away from the user as positive.
std::vector<Input> WindowInput::TranslateWheel(const SDL_Event& event, double perStep) {
    const Wheel::Turn turn = m_Wheel.Add(-double(event.wheel.preciseY), event.wheel.timestamp);
    if (turn.m_Distance == 0) {
        return {};
    }
    const int32_t state = POINTERSTATE_WHEEL | (turn.m_IsFast ? POINTERSTATE_FAST : 0);
    return {PointerInput{state, POINTERACTION_MOVE, turn.m_Distance, event.wheel.mouseX * perStep,
        event.wheel.mouseY * perStep}};
}

std::vector<Input> WindowInput::TranslateFinger(const SDL_Event& event, Size size) {
    const SDL_TouchFingerEvent& finger = event.tfinger;
    const double x = double(finger.x) * size.m_Width;
    const double y = double(finger.y) * size.m_Height;
    switch (event.type) {
    case SDL_FINGERDOWN:
        m_Finger.GoDown(finger.fingerId, x, y, finger.timestamp);
        return {};
    case SDL_FINGERMOTION:
        return m_Finger.Move(finger.fingerId, x, y, finger.timestamp);
    default:
        return m_Finger.GoUp(finger.fingerId, finger.timestamp);
    }
}
