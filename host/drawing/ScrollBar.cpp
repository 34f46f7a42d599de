#include "host/drawing/ScrollBar.h"

#include "host/drawing/Cairo.h"
#include "host/drawing/CanvasNotes.h"

#include <algorithm>

namespace {

constexpr int64_t kMinThumbHeight = 32; // pixels, for a finger
// One gray over paper of any colour.
constexpr int32_t kColor = 0x808080;
constexpr double kTrackOpacity = 0.10;

/// What is drawn of the bar, in pixels. The strip and what is hit of it stay the same.
struct Shape {
    int32_t m_Width;  ///< of the thumb
    int32_t m_Margin; ///< at its right
    double m_Opacity;
    bool m_HasTrack;
};

Shape ShapeOf(BarLook look) {
    switch (look) {
    case BarLook::kNear:
        return {8, 4, 0.46, true};
    case BarLook::kPointed:
        return {8, 4, 0.70, true};
    case BarLook::kHeld:
        return {8, 4, 0.95, true};
    default:
        return {4, 4, 0.46, false};
    }
}

/// The part of a thumb as wide as the strip that is drawn; all of it in a strip that is too narrow.
CANVASRect Slimmed(const CANVASRect& thumb, const Shape& shape) {
    const int32_t left = thumb.width - shape.m_Margin - shape.m_Width;
    return left < shape.m_Margin
               ? thumb
               : CANVASRect{thumb.left + left, thumb.top, shape.m_Width, thumb.height};
}

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
    cairo_t* context = canvas->m_Context;
    const CANVASRect whole = ThumbRect(*rect);
    const BarPaint paint = CanvasNotes::NoteBar(context, *rect, whole);
    const Shape shape = ShapeOf(paint.m_Look);
    const CANVASRect thumb = Slimmed(whole, shape);
    const CairoState state(context);
    cairo_new_path(context);
    if (shape.m_HasTrack) {
        FillRect(context, *rect, kColor, kTrackOpacity);
    }
    TraceRounded(context, thumb.left, thumb.top, 1.0 * thumb.left + thumb.width,
        1.0 * thumb.top + thumb.height, std::min(thumb.width, thumb.height) / 2.0);
    SetSourceColor(context, paint.m_Solid.value_or(kColor), paint.m_Solid ? 1 : shape.m_Opacity);
    cairo_fill(context);
    return S_OK;
}

CANVASRect ScrollBar::ThumbRect(const CANVASRect& track) const {
    const int64_t proportional = track.height * RowsIn(track.height) / RowCount();
    const int64_t smallest = std::min<int64_t>(kMinThumbHeight, track.height / 2);
    const int64_t height = std::clamp<int64_t>(proportional, smallest, track.height);
    const int64_t steps = std::max<int64_t>(RowCount() - 1, 1);
    const int64_t offset = (track.height - height) * (int64_t{m_Pos} - m_Min) / steps;
    return {track.left, Moved(track.top, offset), track.width, static_cast<int32_t>(height)};
}
