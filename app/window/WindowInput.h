#pragma once

#include "app/input/Finger.h"
#include "app/input/Wheel.h"
#include "app/settings/Panel.h"
#include "app/view/Picture.h"

union SDL_Event;

/// What a key, by its code, means to the panel.
std::optional<PanelKey> PanelKeyOf(int32_t code);

/// Makes input for the control of the window system's events.
class WindowInput {
public:
    /// `size` is the window's, `perStep` how many of the control's pixels a step of the pointer is.
    /// Empty for events that are no input.
    std::vector<Input> Translate(const SDL_Event& event, Size size, double perStep);
    /// What is due by time alone, where a finger is or was on the screen.
    std::vector<Input> TakeDue();
    /// In how many milliseconds that is wanted; none while it is not.
    std::optional<int64_t> UntilNext() const;

private:
    std::vector<Input> TranslateWheel(const SDL_Event& event, double perStep);
    std::vector<Input> TranslateFinger(const SDL_Event& event, Size size);

    Wheel m_Wheel;
    Finger m_Finger;
};
