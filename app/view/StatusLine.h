#pragma once

#include "app/settings/Palette.h"
#include "framework/interfaces/Types.h"

#include <string>

/// The height of a window's status line, in pixels; 0 in a window too low for one.
int32_t StatusHeightIn(int32_t windowHeight);

/// Draws the line; its colours are the tree's.
void DrawStatus(
    const std::string& text, UbuntuCanvas& canvas, const CANVASRect& rect, const Palette& palette);
