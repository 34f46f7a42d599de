#pragma once

#include "app/input/Input.h"

#include <optional>
#include <vector>

/// Tells what a finger does: a pan, once it has moved by more than a few pixels, or else a tap,
/// which is a click where the finger went down. Only the first of several fingers counts.
class Finger {
public:
    void GoDown(int64_t id, double x, double y);
    std::vector<Input> Move(int64_t id, double x, double y);
    std::vector<Input> GoUp(int64_t id);

private:
    struct Contact {
        int64_t m_Id;
        double m_X; ///< where it began, in canvas pixels
        double m_Y;
        bool m_Pans = false;
    };

    std::optional<Contact> m_Contact;
};
