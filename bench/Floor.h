#pragma once

#include "framework/Interfaces.h"

#include <cairo.h>
#include <memory>

// The least that the control's work can cost: the same host calls in straight loops on bare
// pointers, and the same picture drawn by straight calls of cairo and Pango.

/// Counts the visible rows.
int64_t CountBare(ISuperCollection* collection);

/// Sets the flag words of all items.
void ShowBare(ISuperCollection* collection);

/// Draws so many lines with their glyphs known, an icon before every tenth, on white.
class PictureFloor {
public:
    PictureFloor(int32_t lines, int32_t rowHeight, int32_t textSize);
    ~PictureFloor();
    PictureFloor(const PictureFloor&) = delete;
    PictureFloor& operator=(const PictureFloor&) = delete;

    void Draw(cairo_t* context) const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_Parts;
};
