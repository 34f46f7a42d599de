#include "app/window/Window.h"

#include "app/window/DisplayScale.h"

#include <SDL.h>
#include <csignal>
#include <cstdlib>
#include <string_view>

namespace {

struct SurfaceFreer {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using SdlSurfacePtr = std::unique_ptr<SDL_Surface, SurfaceFreer>;

void SetHints() {
    // Fingers and the mouse are told apart here, so neither may pose as the other.
    SDL_SetHint(SDL_HINT_TOUCH_MOUSE_EVENTS, "0");
    SDL_SetHint(SDL_HINT_MOUSE_TOUCH_EVENTS, "0");
    // A click that brings the window to the front is a click on its content too.
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
}

/// Without a choice SDL would end up with windows that nobody sees, and the Wayland library
/// complains by itself where there is no session.
const char* VideoDrivers() {
    return std::getenv("XDG_RUNTIME_DIR") ? "x11,wayland,KMSDRM" : "x11,KMSDRM";
}

void Start() {
    SetHints();
    SDL_SetHint(SDL_HINT_VIDEODRIVER, VideoDrivers()); // what the environment asks for goes first
    if (SDL_Init(SDL_INIT_VIDEO) != 0) {
        throw NoDisplay(SDL_GetError());
    }
    // SDL ends the program as the close button does when it is to terminate; a terminal that goes
    // away counts as that too. An ignored signal, as under nohup, stays ignored.
    if (std::signal(SIGHUP, SIG_IGN) != SIG_IGN) {
        std::signal(SIGHUP, [](int) { std::raise(SIGTERM); });
    }
    SDL_EnableScreenSaver();
    SDL_StartTextInput();
}

uint32_t WindowFlags() {
    const bool isConsole = std::string_view(SDL_GetCurrentVideoDriver()) == "KMSDRM";
    return SDL_WINDOW_ALLOW_HIGHDPI |
           (isConsole ? SDL_WINDOW_FULLSCREEN_DESKTOP : SDL_WINDOW_RESIZABLE);
}

/// A side of a window, in steps of the pointer where the display has a scale of its own.
int32_t Side(int32_t side, double scale) {
    return scale > 0 ? static_cast<int32_t>(side * scale) : side;
}

void Check(bool isDone, const char* what) {
    if (!isDone) {
        throw std::runtime_error(std::string(what) + ": " + SDL_GetError());
    }
}

} // namespace

Window::Window(const std::string& title, Size size) : m_Scale(size.m_Scale) {
    Start();
    m_Scale = m_Scale > 0 ? m_Scale : ScaleOfDisplay();
    m_Window.reset(SDL_CreateWindow(title.c_str(), SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED,
        Side(size.m_Width, m_Scale), Side(size.m_Height, m_Scale), WindowFlags()));
    if (!m_Window) {
        const std::string error = SDL_GetError();
        SDL_Quit();
        throw NoDisplay(error);
    }
}

Window::~Window() {
    m_Window.reset();
    SDL_Quit();
}

void Window::Closer::operator()(SDL_Window* window) const {
    SDL_DestroyWindow(window);
}

Size Window::GetSize() const {
    int width = 0;
    int height = 0;
    SDL_GetWindowSizeInPixels(m_Window.get(), &width, &height);
    const double scale = m_Scale > 0 ? m_Scale : Density();
    return {static_cast<int32_t>(width / scale), static_cast<int32_t>(height / scale), scale};
}

double Window::Density() const {
    int steps = 0;
    int pixels = 0;
    SDL_GetWindowSize(m_Window.get(), &steps, nullptr);
    SDL_GetWindowSizeInPixels(m_Window.get(), &pixels, nullptr);
    return steps > 0 && pixels > 0 ? double(pixels) / steps : 1;
}

void Window::Copy(const std::string& text) {
    SDL_SetClipboardText(text.c_str());
}

void Window::Show(cairo_surface_t* picture) {
    const SdlSurfacePtr source(
        SDL_CreateRGBSurfaceWithFormatFrom(cairo_image_surface_get_data(picture),
            cairo_image_surface_get_width(picture), cairo_image_surface_get_height(picture), 32,
            cairo_image_surface_get_stride(picture), SDL_PIXELFORMAT_RGB888));
    SDL_Surface* target = SDL_GetWindowSurface(m_Window.get());
    Check(source && target, "cannot draw the window");
    SDL_BlitSurface(source.get(), nullptr, target, nullptr);
    Check(SDL_UpdateWindowSurface(m_Window.get()) == 0, "cannot show the window");
}
