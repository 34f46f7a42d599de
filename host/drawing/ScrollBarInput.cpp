#include "host/drawing/ScrollBar.h"

#include <algorithm>
#include <cmath>

// The bar under the pointer.

namespace {

/// The control's bottom edge is inside it, so the strip's is too: no row lies under the bar.
bool IsOver(const CANVASRect& rect, double x, double y) {
    return x >= rect.left && x < double(rect.left) + rect.width && y >= rect.top &&
           y <= double(rect.top) + rect.height;
}

} // namespace

int32_t ScrollBar::Pointer(int32_t state, int32_t action, int32_t /*keys*/, double x, double y,
    CANVASRect* rect, IUnknown* /*context*/) {
    const bool isShown = rect && rect->width > 0 && rect->height > 0;
    const bool isPrimary = (state & POINTERSTATE_PRIMARY) != 0;
    if (!isShown || (action == POINTERACTION_MOVE && !isPrimary)) {
        m_Hold = Hold::kNone; // the release may have been somewhere else
    }
    if (!isShown || !isPrimary || (state & POINTERSTATE_WHEEL) != 0) {
        return E_FAIL;
    }
    const bool isOver = IsOver(*rect, x, y);
    const Hold held = m_Hold;
    switch (action) {
    case POINTERACTION_PRESS:
        m_Hold = Hold::kNone;
        return isOver ? Press(y, *rect) : E_FAIL;
    case POINTERACTION_RELEASE:
        m_Hold = Hold::kNone;
        break;
    case POINTERACTION_MOVE:
        if (held == Hold::kThumb) {
            return Drag(y, *rect);
        }
        break;
    default:
        return E_FAIL;
    }
    return isOver || held != Hold::kNone ? S_FALSE : E_FAIL;
}

int32_t ScrollBar::Press(double y, const CANVASRect& track) {
    const CANVASRect thumb = ThumbRect(track);
    const bool isAbove = y < thumb.top;
    if (!isAbove && y < double(thumb.top) + thumb.height) {
        m_Hold = Hold::kThumb;
        m_GrabY = y;
        m_GrabPos = m_Pos;
        return S_FALSE;
    }
    m_Hold = Hold::kTrack;
    const auto page = static_cast<double>(std::max<int64_t>(RowsIn(track.height), 1));
    return MoveTo(isAbove ? m_Pos - page : m_Pos + page);
}

/// The thumb keeps its distance from the pointer.
int32_t ScrollBar::Drag(double y, const CANVASRect& track) {
    const int32_t travel = track.height - ThumbRect(track).height;
    if (travel <= 0) {
        return S_FALSE;
    }
    const auto steps = static_cast<double>(RowCount() - 1);
    return MoveTo(m_GrabPos + std::round((y - m_GrabY) * steps / travel));
}

int32_t ScrollBar::MoveTo(double pos) {
    const int32_t previous = m_Pos;
    if (!std::isnan(pos)) {
        SetPos(static_cast<int32_t>(std::clamp(pos, double(m_Min), double(m_Max))));
    }
    return m_Pos == previous ? S_FALSE : S_OK;
}
