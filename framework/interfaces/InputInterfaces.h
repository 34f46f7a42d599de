#pragma once

#include "framework/interfaces/Unknown.h"

// Input that the host forwards. Positions are canvas pixels; `rect` is the control's rectangle, the
// same as for Render, borrowed for the call.

/// Bits of a pointer event's state.
constexpr int32_t POINTERSTATE_PRIMARY = 0x01;
constexpr int32_t POINTERSTATE_SECONDARY = 0x02;
constexpr int32_t POINTERSTATE_FAST = 0x0C; ///< either bit accelerates a wheel event
constexpr int32_t POINTERSTATE_WHEEL = 0x20;

/// Actions of a pointer event.
constexpr int32_t POINTERACTION_MOVE = 0;
constexpr int32_t POINTERACTION_RELEASE = 2;
constexpr int32_t POINTERACTION_PRESS = 3;
constexpr int32_t POINTERACTION_IGNORED = -999; ///< accepted and ignored

/// Implemented by controls and by the scroll bar, which is offered events first.
struct IUIMouseInput : IUnknown {
    /// `keys` holds modifier bits, or for wheel events the signed distance, 100 per step. The
    /// scroll bar answers negative for "not handled", 0 for "changed", positive for "handled".
    virtual int32_t Pointer(int32_t state, int32_t action, int32_t keys, double x, double y,
        CANVASRect* rect, IUnknown* context) = 0;
};

struct IUITouchInput : IUnknown {
    /// One update of a pan: `phase` is 0.0 for the first, negative for none; `panY` is the distance
    /// in pixels since the gesture began, positive downwards. The unnamed values are not used.
    virtual int32_t Touch(double x, double y, CANVASRect* rect, double phase, double, double,
        double, double, double, double panY, double, double) = 0;
};
