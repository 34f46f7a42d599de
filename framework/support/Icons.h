#pragma once

#include "framework/interfaces/DrawingInterfaces.h"

/// The icon loaded from `fileName` in the folder "_icons" of the common path, with one reference;
/// null when it cannot be loaded.
[[nodiscard]] IRenderableObject* ICONCreate(tagREFString fileName);
