#pragma once

#include <cairo.h>
#include <cstdint>
#include <memory>

/// The least that a picture can cost, by straight calls of cairo and Pango: so many lines with
/// their glyphs known, an icon before every tenth, on white.
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
