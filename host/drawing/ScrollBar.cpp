#include "host/drawing/ScrollBar.h"

#include "host/drawing/Cairo.h"

#include <algorithm>

namespace {

constexpr int64_t kMinThumbHeight = 32; // pixels, for a finger
constexpr int32_t kThumbMargin = 4;     // pixels left and right of the thumb
constexpr double kThumbCorner = 4;      // the largest radius, pixels
// One gray over paper of any colour.
constexpr int32_t kColor = 0x808080;
constexpr double kTrackOpacity = 0.10;
constexpr double kThumbOpacity = 0.46;

/// An edge that would lie beyond all coordinates lies at the last one.
int32_t Moved(int32_t edge, int64_t distance) {
    return static_cast<int32_t>(std::min<int64_t>(edge + distance, INT32_MAX));
}

} // namespace

int32_t ScrollBar::GetPos(int32_t* pos) {
    if (!pos) {
        return E_POINTER;
    }
    *pos = m_Pos;
    return S_OK;
}

int32_t ScrollBar::SetPos(int32_t pos) {
    m_Pos = std::clamp(pos, m_Min, m_Max);
    return S_OK;
}

int32_t ScrollBar::SetRange(int32_t min, int32_t max) {
    m_Min = min;
    m_Max = std::max(min, max);
    return SetPos(m_Pos);
}

int32_t ScrollBar::Configure(int32_t what, int32_t value) {
    if (what != SCROLLBAR_WIDTH || value < 0) {
        return E_INVALIDARG;
    }
    m_Width = value;
    return S_OK;
}

int32_t ScrollBar::Layout(CANVASRect* area, CANVASRect* bar, CANVASRect* client) {
    if (!area || area->width < 0 || area->height < 0) {
        return E_FAIL;
    }
    const CANVASRect whole = *area; // an output may be the same rectangle
    const bool shown = RowCount() > RowsIn(whole.height);
    const int32_t width = shown ? std::min(m_Width, whole.width) : 0;
    const int32_t rest = whole.width - width;
    if (bar) {
        *bar = shown ? CANVASRect{Moved(whole.left, rest), whole.top, width, whole.height}
                     : CANVASRect{};
    }
    if (client) {
        *client = {whole.left, whole.top, rest, whole.height};
    }
    return shown ? S_OK : S_FALSE;
}

int32_t ScrollBar::Render(
    UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* /*context*/, int32_t /*param*/) {
    if (!CanDraw(canvas, rect)) {
        return S_OK;
    }
    const CairoState state(canvas->m_Context);
    cairo_new_path(canvas->m_Context);
    FillRect(canvas->m_Context, *rect, kColor, kTrackOpacity);
    const CANVASRect thumb = ThumbRect(*rect);
    TraceRounded(canvas->m_Context, thumb.left, thumb.top, 1.0 * thumb.left + thumb.width,
        1.0 * thumb.top + thumb.height,
        std::min(kThumbCorner, std::min(thumb.width, thumb.height) / 2.0));
    SetSourceColor(canvas->m_Context, kColor, kThumbOpacity);
    cairo_fill(canvas->m_Context);
    return S_OK;
}

CANVASRect ScrollBar::ThumbRect(const CANVASRect& track) const {
    const int64_t proportional = track.height * RowsIn(track.height) / RowCount();
    const int64_t smallest = std::min<int64_t>(kMinThumbHeight, track.height / 2);
    const int64_t height = std::clamp<int64_t>(proportional, smallest, track.height);
    const int64_t steps = std::max<int64_t>(RowCount() - 1, 1);
    const int64_t offset = (track.height - height) * (int64_t{m_Pos} - m_Min) / steps;
    const int32_t margin = track.width > 3 * kThumbMargin ? kThumbMargin : 0;
    return {Moved(track.left, margin), Moved(track.top, offset), track.width - 2 * margin,
        static_cast<int32_t>(height)};
}
