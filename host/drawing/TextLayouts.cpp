#include "host/drawing/TextLayouts.h"

#include "host/text/Text.h"

#include <pango/pangocairo.h>

namespace {

/// Layouts do not depend on where on the target they are drawn.
bool IsSameScale(const cairo_matrix_t& one, const cairo_matrix_t& other) {
    return one.xx == other.xx && one.xy == other.xy && one.yx == other.yx && one.yy == other.yy;
}

} // namespace

TextLayouts::TextLayouts()
    : m_Options(cairo_font_options_create()), m_TargetOptions(cairo_font_options_create()),
      m_Font(pango_font_description_from_string("Sans")) {}

TextLayouts::~TextLayouts() = default;

void TextLayouts::Deleter::operator()(PangoContext* context) const {
    g_object_unref(context);
}

void TextLayouts::Deleter::operator()(PangoLayout* layout) const {
    g_object_unref(layout);
}

void TextLayouts::Deleter::operator()(PangoFontDescription* font) const {
    pango_font_description_free(font);
}

void TextLayouts::Deleter::operator()(cairo_font_options_t* options) const {
    cairo_font_options_destroy(options);
}

size_t TextLayouts::Hash::operator()(const Key& key) const {
    constexpr size_t kOdd = 0x9E3779B1;
    const auto numbers = static_cast<size_t>(key.m_Size) << 20 ^ static_cast<size_t>(key.m_Width);
    return std::hash<std::wstring_view>()(key.m_Text) ^ numbers * kOdd;
}

PangoLayout* TextLayouts::Get(
    cairo_t* target, std::wstring_view text, int32_t size, int32_t width) {
    Prepare(target);
    const Key key{text, size, width};
    const auto found = m_Places.find(key);
    if (found != m_Places.end()) {
        m_Lines.splice(m_Lines.begin(), m_Lines, found->second);
        return m_Lines.front().m_Layout.get();
    }
    if (text.size() > kLongestKept) {
        m_Unkept = Shape(key);
        return m_Unkept.get();
    }
    return Keep(key);
}

/// Has a context that fits the target, and no layouts of another one.
void TextLayouts::Prepare(cairo_t* target) {
    cairo_matrix_t matrix;
    cairo_get_matrix(target, &matrix);
    cairo_surface_get_font_options(cairo_get_target(target), m_TargetOptions.get());
    if (m_Context && IsSameScale(matrix, m_Matrix) &&
        cairo_font_options_equal(m_Options.get(), m_TargetOptions.get())) {
        return;
    }
    m_Places.clear();
    m_Lines.clear();
    m_Context.reset(pango_font_map_create_context(pango_cairo_font_map_get_default()));
    pango_cairo_update_context(target, m_Context.get());
    m_Matrix = matrix;
    std::swap(m_Options, m_TargetOptions);
}

TextLayouts::Pointer<PangoLayout> TextLayouts::Shape(const Key& key) {
    const std::string utf8 = ToPrintable(Refer(key.m_Text));
    Pointer<PangoLayout> layout(pango_layout_new(m_Context.get()));
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
    // Every label begins beside its icon, also one that reads from right to left.
    pango_layout_set_auto_dir(layout.get(), FALSE);
    pango_font_description_set_absolute_size(m_Font.get(), double(key.m_Size) * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), m_Font.get());
    pango_layout_set_text(layout.get(), utf8.data(), static_cast<int>(utf8.size()));
    pango_layout_set_width(layout.get(), key.m_Width * PANGO_SCALE);
    return layout;
}

PangoLayout* TextLayouts::Keep(const Key& key) {
    if (m_Lines.size() == kMostKept) {
        m_Places.erase(m_Lines.back().GetKey());
        m_Lines.pop_back();
    }
    m_Lines.push_front({std::wstring(key.m_Text), key.m_Size, key.m_Width, Shape(key)});
    m_Places.emplace(m_Lines.front().GetKey(), m_Lines.begin());
    return m_Lines.front().m_Layout.get();
}
