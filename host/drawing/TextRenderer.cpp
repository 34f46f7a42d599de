#include "host/drawing/TextRenderer.h"

#include "framework/support/REFString.h"
#include "host/components/HostInterfaces.h"
#include "host/drawing/Cairo.h"
#include "host/drawing/CanvasNotes.h"
#include "host/drawing/Defaults.h"

#include <algorithm>
#include <cmath>
#include <pango/pangocairo.h>

namespace {

constexpr int32_t kWidestLine = 1 << 20; // pixels; Pango counts finer and in 32 bits too
constexpr size_t kLongestText = 4096;    // characters; no row shows more

/// The pixels from the left edge to where the rectangle or the clip ends.
int32_t VisibleWidth(cairo_t* context, const CANVASRect& rect) {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_clip_extents(context, &left, &top, &right, &bottom);
    const double width = std::min(double(rect.width), std::floor(right) - rect.left);
    return static_cast<int32_t>(std::max(width, 0.0));
}

/// The size of letters: the style's, and no smaller a share of a higher line than the host's
/// default sizes have, but none that does not fit.
int32_t TextSizeIn(const CANVASRect& line, int32_t styleSize) {
    const int64_t share = int64_t{line.height} * kDefaultTextSize / kDefaultRowHeight;
    return std::min(std::max(styleSize, static_cast<int32_t>(share)), std::max(line.height, 1));
}

/// Draws a layout in the middle of a line's height.
void DrawLine(cairo_t* context, const CANVASRect& line, PangoLayout* layout) {
    int height = 0;
    pango_layout_get_pixel_size(layout, nullptr, &height);
    const int32_t top = line.top + (line.height - height) / 2;
    cairo_move_to(context, line.left, top);
    pango_cairo_show_layout(context, layout);
    cairo_new_path(context); // a text leaves the point where it ends
}

std::wstring_view Shortened(tagREFString text) {
    return ViewOf(text).substr(0, kLongestText);
}

} // namespace

#if defined(FINDS_LEAKS)
/// Fontconfig keeps its configuration until the process ends; that is not ours to release.
extern "C" MODULE_EXPORT const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\n";
}
#endif

int32_t TextRenderer::DrawText(IPMRenderStyle* style, tagREFString text, UbuntuCanvas* canvas,
    CANVASRect* rect, int32_t, int32_t) {
    const auto settings = Query<IHostRenderStyle>(style);
    if (!settings || !canvas || !rect) {
        return E_INVALIDARG;
    }
    return Guarded([&] {
        CANVASRect line = *rect;
        line.width = std::min(line.width, kWidestLine);
        cairo_t* context = canvas->m_Context;
        const int32_t width = CanDraw(canvas, &line) ? VisibleWidth(context, line) : 0;
        const int32_t size = TextSizeIn(line, settings->GetSize());
        bool isCut = text.m_Length > 0;
        if (width > 0) {
            const CairoState state(context);
            SetSourceColor(context, settings->GetColor());
            PangoLayout* layout = m_Layouts.Get(context, Shortened(text), size, width);
            DrawLine(context, line, layout);
            isCut = pango_layout_is_ellipsized(layout) != FALSE;
        }
        if (context) {
            CanvasNotes::NoteText(context, *rect, settings->GetColor(), size,
                isCut ? Shortened(text) : std::wstring_view());
        }
        return S_OK;
    });
}
