#include "host/data/FileItem.h"

#include "host/drawing/Cairo.h"

#include <algorithm>

namespace {

constexpr int32_t kPaperColor = 0xFFFFFF;
constexpr int32_t kOutlineColor = 0x8A94A0;

/// A sheet of paper with its upper right corner folded; the sizes are in pixels.
struct Page {
    double m_Left;
    double m_Top;
    double m_Width;
    double m_Height;
    double m_Fold;
};

/// The page in the middle of the rectangle, on half pixels so that thin lines are sharp.
Page PageIn(const CANVASRect& rect) {
    const int32_t side = std::min(rect.width, rect.height);
    const int32_t width = side * 5 / 8;
    const int32_t height = side * 7 / 8 - 1;
    const int32_t left = rect.left + (rect.width - width) / 2;
    const int32_t top = rect.top + (rect.height - height) / 2;
    return {left + 0.5, top + 0.5, width - 1.0, height - 1.0, width / 3.0};
}

void TraceOutline(cairo_t* context, const Page& page) {
    cairo_new_path(context);
    cairo_move_to(context, page.m_Left, page.m_Top);
    cairo_rel_line_to(context, page.m_Width - page.m_Fold, 0);
    cairo_rel_line_to(context, page.m_Fold, page.m_Fold);
    cairo_rel_line_to(context, 0, page.m_Height - page.m_Fold);
    cairo_rel_line_to(context, -page.m_Width, 0);
    cairo_close_path(context);
}

void TraceFold(cairo_t* context, const Page& page) {
    cairo_move_to(context, page.m_Left + page.m_Width - page.m_Fold, page.m_Top);
    cairo_rel_line_to(context, 0, page.m_Fold);
    cairo_rel_line_to(context, page.m_Fold, 0);
}

} // namespace

int32_t FileItem::Render(
    UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* /*context*/, int32_t /*param*/) {
    constexpr int32_t kSmallest = 6; // pixels; below that a page is a blot
    if (!CanDraw(canvas, rect) || std::min(rect->width, rect->height) < kSmallest) {
        return S_OK;
    }
    cairo_t* context = canvas->m_Context;
    const CairoState state(context);
    const Page page = PageIn(*rect);
    TraceOutline(context, page);
    SetSourceColor(context, kPaperColor);
    cairo_fill_preserve(context);
    TraceFold(context, page);
    SetSourceColor(context, kOutlineColor);
    cairo_set_line_width(context, 1);
    cairo_stroke(context);
    return S_OK;
}
