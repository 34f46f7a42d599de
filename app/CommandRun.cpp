#include "app/Commands.h"
#include "app/Session.h"
#include "app/TreeView.h"
#include "app/Window.h"
#include "app/WindowInput.h"

#include <SDL.h>
#include <iostream>

namespace {

/// A window with a control in it.
class TreeWindow {
public:
    TreeWindow(const TreeView& view, const std::string& title, Size size, std::ostream& record)
        : m_Window(title, size), m_Session(view.Control(), m_Window.GetSize(), record) {}

    void Run() {
        while (!m_IsClosed) {
            Update();
            SDL_Event event;
            if (SDL_WaitEvent(&event) == 0) {
                throw std::runtime_error(std::string("no more events: ") + SDL_GetError());
            }
            do {
                Handle(event);
            } while (SDL_PollEvent(&event) != 0);
        }
    }

private:
    void Handle(const SDL_Event& event) {
        const bool isEscape = event.type == SDL_KEYDOWN && event.key.keysym.sym == SDLK_ESCAPE;
        m_IsClosed |= isEscape || event.type == SDL_QUIT;
        if (event.type == SDL_WINDOWEVENT) {
            m_IsExposed = true;
        }
        for (const Input& input : m_Input.Translate(event, m_Session.GetSize())) {
            m_Session.Feed(input);
        }
    }

    /// Draws only what changed, and shows it again when the window asks for that.
    void Update() {
        const Size size = m_Window.GetSize();
        const bool isResized = size.m_Width != m_Session.GetSize().m_Width ||
                               size.m_Height != m_Session.GetSize().m_Height;
        m_Session.Resize(size);
        const bool isDrawn = m_Session.TakeChanged() || isResized;
        if (isDrawn) {
            m_Picture = DrawPicture(m_Session.Tree(), size);
        }
        if (isDrawn || m_IsExposed) {
            m_Window.Show(m_Picture.get());
        }
        m_IsExposed = false;
    }

    Window m_Window;
    Session m_Session;
    WindowInput m_Input;
    SurfacePtr m_Picture;
    bool m_IsExposed = false;
    bool m_IsClosed = false;
};

} // namespace

void RunWindow(const WindowOptions& options) {
    const Size size = ParseSize(options.m_Size);
    const TreeView view(options.m_Path, 0);
    std::ostream silence(nullptr);
    try {
        TreeWindow window(
            view, "treehost " + options.m_Path, size, options.m_Record ? std::cout : silence);
        window.Run();
    } catch (const NoDisplay& error) {
        throw std::runtime_error(std::string("there is no display: ") + error.what() +
                                 "; to draw into a file: treehost shot PATH");
    }
}
