#include "app/window/TreeWindow.h"

#include "app/view/StatusLine.h"
#include "host/components/HostInterfaces.h"
#include "host/text/Text.h"

#include <SDL.h>
#include <algorithm>
#include <climits>

TreeWindow::TreeWindow(TreeView& view, const std::string& path, Size size,
    const FolderNews& folders, std::ostream& record, BackgroundReading* reading)
    : m_View(view), m_Path(path), m_Window("treehost " + path, size),
      m_Session(view.Control(), m_Window.GetSize(), record), m_Folders(folders),
      m_WatchWaker(folders.m_Watch.News()), m_ScansWaker(folders.m_Scans.News()),
      m_Reading(reading) {
    if (m_Reading) {
        m_ReadingWaker.emplace(m_Reading->News());
        m_HasNews = true;
    }
}

void TreeWindow::Run() {
    while (!m_IsClosed) {
        TakeNews();
        TakeFolderNews();
        for (const Input& input : m_Input.Wait()) {
            Feed(input);
        }
        Update();
        SDL_Event event;
        for (bool hasEvent = WaitForEvent(event); hasEvent; hasEvent = SDL_PollEvent(&event) != 0) {
            Handle(event);
        }
    }
}

/// False when there is something to do without one.
bool TreeWindow::WaitForEvent(SDL_Event& event) {
    int64_t patience = INT_MAX;
    for (const auto until : {m_Session.UntilNextPicture(), m_Input.UntilNext(), UntilFolders()}) {
        patience = std::min(patience, until.value_or(INT_MAX));
    }
    if (patience < INT_MAX) {
        return SDL_WaitEventTimeout(&event, static_cast<int>(patience)) != 0;
    }
    if (SDL_WaitEvent(&event) == 0) {
        throw std::runtime_error(std::string("no more events: ") + SDL_GetError());
    }
    return true;
}

void TreeWindow::Handle(const SDL_Event& event) {
    m_IsClosed |= event.type == SDL_QUIT;
    m_IsExposed |= event.type == SDL_WINDOWEVENT;
    m_AreFoldersChanged |= m_WatchWaker.IsFrom(event);
    m_HasScanNews |= m_ScansWaker.IsFrom(event);
    m_HasNews |= m_ReadingWaker && m_ReadingWaker->IsFrom(event);
    if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_LEAVE) {
        m_Session.NoteLeft();
    }
    if (HandleKey(event) || HandlePanelFinger(event)) {
        return;
    }
    for (const Input& input : m_Input.Translate(event, m_Window.GetSize(), m_Window.PerStep())) {
        if (HandlePanelPointer(input)) {
            m_Session.NoteLeft();
        } else {
            Feed(input);
        }
    }
    if (const auto copied = m_Session.TakeCopied()) {
        Window::Copy(*copied);
    }
}

void TreeWindow::Feed(const Input& input) {
    const auto* key = std::get_if<KeyInput>(&input);
    const bool readsAgain = key && key->m_Key == Key::kF5 && Query<IHostFolder>(m_View.Source());
    m_WasStopped &= !readsAgain;
    m_Session.Feed(input);
}

bool TreeWindow::HandleKey(const SDL_Event& event) {
    const bool isKey = event.type == SDL_KEYDOWN;
    const SDL_Keycode code = isKey ? event.key.keysym.sym : SDLK_UNKNOWN;
    const bool isSwitch = code == SDLK_ESCAPE || code == SDLK_F2;
    if (isSwitch && event.key.repeat != 0) {
        return true; // one key held down does not close the panel and then the window
    }
    if (m_Panel) {
        return HandlePanelKey(event);
    }
    if (code == SDLK_F2) {
        OpenPanel();
    }
    if (code == SDLK_ESCAPE && m_Session.Searching()) {
        m_Session.Feed(KeyInput{Key::kEscape});
        return true;
    }
    if (code == SDLK_ESCAPE && m_Reading) {
        m_Reading->Stop();
        return true;
    }
    if (code == SDLK_ESCAPE && !m_Scanned.empty()) {
        m_Folders.m_Scans.Stop();
        m_WasStopped = true;
        return true;
    }
    m_IsClosed |= code == SDLK_ESCAPE;
    return isSwitch;
}

bool TreeWindow::HandlePanelKey(const SDL_Event& event) {
    if (event.type == SDL_TEXTINPUT) {
        m_Panel->Type(event.text.text);
    } else if (event.type != SDL_KEYDOWN) {
        return false;
    } else if (const auto key = PanelKeyOf(event.key.keysym.sym)) {
        m_Panel->Press(*key);
    }
    if (m_Panel->IsClosed()) {
        ClosePanel();
    }
    return true;
}

/// A finger that goes down on the panel is a click there, and no pan of the tree.
bool TreeWindow::HandlePanelFinger(const SDL_Event& event) {
    const Size size = m_Window.GetSize();
    if (event.type != SDL_FINGERDOWN || !IsOnPanel(double(event.tfinger.x) * size.m_Width)) {
        return false;
    }
    m_Panel->Click(double(event.tfinger.y) * size.m_Height);
    return true;
}

