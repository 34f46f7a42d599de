#pragma once

#include "framework/interfaces/DrawingInterfaces.h"
#include "framework/runtime/SmartPtr.h"

#include <string>

/// Draws the program's own texts by the host's text renderer, as the tree's are. Without one there
/// are none.
class LabelPainter {
public:
    /// The canvas outlives it.
    explicit LabelPainter(UbuntuCanvas& canvas);

    /// One line in the middle of a rectangle's height, cut short where it is too long; the colour
    /// is 0xRRGGBB.
    void Draw(const std::string& text, int32_t color, CANVASRect rect);

private:
    UbuntuCanvas& m_Canvas;
    SmartPtr<IPMRenderer> m_Renderer;
    SmartPtr<IPMRenderStyle> m_Style;
};
