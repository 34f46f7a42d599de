#include "app/window/DisplayScale.h"

#include <SDL.h>
#include <X11/Xlib.h>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>

double ScaleOfDisplay() {
    constexpr double kUsual = 96;
    if (std::string_view(SDL_GetCurrentVideoDriver()) != "x11") {
        return 0;
    }
    const std::unique_ptr<Display, int (*)(Display*)> display(
        XOpenDisplay(nullptr), &XCloseDisplay);
    const char* perInch = display ? XGetDefault(display.get(), "Xft", "dpi") : nullptr;
    const double value = perInch ? std::strtod(perInch, nullptr) : 0;
    return value > 0 ? std::clamp(value / kUsual, 1.0, 4.0) : 0;
}
