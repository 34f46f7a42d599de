#pragma once

#include "app/view/Picture.h"

#include <memory>
#include <stdexcept>
#include <string>

using SDL_Window = struct SDL_Window;

/// There is nothing to show a window on; the text says why.
struct NoDisplay : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The program's window, on X11, Wayland or the bare console. One at a time.
class Window {
public:
    /// Throws NoDisplay.
    Window(const std::string& title, Size size);
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    Size GetSize() const;
    /// Copies a picture, made with DrawPicture, to the window.
    void Show(cairo_surface_t* picture);

private:
    struct Closer {
        void operator()(SDL_Window* window) const;
    };

    std::unique_ptr<SDL_Window, Closer> m_Window;
};
