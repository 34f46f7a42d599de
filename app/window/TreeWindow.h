#pragma once

#include "app/session/Session.h"
#include "app/tree/TreeView.h"
#include "app/window/ReadingNews.h"
#include "app/window/SidePanel.h"
#include "app/window/TreeUpdates.h"
#include "app/window/Window.h"
#include "app/window/WindowInput.h"

/// What a window shows. All that it refers to outlives the window.
struct ShownTree {
    TreeView& m_View;
    std::string m_Path;           ///< of what the view shows
    FolderWatch& m_Watch;         ///< the view's
    BackgroundReads& m_Reads;     ///< the view's
    BackgroundReading* m_Reading; ///< of what it will show; null where it does already
};

/// A window with a control in it, and with the control's settings beside it when they are wanted.
class TreeWindow {
public:
    /// `record` outlives the window. Throws NoDisplay, and std::system_error.
    TreeWindow(const ShownTree& shown, Size size, std::ostream& record);

    /// Guide lines are drawn from now on.
    void ShowGuides() { m_Session.ShowGuides(); }
    /// Returns when the user ends it.
    void Run();

private:
    void Handle(const SDL_Event& event);
    /// True when the event is for the panel, or opens it, or stops something, or ends the program.
    bool HandleKey(const SDL_Event& event);
    bool HandleEscape();
    void Feed(const Input& input);
    Size TreeSize() const;
    /// What is searched for, or else what is shown, how many rows, and what is selected.
    std::string Status();
    bool WaitForEvent(SDL_Event& event);
    void TakeNews();
    void Update();

    TreeView& m_View;
    std::string m_ShownPath; ///< for users
    Window m_Window;
    Session m_Session;
    TreeUpdates m_Updates;
    ReadingNews m_Reading;
    WindowInput m_Input;
    SidePanel m_Panel;
    KeptPicture m_Picture;
    bool m_IsShownAnew = false; ///< of which the control need not tell
    bool m_IsExposed = false;
    bool m_IsClosed = false;
};