/// While a button is held, the pointer belongs to where it went down.
bool TreeWindow::HandlePanelPointer(const Input& input) {
    const auto* pointer = std::get_if<PointerInput>(&input);
    if (!pointer) {
        return false;
    }
    const bool isOnPanel = IsOnPanel(pointer->m_X);
    if (pointer->m_Action == POINTERACTION_PRESS) {
        m_IsPanelPressed = isOnPanel;
        if (isOnPanel) {
            m_Panel->Click(pointer->m_Y);
        }
    }
    const bool isHeld = (pointer->m_State & (POINTERSTATE_PRIMARY | POINTERSTATE_SECONDARY)) != 0;
    return isHeld ? m_IsPanelPressed : isOnPanel;
}

void TreeWindow::OpenPanel() {
    m_Panel.emplace(m_Session.Tree(), [this](const std::string& text, int32_t status) {
        m_Session.Note(text, StatusText(status));
        m_IsSet = true;
    });
}

void TreeWindow::ClosePanel() {
    m_Panel.reset();
}

bool TreeWindow::IsOnPanel(double x) const {
    return m_Panel && x >= TreeSize().m_Width;
}

Size TreeWindow::TreeSize() const {
    Size size = m_Window.GetSize();
    size.m_Width -= m_Panel ? Panel::WidthIn(size.m_Width) : 0;
    size.m_Height -= StatusHeightIn(size.m_Height);
    return size;
}

std::string TreeWindow::Status() const {
    if (const Search* search = m_Session.Searching()) {
        const std::string text = ToPrintable(Refer(search->Text()));
        return "/" + text + (search->HasFound() ? "" : "  \u2014  nothing is called so");
    }
    if (m_Reading) {
        return "reading " + m_Path + ", " + m_HowFar + "  \u2014  escape stops it";
    }
    if (!m_Scanned.empty()) {
        return "reading " + m_Scanned + "  \u2014  escape stops it";
    }
    const int32_t rows = CountRows(m_Session.Tree());
    const std::string selected = ToPrintable(Refer(LabelOf(SelectedPlace(m_Session.Tree()))));
    return m_Path + "  \u2014  " + std::to_string(rows) + (rows == 1 ? " row" : " rows") +
           (m_View.Failures()->IsEmpty() ? "" : ", not all could be read") +
           (m_WasStopped ? ", reading was stopped" : "") +
           (selected.empty() ? "" : "  \u2014  " + selected);
}

/// Once for each picture, however many changes there were.
void TreeWindow::TakeFolderNews() {
    m_Folders.m_Scans.RenewPatience();
    if (std::exchange(m_HasScanNews, false)) {
        const std::string before = std::exchange(m_Scanned, m_Folders.m_Scans.TakeNews());
        m_WasStopped &= m_Scanned.empty() || !before.empty();
        m_AreFoldersChanged |= m_Folders.m_Scans.HasAnswers();
        m_ScansWaker.Arm();
    }
    if (UntilFolders() == 0) {
        ReadChangedFolders();
    }
}

/// However quickly they change, a fifth of the time goes into it at most.
void TreeWindow::ReadChangedFolders() {
    constexpr uint64_t kRest = 4;
    const uint64_t begin = SDL_GetTicks64();
    m_AreFoldersChanged = false;
    m_Folders.m_Watch.Take();
    m_Session.ReadChangedFolders();
    m_WatchWaker.Arm();
    const uint64_t end = SDL_GetTicks64();
    m_FoldersRestUntil = end + kRest * (end - begin);
}

std::optional<int64_t> TreeWindow::UntilFolders() const {
    if (m_Reading || !m_AreFoldersChanged) {
        return {};
    }
    const uint64_t now = SDL_GetTicks64();
    return static_cast<int64_t>(std::max(m_FoldersRestUntil, now) - now);
}

void TreeWindow::TakeNews() {
    if (!std::exchange(m_HasNews, false)) {
        return;
    }
    m_HowFar = m_Reading->TakeNews();
    if (!m_HowFar.empty()) {
        m_ReadingWaker->Arm();
        return;
    }
    m_WasStopped = m_Reading->WasStopped();
    m_View.Show(std::exchange(m_Reading, nullptr)->Take());
    m_ReadingWaker.reset();
    m_Session.Note(m_WasStopped ? "reading stopped" : "reading ended", "");
    m_IsSet = true;
}

/// Draws only what changed, and shows it again when the window asks for that.
void TreeWindow::Update() {
    const Size size = m_Window.GetSize();
    m_Session.Resize(TreeSize());
    const bool isDrawn = m_Session.Draw(
        m_Picture, size, std::exchange(m_IsSet, false), m_Panel ? &*m_Panel : nullptr, Status());
    if (isDrawn || m_IsExposed) {
        m_Window.Show(m_Picture.Surface());
    }
    m_IsExposed = false;
}
