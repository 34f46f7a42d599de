#pragma once

#include "framework/interfaces/Types.h"

#include <cairo/cairo.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a text renderer was asked to draw.
struct NotedText {
    CANVASRect m_Rect;
    int32_t m_Color;    ///< 0xRRGGBB
    int32_t m_TextSize; ///< of the letters, in pixels
    std::wstring m_Cut; ///< the whole text where not all of it is shown; else ""
};

/// How a scroll bar looks, by where the pointer is.
enum class BarLook {
    kSlim,    ///< somewhere else
    kNear,    ///< on the bar, or a little beside it
    kPointed, ///< on the thumb
    kHeld     ///< pressed on the thumb, wherever it is now
};

struct BarPaint {
    BarLook m_Look = BarLook::kSlim;
    /// The thumb's colour, 0xRRGGBB; without one it is gray and lets the paper through.
    std::optional<int32_t> m_Solid = {};
};

/// What was drawn on a canvas by the host's components, and where.
struct Noted {
    std::vector<NotedText> m_Texts = {};
    CANVASRect m_Track{}; ///< of the scroll bar; empty without one
    CANVASRect m_Thumb{};
};

/// Has the host's components note what they draw on a canvas, and tells them how they look there. A
/// control that draws with them tells its host in no other way which rows are in view, which of
/// them are selected (it hands their labels over in a colour of their own), and where its scroll
/// bar is.
class CanvasNotes {
public:
    /// From now on until it goes; one on a context at a time. Both outlive it. Throws
    /// std::bad_alloc.
    CanvasNotes(cairo_t* context, Noted& noted, const BarPaint& bar);
    ~CanvasNotes();
    CanvasNotes(const CanvasNotes&) = delete;
    CanvasNotes& operator=(const CanvasNotes&) = delete;

    /// For the text renderer; a canvas without notes forgets it. Throws std::bad_alloc.
    static void NoteText(cairo_t* context, const CANVASRect& rect, int32_t color, int32_t textSize,
        std::wstring_view cut);
    /// For the scroll bar: how it is to be drawn. Slim and gray on a canvas without notes.
    static BarPaint NoteBar(cairo_t* context, const CANVASRect& track, const CANVASRect& thumb);

private:
    static CanvasNotes* On(cairo_t* context);

    cairo_t* m_Context;
    Noted& m_Noted;
    BarPaint m_Bar;
};
