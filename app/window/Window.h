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
    /// The size's scale is what to draw in, 0 for the display's own. Throws NoDisplay.
    Window(const std::string& title, Size size);
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    Size GetSize() const;
    /// How many of the control's pixels a step of the system's pointer is.
    double PerStep() const { return Density() / GetSize().m_Scale; }
    /// Hands a text, UTF-8, to the system's clipboard; without one that is no fault.
    static void Copy(const std::string& text);
    /// Copies a picture, made with DrawPicture, to the window.
    void Show(cairo_surface_t* picture);

private:
    struct Closer {
        void operator()(SDL_Window* window) const;
    };

    /// How many of the display's pixels are along a step of the system's pointer.
    double Density() const;

    std::unique_ptr<SDL_Window, Closer> m_Window;
    double m_Scale; ///< 0 where the window tells it, by its pixels along a step of the pointer
};
