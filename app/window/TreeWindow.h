#pragma once

#include "app/replay/Session.h"
#include "app/settings/Panel.h"
#include "app/window/Waker.h"
#include "app/window/Window.h"
#include "app/window/WindowInput.h"
#include "host/data/FolderWatch.h"

/// A window with a control in it, and with the control's settings beside it when they are wanted.
class TreeWindow {
public:
    /// `tree`, `watch` (of the tree's folders) and `record` outlive the window. Throws NoDisplay.
    TreeWindow(IUITree* tree, const std::string& title, Size size, FolderWatch& watch,
        std::ostream& record)
        : m_Window(title, size), m_Session(tree, m_Window.GetSize(), record), m_Watch(watch),
          m_Waker(watch.Descriptor()) {}

    /// Returns when the user ends it.
    void Run();

private:
    void Handle(const SDL_Event& event);
    /// True when the event is for the panel, or opens it, or ends the program.
    bool HandleKey(const SDL_Event& event);
    bool HandlePanelKey(const SDL_Event& event);
    bool HandlePanelFinger(const SDL_Event& event);
    bool HandlePanelPointer(const Input& input);
    void OpenPanel();
    void ClosePanel();
    bool IsOnPanel(double x) const;
    Size TreeSize() const;
    void ReadChangedFolders();
    void Update();

    Window m_Window;
    Session m_Session;
    FolderWatch& m_Watch;
    Waker m_Waker;
    WindowInput m_Input;
    std::optional<Panel> m_Panel;
    KeptPicture m_Picture;
    bool m_IsPanelPressed = false; ///< the button that is held went down on the panel
    bool m_IsSet = false;          ///< the panel set something, of which the control need not tell
    bool m_AreFoldersChanged = false;
    bool m_IsExposed = false;
    bool m_IsClosed = false;
};
