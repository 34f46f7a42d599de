#pragma once

#include "app/settings/Palette.h"
#include "app/settings/Panel.h"
#include "framework/interfaces/Types.h"

/// Draws the panel into a rectangle as high as it was fitted to. Its texts are drawn by the host's
/// text renderer, as the tree's are; without one there are none. The colours are the tree's.
void DrawPanel(
    const Panel& panel, UbuntuCanvas& canvas, const CANVASRect& rect, const Palette& palette);
