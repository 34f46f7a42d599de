#pragma once

#include "app/replay/Session.h"
#include "app/settings/Panel.h"
#include "app/view/TreeView.h"
#include "app/window/Waker.h"
#include "app/window/Window.h"
#include "app/window/WindowInput.h"
#include "host/data/FolderWatch.h"

/// A window with a control in it, and with the control's settings beside it when they are wanted.
class TreeWindow {
public:
    /// `view`, `watch` (of its folders) and `record` outlive the window; `path` is what the view
    /// shows, as the user said it. Throws NoDisplay.
    TreeWindow(const TreeView& view, const std::string& path, Size size, FolderWatch& watch,
        std::ostream& record)
        : m_View(view), m_Path(path), m_Window("treehost " + path, size),
          m_Session(view.Control(), m_Window.GetSize(), record), m_Watch(watch),
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
    /// What is searched for, or else what is shown, how many rows, and what is selected.
    std::string Status() const;
    void ReadChangedFolders();
    void Update();

    const TreeView& m_View;
    std::string m_Path;
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
