#pragma once

#include "app/input/Fling.h"
#include "app/input/Input.h"

#include <optional>
#include <vector>

/// Tells what a finger does: a pan, once it has moved by more than a few pixels, which goes on by
/// itself when it was quick; or else a tap, which is a click where the finger went down; or, when
/// it stays, a click with the secondary button. A finger that stops a pan is no tap. Only the first
/// of several fingers counts. Times are in milliseconds and only grow.
class Finger {
public:
    void GoDown(int64_t id, double x, double y, int64_t now);
    std::vector<Input> Move(int64_t id, double x, double y, int64_t now);
    std::vector<Input> GoUp(int64_t id, int64_t now);

    /// What is due without an event: a step of a pan that goes on, or a long press.
    std::vector<Input> TakeDue(int64_t now);
    /// In how long that is wanted; none while it is not.
    std::optional<int64_t> UntilNext(int64_t now) const;
    /// The user does something else, which ends a pan that goes on.
    void StopFling() { m_Fling.Stop(); }

private:
    enum class State {
        kDown,
        kPans,
        kStopped, ///< it has stopped a pan, and may begin another
        kPressed  ///< long
    };
    struct Contact {
        int64_t m_Id;
        double m_X; ///< where it began, in canvas pixels
        double m_Y;
        int64_t m_Since;
        State m_State;
    };

    Contact* Known(int64_t id);

    std::optional<Contact> m_Contact;
    Fling m_Fling;
};
