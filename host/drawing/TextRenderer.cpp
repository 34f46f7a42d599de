#include "host/drawing/TextRenderer.h"

#include "host/components/HostInterfaces.h"
#include "host/drawing/Cairo.h"
#include "host/drawing/Defaults.h"
#include "host/text/Text.h"

#include <algorithm>
#include <cmath>
#include <pango/pangocairo.h>

namespace {

constexpr int32_t kWidestLine = 1 << 20; // pixels; Pango counts finer and in 32 bits too
constexpr int32_t kLongestText = 4096;   // characters; no row shows more

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

tagREFString Shortened(tagREFString text) {
    return {std::min(text.m_Length, kLongestText), text.m_String};
}

} // namespace

#if defined(__SANITIZE_ADDRESS__)
/// Fontconfig keeps its configuration until the process ends; that is not ours to release.
extern "C" MODULE_EXPORT const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\n";
}
#endif

TextRenderer::TextRenderer() {
    PangoContext* context = pango_font_map_create_context(pango_cairo_font_map_get_default());
    m_Layout.reset(pango_layout_new(context));
    g_object_unref(context);
    pango_layout_set_single_paragraph_mode(m_Layout.get(), TRUE);
    pango_layout_set_ellipsize(m_Layout.get(), PANGO_ELLIPSIZE_END);
    // Every label begins beside its icon, also one that reads from right to left.
    pango_layout_set_auto_dir(m_Layout.get(), FALSE);
    SetFontSize(kDefaultTextSize);
}

void TextRenderer::LayoutDeleter::operator()(PangoLayout* layout) const {
    g_object_unref(layout);
}

void TextRenderer::SetFontSize(int32_t pixels) {
    if (pixels == m_FontSize) {
        return;
    }
    PangoFontDescription* font = pango_font_description_from_string("Sans");
    pango_font_description_set_absolute_size(font, double(pixels) * PANGO_SCALE);
    pango_layout_set_font_description(m_Layout.get(), font);
    pango_font_description_free(font);
    m_FontSize = pixels;
}

int32_t TextRenderer::DrawText(IPMRenderStyle* style, tagREFString text, UbuntuCanvas* canvas,
    CANVASRect* rect, int32_t, int32_t) {
    const auto settings = Query<IHostRenderStyle>(style);
    if (!settings || !canvas || !rect) {
        return E_INVALIDARG;
    }
    CANVASRect line = *rect;
    line.width = std::min(line.width, kWidestLine);
    const int32_t width = CanDraw(canvas, &line) ? VisibleWidth(canvas->m_Context, line) : 0;
    if (width == 0) {
        return S_OK;
    }
    return Guarded([&] {
        const std::string utf8 = ToPrintable(Shortened(text));
        SetFontSize(settings->GetSize());
        pango_layout_set_text(m_Layout.get(), utf8.data(), static_cast<int>(utf8.size()));
        pango_layout_set_width(m_Layout.get(), width * PANGO_SCALE);

        const CairoState state(canvas->m_Context);
        pango_cairo_update_layout(canvas->m_Context, m_Layout.get());
        int height = 0;
        pango_layout_get_pixel_size(m_Layout.get(), nullptr, &height);
        SetSourceColor(canvas->m_Context, settings->GetColor());
        const int32_t top = line.top + (line.height - height) / 2;
        cairo_move_to(canvas->m_Context, line.left, top);
        pango_cairo_show_layout(canvas->m_Context, m_Layout.get());
        return S_OK;
    });
}
