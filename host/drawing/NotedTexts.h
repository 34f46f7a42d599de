#pragma once

#include "framework/interfaces/Types.h"

#include <cairo/cairo.h>
#include <vector>

/// Learns from the text renderer in which rectangles texts of one colour are drawn on a canvas: a
/// control hands the labels of its selected rows over in a colour of their own, and tells its host
/// in no other way which of the rows in view those are.
class NotedTexts {
public:
    /// Notes until it goes; one on a context at a time, which outlives it. Throws std::bad_alloc.
    NotedTexts(cairo_t* context, int32_t color);
    ~NotedTexts();
    NotedTexts(const NotedTexts&) = delete;
    NotedTexts& operator=(const NotedTexts&) = delete;

    const std::vector<CANVASRect>& Rects() const { return m_Rects; }

    /// For the renderer.
    static void Note(cairo_t* context, const CANVASRect& rect, int32_t color);

private:
    cairo_t* m_Context;
    int32_t m_Color;
    std::vector<CANVASRect> m_Rects;
};
