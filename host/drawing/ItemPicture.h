#pragma once

#include "framework/interfaces/Types.h"
#include "host/components/ItemLook.h"

/// Draws an item in the middle of a rectangle of whole pixels, with lines in the pixels of whatever
/// scale the canvas has, in colours that stand out on light and dark paper. Nothing below 6 pixels,
/// where a picture is a blot.
void DrawItemPicture(
    UbuntuCanvas* canvas, const CANVASRect* rect, ItemLook look, bool isOpen = false);
