#include "host/drawing/Cairo.h"

void SetSourceColor(cairo_t* context, int32_t rgb, double opacity) {
    const auto part = [rgb](int shift) { return (rgb >> shift & 0xFF) / 255.0; };
    cairo_set_source_rgba(context, part(16), part(8), part(0), opacity);
}

void FillRect(cairo_t* context, const CANVASRect& rect, int32_t rgb, double opacity) {
    SetSourceColor(context, rgb, opacity);
    cairo_rectangle(context, rect.left, rect.top, rect.width, rect.height);
    cairo_fill(context);
}

bool CanDraw(const UbuntuCanvas* canvas, const CANVASRect* rect) {
    const auto isPlace = [](int32_t value) { return value > -kFarthest && value < kFarthest; };
    const auto isSide = [](int32_t value) { return value > 0 && value < kFarthest; };
    return canvas && canvas->m_Context && rect && isPlace(rect->left) && isPlace(rect->top) &&
           isSide(rect->width) && isSide(rect->height);
}
