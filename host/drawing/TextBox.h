#pragma once

#include <cairo/cairo.h>
#include <cstdint>
#include <memory>
#include <string>

using PangoLayout = struct _PangoLayout;

/// A text in as many lines as it takes.
class TextBox {
public:
    /// The largest box, in pixels.
    struct Limits {
        int32_t m_Width;
        int32_t m_Height;
    };

    /// UTF-8 in letters of `size` pixels, to be drawn on `context`, which outlives it. Words that
    /// are longer than a line are broken, and what does not fit into the height ends in an
    /// ellipsis. Throws when memory runs out.
    TextBox(cairo_t* context, const std::string& text, int32_t size, const Limits& limits);

    // In pixels.
    int32_t Width() const { return m_Width; }
    int32_t Height() const { return m_Height; }

    /// In the context's colour.
    void Draw(int32_t left, int32_t top) const;

private:
    struct Deleter {
        void operator()(PangoLayout* layout) const;
    };

    cairo_t* m_Context;
    std::unique_ptr<PangoLayout, Deleter> m_Layout;
    int32_t m_Width = 0;
    int32_t m_Height = 0;
};
