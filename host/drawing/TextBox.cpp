#include "host/drawing/TextBox.h"

#include <pango/pangocairo.h>

TextBox::TextBox(cairo_t* context, const std::string& text, int32_t size, const Limits& limits)
    : m_Context(context), m_Layout(pango_cairo_create_layout(context)) {
    PangoFontDescription* font = pango_font_description_from_string("Sans");
    pango_font_description_set_absolute_size(font, double(size) * PANGO_SCALE);
    pango_layout_set_font_description(m_Layout.get(), font);
    pango_font_description_free(font);
    pango_layout_set_wrap(m_Layout.get(), PANGO_WRAP_WORD_CHAR);
    pango_layout_set_ellipsize(m_Layout.get(), PANGO_ELLIPSIZE_END);
    pango_layout_set_width(m_Layout.get(), limits.m_Width * PANGO_SCALE);
    pango_layout_set_height(m_Layout.get(), limits.m_Height * PANGO_SCALE);
    pango_layout_set_text(m_Layout.get(), text.data(), static_cast<int>(text.size()));
    pango_layout_get_pixel_size(m_Layout.get(), &m_Width, &m_Height);
}

void TextBox::Deleter::operator()(PangoLayout* layout) const {
    g_object_unref(layout);
}

void TextBox::Draw(int32_t left, int32_t top) const {
    cairo_move_to(m_Context, left, top);
    pango_cairo_show_layout(m_Context, m_Layout.get());
}
