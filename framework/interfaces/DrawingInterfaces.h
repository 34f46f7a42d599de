#pragma once

#include "framework/interfaces/Unknown.h"

// Drawing: what draws itself, and the host's text renderer and scroll bar. Rectangles are in canvas
// pixels and borrowed for the call.

/// Implemented by icons, by items with an image, by the scroll bar and by the control itself.
struct IRenderableObject : IUnknown {
    virtual int32_t Render(
        UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int32_t param) = 0;
};

/// A text style of the host.
struct IPMRenderStyle : IUnknown {
    virtual int32_t SetStyleValueA(int32_t value) = 0;
    virtual int32_t SetStyleValueB(int32_t value) = 0;
    /// The default text size in pixels.
    virtual int32_t SetStyleSize(int32_t size) = 0;
    virtual int32_t SetStyleValuePair(int32_t first, int32_t second) = 0;
    /// The colour, 0xRRGGBB, of the texts drawn from now on.
    virtual int32_t SetColor(int32_t rgb) = 0;
    virtual int32_t SetStyleValue(int32_t value) = 0;
    virtual int32_t SetStyleValueC(int32_t value) = 0;
};

/// The host's text renderer.
struct IPMRenderer : IUnknown {
    /// Draws one line of text in `rect`. The last two arguments are 0.
    virtual int32_t DrawText(IPMRenderStyle* style, tagREFString text, UbuntuCanvas* canvas,
        CANVASRect* rect, int32_t, int32_t) = 0;
};

/// The setting of Configure that takes the bar's width in pixels.
constexpr int32_t SCROLLBAR_WIDTH = 2;

/// The host's vertical scroll bar; its position is the number of the first row shown. The object
/// also answers IRenderableObject and IUIMouseInput.
struct IUIScrollBar : IUnknown {
    virtual int32_t GetPos(int32_t* pos) = 0;
    /// The bar applies its own range to the value.
    virtual int32_t SetPos(int32_t pos) = 0;
    virtual int32_t SetRange(int32_t min, int32_t max) = 0;
    virtual int32_t Configure(int32_t what, int32_t value) = 0;
    /// Splits `area` into the bar's rectangle and the rows'. Negative: failure, outputs untouched;
    /// 0: the bar is shown; positive: it is not.
    virtual int32_t Layout(CANVASRect* area, CANVASRect* bar, CANVASRect* client) = 0;
};
