// Draws the two icons of the tree: `draw_icons FOLDER` writes them there. Kept so that they can be
// changed and made again; the build does not need it.

#include <cairo/cairo.h>
#include <iostream>
#include <numbers>
#include <string>

namespace {

constexpr int kSize = 64; // pixels
constexpr double kCorner = 5;

struct Color {
    double red;
    double green;
    double blue;
};
constexpr Color kBack{0.85, 0.62, 0.18};
constexpr Color kFront{0.99, 0.80, 0.36};
constexpr Color kOutline{0.62, 0.42, 0.08};

void FillAndOutline(cairo_t* context, const Color& color) {
    cairo_set_source_rgb(context, color.red, color.green, color.blue);
    cairo_fill_preserve(context);
    cairo_set_source_rgb(context, kOutline.red, kOutline.green, kOutline.blue);
    cairo_stroke(context);
}

/// The folder's back with its tab.
void DrawBack(cairo_t* context) {
    cairo_move_to(context, 5, 54);
    cairo_line_to(context, 5, 10 + kCorner);
    cairo_arc(
        context, 5 + kCorner, 10 + kCorner, kCorner, std::numbers::pi, 1.5 * std::numbers::pi);
    cairo_line_to(context, 24, 10);
    cairo_line_to(context, 30, 18);
    cairo_line_to(context, 54 - kCorner, 18);
    cairo_arc(context, 54 - kCorner, 18 + kCorner, kCorner, -0.5 * std::numbers::pi, 0);
    cairo_line_to(context, 54, 54);
    cairo_close_path(context);
    FillAndOutline(context, kBack);
}

/// The front flap, upright for a closed folder and tilted forward for an open one.
void DrawFront(cairo_t* context, double topLeft, double topRight, double top) {
    cairo_move_to(context, 5, 55);
    cairo_line_to(context, topLeft, top);
    cairo_line_to(context, topRight, top);
    cairo_line_to(context, 54, 55);
    cairo_close_path(context);
    FillAndOutline(context, kFront);
}

bool DrawIcon(const std::string& path, double topLeft, double topRight, double top) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSize, kSize);
    cairo_t* context = cairo_create(surface);
    cairo_set_line_width(context, 3);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    DrawBack(context);
    DrawFront(context, topLeft, topRight, top);
    const cairo_status_t status = cairo_surface_write_to_png(surface, path.c_str());
    cairo_destroy(context);
    cairo_surface_destroy(surface);
    return status == CAIRO_STATUS_SUCCESS;
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: draw_icons FOLDER\n";
        return 2;
    }
    const std::string folder = arguments[1];
    const bool drawn = DrawIcon(folder + "/UITreeClosed.png", 5, 54, 25) &&
                       DrawIcon(folder + "/UITreeOpen.png", 16, 62, 31);
    return drawn ? 0 : 1;
}
