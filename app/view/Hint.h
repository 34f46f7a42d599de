#pragma once

#include "app/settings/Palette.h"
#include "host/drawing/CanvasNotes.h"

#include <cairo/cairo.h>

// A label that does not fit is shown whole when it is pointed at for a moment.

/// The label that was cut short at a height, in pixels; null when there is none.
const NotedText* CutLabelAt(const Noted& noted, double y);

/// Draws the whole label where it begins, in as many lines as it takes within an area.
void DrawHint(
    cairo_t* context, const NotedText& label, const CANVASRect& area, const Palette& palette);
