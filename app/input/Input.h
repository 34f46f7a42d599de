#pragma once

#include "app/input/Words.h"
#include "framework/interfaces/InputInterfaces.h"

#include <variant>

// What a user does, before it reaches the control. A window makes it from the system's events, a
// script spells it out.

/// Modifier keys of a press, a move or a release. To the control a click with any of them is
/// additive, and a press leaves the selection alone.
constexpr int32_t KEYS_SHIFT = 4;
constexpr int32_t KEYS_CONTROL = 8;

constexpr double TOUCHPHASE_START = 0.0;
constexpr double TOUCHPHASE_UPDATE = 1.0;

/// An event of IUIMouseInput::Pointer.
struct PointerInput {
    int32_t m_State = 0;
    int32_t m_Action = POINTERACTION_MOVE;
    int32_t m_Keys = 0; ///< the distance of a wheel event
    double m_X = 0;     ///< canvas pixels
    double m_Y = 0;
};

/// An event of IUITouchInput::Touch.
struct TouchInput {
    double m_Phase = TOUCHPHASE_START;
    double m_PanY = 0; ///< pixels since the finger went down, positive downwards
};

enum class Key : int32_t {
    kUp,
    kDown,
    kPageUp,
    kPageDown,
    kHome,
    kEnd,
    kRight,
    kLeft,
    kEnter,
    kBackspace,
    kEscape,
    kPlus,
    kMinus,
    kAsterisk,
    kF5,
    kCopy
};

struct KeyInput {
    Key m_Key = Key::kUp;
};

/// Text that was typed, UTF-8.
struct TypedInput {
    std::string m_Text = {};
};

using Input = std::variant<PointerInput, TouchInput, KeyInput, TypedInput>;

constexpr Word kButtonWords[] = {
    {"none", 0}, {"primary", POINTERSTATE_PRIMARY}, {"secondary", POINTERSTATE_SECONDARY}};
constexpr Word kKeysWords[] = {{"none", 0}, {"shift", KEYS_SHIFT}, {"control", KEYS_CONTROL}};
constexpr Word kKeyWords[] = {{"up", int32_t(Key::kUp)}, {"down", int32_t(Key::kDown)},
    {"page-up", int32_t(Key::kPageUp)}, {"page-down", int32_t(Key::kPageDown)},
    {"home", int32_t(Key::kHome)}, {"end", int32_t(Key::kEnd)}, {"right", int32_t(Key::kRight)},
    {"left", int32_t(Key::kLeft)}, {"enter", int32_t(Key::kEnter)},
    {"backspace", int32_t(Key::kBackspace)}, {"escape", int32_t(Key::kEscape)},
    {"plus", int32_t(Key::kPlus)}, {"minus", int32_t(Key::kMinus)},
    {"asterisk", int32_t(Key::kAsterisk)}, {"f5", int32_t(Key::kF5)},
    {"copy", int32_t(Key::kCopy)}};

/// The input as a line of a script.
std::string ToText(const Input& input);
