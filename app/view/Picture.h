#pragma once

#include "framework/interfaces/TreeInterfaces.h"
#include "host/drawing/Cairo.h"

#include <string>

class Panel;

/// In pixels.
struct Size {
    int32_t m_Width = 0;
    int32_t m_Height = 0;

    bool operator==(const Size&) const = default;
};

/// Reads WIDTHxHEIGHT. Throws UsageError.
Size ParseSize(const std::string& text);

/// The control drawn on white, with a panel at its right when there is one.
SurfacePtr DrawPicture(IUITree* tree, Size size, Panel* panel = nullptr);

/// Writes a PNG file; `name` is what the caller called it.
void WritePicture(cairo_surface_t* picture, const std::string& file, const std::string& name);
