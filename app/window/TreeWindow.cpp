#include "app/window/TreeWindow.h"

#include "app/view/StatusLine.h"
#include "host/components/HostInterfaces.h"
#include "host/text/Text.h"

#include <SDL.h>
#include <algorithm>
#include <climits>
#include <filesystem>

namespace {

/// The name of what is shown, and not the way to it.
std::string TitleOf(const std::string& path) {
    const std::string name = std::filesystem::path(path).filename().string();
    return ToPrintable(Refer(ToWide(name.empty() ? path : name))) + " \u2014 treehost";
}

} // namespace

TreeWindow::TreeWindow(const ShownTree& shown, Size size, std::ostream& record)
    : m_View(shown.m_View), m_ShownPath(ToPrintable(Refer(ToWide(shown.m_Path)))),
      m_Window(TitleOf(shown.m_Path), size),
      m_Session(m_View.Control(), m_Window.GetSize(), record),
      m_Updates(shown.m_Watch, shown.m_Reads, m_Session), m_Reading(shown.m_Reading),
      m_Panel(m_Session) {
    constexpr std::chrono::milliseconds kTurn(20);
    m_Session.LimitTurns(kTurn);
}

void TreeWindow::Run() {
    while (!m_IsClosed) {
        TakeNews();
        for (const Input& input : m_Input.TakeDue()) {
            Feed(input);
        }
        m_Session.GoOn();
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
    const auto untilUpdate = m_Reading.IsOn() ? std::nullopt : m_Updates.UntilNext();
    const auto untilWork = m_Session.IsAtWork() ? std::optional<int64_t>(0) : std::nullopt;
    for (const auto until :
        {m_Session.UntilNextPicture(), m_Input.UntilNext(), untilUpdate, untilWork}) {
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
    m_Updates.Hear(event);
    m_Reading.Hear(event);
    if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_LEAVE) {
        m_Session.NoteLeft();
    }
    const Size size = m_Window.GetSize();
    if (HandleKey(event) || m_Panel.HandleFinger(event, size)) {
        return;
    }
    for (const Input& input : m_Input.Translate(event, size, m_Window.PerStep())) {
        if (m_Panel.HandlePointer(input, size)) {
            m_Session.NoteLeft();
        } else {
            Feed(input);
        }
    }
    if (const auto copied = m_Session.TakeCopied()) {
        Window::Copy(*copied);
    }
}

bool TreeWindow::HandleKey(const SDL_Event& event) {
    const bool isKey = event.type == SDL_KEYDOWN;
    const SDL_Keycode code = isKey ? event.key.keysym.sym : SDLK_UNKNOWN;
    const bool isSwitch = code == SDLK_ESCAPE || code == SDLK_F2;
    if (isSwitch && event.key.repeat != 0) {
        return true; // one key held down does not close the panel and then the window
    }
    if (m_Panel.IsOpen()) {
        return m_Panel.HandleKey(event);
    }
    if (code == SDLK_F2) {
        m_Panel.Open();
    }
    return code == SDLK_ESCAPE ? HandleEscape() : isSwitch;
}

/// Ends what goes on: a search or the opening of folders, or else a reading, or else the window.
bool TreeWindow::HandleEscape() {
    if (m_Session.Searching() || m_Session.IsOpening()) {
        m_Session.Feed(KeyInput{Key::kEscape});
    } else if (m_Reading.IsOn()) {
        m_Reading.Stop();
    } else if (!m_Updates.Reading().empty() || m_Session.IsReadingAll()) {
        m_Updates.Stop();
    } else {
        m_IsClosed = true;
    }
    return true;
}

void TreeWindow::Feed(const Input& input) {
    const auto* key = std::get_if<KeyInput>(&input);
    if (key && key->m_Key == Key::kF5 && Query<IHostFolder>(m_View.Source())) {
        m_Reading.ForgetStop();
        m_Updates.ForgetStop();
    }
    m_Updates.HearUser();
    m_Session.Feed(input);
}

Size TreeWindow::TreeSize() const {
    Size size = m_Window.GetSize();
    size.m_Width = m_Panel.WidthBeside(size.m_Width);
    size.m_Height -= StatusHeightIn(size.m_Height);
    return size;
}

std::string TreeWindow::Status() {
    if (const Search* search = m_Session.Searching()) {
        const std::string text = "/" + ToPrintable(Refer(search->Text()));
        if (search->IsOn()) {
            return text + "  \u2014  searching\u2026";
        }
        return text + (search->HasFound() ? "" : "  \u2014  nothing is called so");
    }
    if (m_Session.IsOpening()) {
        return "opening folders\u2026  \u2014  escape stops it";
    }
    if (m_Reading.IsOn()) {
        return "reading " + m_ShownPath + ", " + m_Reading.HowFar() + "  \u2014  escape stops it";
    }
    if (!m_Updates.Reading().empty()) {
        return "reading " + m_Updates.Reading() + "  \u2014  escape stops it";
    }
    const bool wasStopped = m_Reading.WasStopped() || m_Updates.WasStopped();
    const int32_t rows = CountRows(m_Session.Tree());
    const std::string selected = ToPrintable(Refer(LabelOf(SelectedPlace(m_Session.Tree()))));
    const int32_t marked = m_Session.CountSelected();
    const auto unread = m_View.Failures()->Lines();
    return m_ShownPath + "  \u2014  " + std::to_string(rows) + (rows == 1 ? " row" : " rows") +
           (unread.empty() ? "" : ", " + ToPrintable(Refer(ToWide(unread.back())))) +
           (wasStopped ? ", reading was stopped" : "") +
           (marked > 1 ? "  \u2014  " + std::to_string(marked) + " selected" : "") +
           (selected.empty() ? "" : "  \u2014  " + selected);
}

/// Before each picture.
void TreeWindow::TakeNews() {
    if (auto read = m_Reading.Take()) {
        m_View.Show(std::move(*read));
        m_Session.Note(m_Reading.WasStopped() ? "reading stopped" : "reading ended", "");
        m_IsShownAnew = true;
    }
    if (!m_Reading.IsOn()) {
        m_Updates.Update();
    }
}

/// Draws only what changed, and shows it again when the window asks for that.
void TreeWindow::Update() {
    m_Session.Resize(TreeSize());
    m_IsShownAnew |= m_Panel.TakeSet();
    const bool isDrawn = m_Session.Draw(m_Picture,
        {.m_Size = m_Window.GetSize(), .m_Panel = m_Panel.Shown(), .m_Status = Status()},
        std::exchange(m_IsShownAnew, false));
    if (isDrawn || m_IsExposed) {
        m_Window.Show(m_Picture.Surface());
    }
    m_IsExposed = false;
}
