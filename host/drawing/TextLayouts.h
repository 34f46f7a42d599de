#pragma once

#include "framework/interfaces/Types.h"

#include <cairo/cairo.h>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

using PangoContext = struct _PangoContext;
using PangoFontDescription = struct _PangoFontDescription;
using PangoLayout = struct _PangoLayout;

/// Texts laid out as single lines, of which those drawn last are kept, because finding the glyphs
/// of a text costs several times what drawing them does.
///
/// A layout fits the scale and the font options that it was made for. The layouts share a context
/// with these; it is never changed, which would have all of them made anew one by one, but replaced
/// together with them once something is drawn elsewhere.
class TextLayouts {
public:
    TextLayouts();
    ~TextLayouts();
    TextLayouts(const TextLayouts&) = delete;
    TextLayouts& operator=(const TextLayouts&) = delete;

    /// `text` in letters of `size` pixels, to be drawn on `target`, with an ellipsis where it does
    /// not end within `width` pixels. The layout stays this object's, which may drop it in the next
    /// call. Throws when memory runs out.
    PangoLayout* Get(cairo_t* target, std::wstring_view text, int32_t size, int32_t width);

    static constexpr size_t kMostKept = 256; ///< layouts, of about 1.1 kB each
    static constexpr size_t kLongestKept =
        256; ///< characters; longer texts are laid out every time

private:
    struct Deleter {
        void operator()(PangoContext* context) const;
        void operator()(PangoLayout* layout) const;
        void operator()(PangoFontDescription* font) const;
        void operator()(cairo_font_options_t* options) const;
    };
    template <class T>
    using Pointer = std::unique_ptr<T, Deleter>;

    struct Key {
        std::wstring_view m_Text;
        int32_t m_Size;
        int32_t m_Width;
        bool operator==(const Key&) const = default;
    };
    struct Hash {
        size_t operator()(const Key& key) const;
    };
    struct Line {
        std::wstring m_Text;
        int32_t m_Size;
        int32_t m_Width;
        Pointer<PangoLayout> m_Layout;

        Key GetKey() const { return {m_Text, m_Size, m_Width}; }
    };

    void Prepare(cairo_t* target);
    Pointer<PangoLayout> Shape(const Key& key);
    PangoLayout* Keep(const Key& key);

    Pointer<PangoContext> m_Context;
    Pointer<cairo_font_options_t> m_Options;       ///< those of the context's target
    Pointer<cairo_font_options_t> m_TargetOptions; ///< those of the target that is drawn on now
    cairo_matrix_t m_Matrix{};            ///< the context's, which counts without its offset
    Pointer<PangoFontDescription> m_Font; ///< of any size
    std::list<Line> m_Lines;              ///< the one drawn last goes first
    std::unordered_map<Key, std::list<Line>::iterator, Hash> m_Places; ///< by the lines' own texts
    Pointer<PangoLayout> m_Unkept;                                     ///< the last text too long
};
