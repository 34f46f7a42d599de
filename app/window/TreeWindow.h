#pragma once

#include "app/session/Session.h"
#include "app/settings/Panel.h"
#include "app/tree/TreeView.h"
#include "app/window/Waker.h"
#include "app/window/Window.h"
#include "app/window/WindowInput.h"
#include "host/folders/FolderWatch.h"
#include "host/sources/Source.h"

/// What tells the window of folders.
struct FolderNews {
    FolderWatch& m_Watch;
    FolderScans& m_Scans;
};

/// A window with a control in it, and with the control's settings beside it when they are wanted.
class TreeWindow {
public:
    /// `view`, `folders` (the view's) and `record` outlive the window; `path` is what the view
    /// shows, as the user said it. `reading` is what it will show, or null where it does already.
    /// Throws NoDisplay.
    TreeWindow(TreeView& view, const std::string& path, Size size, const FolderNews& folders,
        std::ostream& record, BackgroundReading* reading);

    /// Guide lines are drawn from now on.
    void ShowGuides() { m_Session.ShowGuides(); }
    /// Returns when the user ends it.
    void Run();

private:
    void Handle(const SDL_Event& event);
    void Feed(const Input& input);
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
    bool WaitForEvent(SDL_Event& event);
    void TakeFolderNews();
    void ReadChangedFolders();
    /// Milliseconds until changed folders may be read again; empty when none has changed.
    std::optional<int64_t> UntilFolders() const;
    void TakeNews();
    void Update();

    TreeView& m_View;
    std::string m_Path;
    Window m_Window;
    Session m_Session;
    FolderNews m_Folders;
    Waker m_WatchWaker;
    Waker m_ScansWaker;
    BackgroundReading* m_Reading; ///< null once it is over
    std::optional<Waker> m_ReadingWaker;
    std::string m_HowFar; ///< while it is not
    WindowInput m_Input;
    std::optional<Panel> m_Panel;
    KeptPicture m_Picture;
    bool m_IsPanelPressed = false;    ///< the button that is held went down on the panel
    bool m_IsSet = false;             ///< something was set of which the control need not tell
    bool m_AreFoldersChanged = false; ///< or what was looked into is there
    uint64_t m_FoldersRestUntil = 0;  ///< milliseconds of SDL's clock
    bool m_HasScanNews = false;
    std::string m_Scanned;     ///< what is looked into and how far that is, while it is
    bool m_HasNews = false;    ///< of the reading
    bool m_WasStopped = false; ///< by the user, and nothing was begun since
    bool m_IsExposed = false;
    bool m_IsClosed = false;
};
