#include "bench/PictureFloor.h"

#include "host/drawing/Cairo.h"

#include <pango/pangocairo.h>
#include <string>
#include <vector>

struct PictureFloor::Parts {
    int32_t m_RowHeight;
    SurfacePtr m_Icon;
    std::vector<PangoLayout*> m_Lines;
};

PictureFloor::PictureFloor(int32_t lines, int32_t rowHeight, int32_t textSize)
    : m_Parts(new Parts{rowHeight,
          SurfacePtr(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, rowHeight, rowHeight)), {}}) {
    const ContextPtr icon(cairo_create(m_Parts->m_Icon.get()));
    FillRect(icon.get(), {2, 2, rowHeight - 4, rowHeight - 4}, 0xC0A040);
    PangoContext* context = pango_font_map_create_context(pango_cairo_font_map_get_default());
    pango_cairo_update_context(icon.get(), context);
    PangoFontDescription* font = pango_font_description_from_string("Sans");
    pango_font_description_set_absolute_size(font, double(textSize) * PANGO_SCALE);
    for (int32_t i = 0; i < lines; ++i) {
        PangoLayout* line = pango_layout_new(context);
        pango_layout_set_font_description(line, font);
        pango_layout_set_text(line, ("Row " + std::to_string(i)).c_str(), -1);
        m_Parts->m_Lines.push_back(line);
    }
    pango_font_description_free(font);
    g_object_unref(context);
}

PictureFloor::~PictureFloor() {
    for (PangoLayout* line : m_Parts->m_Lines) {
        g_object_unref(line);
    }
}

void PictureFloor::Draw(cairo_t* context) const {
    constexpr int32_t kRowsPerIcon = 10;
    cairo_set_source_rgb(context, 1, 1, 1);
    cairo_paint(context);
    int32_t row = 0;
    for (PangoLayout* line : m_Parts->m_Lines) {
        const int32_t top = row * m_Parts->m_RowHeight;
        if (row++ % kRowsPerIcon == 0) {
            cairo_set_source_surface(context, m_Parts->m_Icon.get(), 0, top);
            cairo_paint(context);
        }
        cairo_set_source_rgb(context, 0, 0, 0);
        cairo_move_to(context, 2 * m_Parts->m_RowHeight, top);
        pango_cairo_show_layout(context, line);
    }
}
