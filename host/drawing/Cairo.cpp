#include "host/drawing/Cairo.h"

#include <numbers>

void SetSourceColor(cairo_t* context, int32_t rgb, double opacity) {
    const auto part = [rgb](int shift) { return (rgb >> shift & 0xFF) / 255.0; };
    cairo_set_source_rgba(context, part(16), part(8), part(0), opacity);
}

void FillRect(cairo_t* context, const CANVASRect& rect, int32_t rgb, double opacity) {
    SetSourceColor(context, rgb, opacity);
    cairo_rectangle(context, rect.left, rect.top, rect.width, rect.height);
    cairo_fill(context);
}

void TraceRounded(
    cairo_t* context, double left, double top, double right, double bottom, double corner) {
    constexpr double kQuarter = std::numbers::pi / 2;
    cairo_new_path(context);
    cairo_arc(context, left + corner, top + corner, corner, 2 * kQuarter, 3 * kQuarter);
    cairo_arc(context, right - corner, top + corner, corner, 3 * kQuarter, 4 * kQuarter);
    cairo_arc(context, right - corner, bottom - corner, corner, 0, kQuarter);
    cairo_arc(context, left + corner, bottom - corner, corner, kQuarter, 2 * kQuarter);
    cairo_close_path(context);
}

bool CanDraw(const UbuntuCanvas* canvas, const CANVASRect* rect) {
    const auto isPlace = [](int32_t value) { return value > -kFarthest && value < kFarthest; };
    const auto isSide = [](int32_t value) { return value > 0 && value < kFarthest; };
    return canvas && canvas->m_Context && rect && isPlace(rect->left) && isPlace(rect->top) &&
           isSide(rect->width) && isSide(rect->height);
}
