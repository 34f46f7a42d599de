// Draws the two icons of the tree, chevrons that say where a click leads: `draw_icons FOLDER`
// writes them there. Kept so that they can be changed and made again; the build does not need it.

#include <cairo/cairo.h>
#include <iostream>
#include <string>

namespace {

// As large as the largest rows on fine displays, so that they are sharp on all.
constexpr int kSize = 256;     // pixels
constexpr double kGray = 0.50; // stands out on light and dark paper
constexpr double kLine = kSize * 7 / 96.0;
constexpr double kLong = kSize * 14 / 96.0; // half the height of a chevron, which is as wide

/// A chevron that points right, or down when it is turned by a quarter.
bool DrawIcon(const std::string& path, bool isTurned) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSize, kSize);
    cairo_t* context = cairo_create(surface);
    const auto go = [&](auto move, double along, double across) {
        const double x = kSize / 2.0 + (isTurned ? across : along);
        const double y = kSize / 2.0 + (isTurned ? along : across);
        move(context, x, y);
    };
    go(cairo_move_to, -kLong / 2, -kLong);
    go(cairo_line_to, kLong / 2, 0);
    go(cairo_line_to, -kLong / 2, kLong);
    cairo_set_line_width(context, kLine);
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    cairo_set_source_rgb(context, kGray, kGray, kGray);
    cairo_stroke(context);
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
    const bool drawn =
        DrawIcon(folder + "/UITreeClosed.png", false) && DrawIcon(folder + "/UITreeOpen.png", true);
    return drawn ? 0 : 1;
}
