#include "app/session/Session.h"

#include "app/tree/CopiedText.h"
#include "app/tree/KeptPlace.h"
#include "app/view/Hint.h"
#include "host/data/Expansion.h"
#include "host/text/Text.h"

#include <algorithm>

namespace {

constexpr int32_t kConnect = 1; ///< any flag but those of Advise that mean something

constexpr int32_t kNearBar = 20; ///< pixels left of it

bool Holds(const CANVASRect& rect, double x, double y) {
    return x >= rect.left && x < double(rect.left) + rect.width && y >= rect.top &&
           y < double(rect.top) + rect.height;
}

/// A double click is reported like a secondary press; what it was is known by what was fed.
bool IsPrimaryRelease(const Input& input) {
    const auto* pointer = std::get_if<PointerInput>(&input);
    return pointer && pointer->m_Action == POINTERACTION_RELEASE &&
           (pointer->m_State & POINTERSTATE_PRIMARY) != 0;
}

} // namespace

Session::Session(IUITree* tree, Size size, std::ostream& record)
    : m_Tree(tree), m_Size(size), m_Record(record), m_Keyboard(tree),
      m_Log(EventLog::Make(tree, record.good())) {
    if (const auto events = Query<IEventSource>(tree)) {
        events->Advise(m_Log->Identity(), kConnect);
    }
}

Session::~Session() {
    if (const auto events = Query<IEventSource>(m_Tree)) {
        events->Advise(m_Log->Identity(), ADVISE_DISCONNECT);
    }
}

void Session::Feed(const Input& input) {
    const int32_t status = std::visit([this](const auto& each) { return Perform(each); }, input);
    const EventLog::Heard heard = Note(ToText(input), StatusText(status));
    if (IsPrimaryRelease(input) && heard.m_Reported) {
        Activate(heard.m_Reported.Get());
    }
}

EventLog::Heard Session::Note(const std::string& text, const std::string& result) {
    EventLog::Heard heard = m_Log->Take();
    m_Record << text << (result.empty() ? "" : " -> ") << result << '\n';
    for (const std::string& line : heard.m_Lines) {
        m_Record << "  " << line << '\n';
    }
    m_Record.flush();
    m_IsChanged |= heard.m_NeedsDrawing;
    if (heard.m_NeedsDrawing) {
        m_Selected.reset();
    }
    if (heard.m_Action >= 0) {
        m_ClickToggled = heard.m_Action != NODEACTION_NONE;
    }
    return heard;
}

int32_t Session::Perform(const PointerInput& input) {
    CANVASRect rect{0, 0, m_Size.m_Width, m_Size.m_Height};
    NotePointer(input);
    const auto mouse = Query<IUIMouseInput>(m_Tree);
    return mouse ? mouse->Pointer(input.m_State, input.m_Action, input.m_Keys, input.m_X, input.m_Y,
                       &rect, nullptr)
                 : E_NOINTERFACE;
}

int32_t Session::Perform(const TouchInput& input) {
    CANVASRect rect{0, 0, m_Size.m_Width, m_Size.m_Height};
    const auto touch = Query<IUITouchInput>(m_Tree);
    return touch ? touch->Touch(0, 0, &rect, input.m_Phase, 0, 0, 0, 0, 0, input.m_PanY, 0, 0)
                 : E_NOINTERFACE;
}

int32_t Session::Perform(const KeyInput& input) {
    if (input.m_Key == Key::kCopy) {
        return Copy();
    }
    if (input.m_Key == Key::kF5) {
        m_Rereading.emplace(RootOf(m_Tree).Get(), RereadParts::kAll);
        return ReadAgain();
    }
    if (!m_Search && input.m_Key == Key::kEscape) {
        const bool wasOpening = IsOpening();
        m_Keyboard.StopOpening();
        return wasOpening ? S_OK : S_FALSE;
    }
    PrepareForKeys();
    return m_Search ? PressInSearch(input.m_Key) : m_Keyboard.Press(input.m_Key, RowsShown());
}

int32_t Session::PressInSearch(Key key) {
    switch (key) {
    case Key::kDown:
    case Key::kEnter:
        return SearchIn(Search::Direction::kForwards);
    case Key::kUp:
        return SearchIn(Search::Direction::kBackwards);
    case Key::kBackspace:
        if (m_Search->Erase()) {
            return SearchIn(Search::Direction::kStay);
        }
        m_Search.reset();
        return S_OK;
    default:
        m_Search.reset();
        return key == Key::kEscape ? S_OK : m_Keyboard.Press(key, RowsShown());
    }
}

int32_t Session::SearchIn(Search::Direction direction) {
    m_Search->Begin(direction);
    return SearchOn();
}

/// S_FALSE too while it is not over.
int32_t Session::SearchOn() {
    const bool isOver = m_Search->GoOn(m_Turns.Begin());
    return isOver ? m_Keyboard.GoTo(m_Search->Show().m_Number, RowsShown()) : S_FALSE;
}

void Session::GoOn() {
    if (IsOpening()) {
        const int32_t status = m_Keyboard.GoOnOpening();
        Note("opened", StatusText(status));
    }
    if (m_Search && m_Search->IsOn()) {
        GoOnSearching();
    }
}

void Session::GoOnSearching() {
    const int32_t status = SearchOn();
    if (!m_Search->IsOn()) {
        Note("search ended", StatusText(status));
    }
}

int32_t Session::Perform(const TypedInput& input) {
    PrepareForKeys();
    std::string_view text = input.m_Text;
    if (!m_Search && text.starts_with('/') && !m_Keyboard.IsTyping()) {
        m_Search.emplace(m_Tree);
        text.remove_prefix(1);
    }
    if (!m_Search) {
        return m_Keyboard.Type(text, RowsShown());
    }
    m_Search->Add(ToWide(text));
    return SearchIn(Search::Direction::kStay);
}

void Session::ReadChanged() {
    if (!m_Rereading) {
        m_Rereading.emplace(RootOf(m_Tree).Get(), RereadParts::kChanged);
    }
    Note("tree changed", StatusText(ReadAgain()));
}

/// For a turn.
int32_t Session::ReadAgain() {
    const Turn whole;
    const KeptPlace place(m_Tree);
    const Turn steps = m_Turns.Begin();
    const bool isChanged = m_Rereading->GoOn(steps);
    const Turn::Duration past = steps.Past();
    if (m_Rereading->IsOver()) {
        m_Rereading.reset();
    }
    if (!isChanged) {
        return S_FALSE;
    }
    TellScrollBar();
    m_Keyboard.NoteRow(place.Restore());
    m_Turns.NoteCost(whole.Past() - past); // which grows with the rows
    if (m_Search) {
        m_Search->BeginAnew();
    }
    return Announce(m_Tree);
}

void Session::StopReadingAll() {
    if (IsReadingAll()) {
        m_Rereading.emplace(RootOf(m_Tree).Get(), RereadParts::kChanged);
    }
}

int32_t Session::Copy() {
    const std::string text = CopiedText(m_Tree);
    if (text.empty()) {
        return S_FALSE;
    }
    m_Copied = text;
    Note("copy " + ToPrintable(Refer(ToWide(text))), "");
    return S_OK;
}

/// One by the control's word, or else by a look at all rows, once for each change.
int32_t Session::CountSelected() {
    if (!m_Keyboard.MayHaveMarks()) {
        return SelectedPlace(m_Tree).m_Collection ? 1 : 0;
    }
    if (!m_Selected) {
        m_Selected = 0;
        VisitRows(RootOf(m_Tree).Get(), [this](ISuperCollection*, int32_t, int32_t flags) {
            *m_Selected += (flags & NODE_SELECTED) != 0 ? 1 : 0;
            return true;
        });
    }
    return *m_Selected;
}

/// Rows may have come since the last drawing.
void Session::TellScrollBar() {
    CANVASRect rect{0, 0, m_Size.m_Width, m_Size.m_Height};
    SmartPtr<IUnknown> unused;
    m_Tree->HitTest(0, 0, &rect, unused.Receive());
}

void Session::PrepareForKeys() {
    TellScrollBar();
    m_IsKeyUsed = true;
    NoteLeft(); // the pointer marks nothing until it moves again
}

void Session::Activate(IUnknown* node) {
    const int32_t row = m_Keyboard.RowShowing(node);
    const int32_t status = m_Keyboard.GoTo(row, RowsShown());
    if (status == S_OK && !m_ClickToggled) {
        m_Keyboard.ToggleSelected();
    }
    Note("activate " + std::to_string(row), StatusText(status));
}

bool Session::Draw(KeptPicture& picture, Scene scene, bool isSet) {
    const bool isChanged = std::exchange(m_IsChanged, false) || isSet;
    scene.m_Tree = m_Tree;
    scene.m_Highlights = Marked();
    bool isDrawn = picture.Update(scene, isChanged);
    m_Shown = picture.Shown();
    scene.m_Highlights = Marked(); // something else may be under the pointer now
    isDrawn |= picture.Update(scene, false);
    return isDrawn;
}

std::optional<int32_t> Session::PointedRow() const {
    const auto row = m_Pointer && !IsOnBar() ? RowUnder(m_Tree, m_Pointer->m_Y) : std::nullopt;
    return row && *row < CountRows(m_Tree) ? row : std::nullopt;
}

bool Session::IsOnBar() const {
    return m_Pointer && Holds(m_Shown.m_Track, m_Pointer->m_X, m_Pointer->m_Y);
}

/// Whatever is done but moving over rows ends it, and it begins again with a move.
void Session::NoteDwell(const PointerInput& input) {
    const bool isMoved = m_Pointer && input.m_State == 0 && input.m_Action == POINTERACTION_MOVE;
    const NotedText* label = isMoved && !IsOnBar() ? CutLabelAt(m_Shown, m_Pointer->m_Y) : nullptr;
    if (label) {
        m_Dwell.Stay(label->m_Rect.top, Milliseconds());
    } else {
        m_Dwell.End();
    }
}

BarLook Session::LookOfBar() const {
    if (m_IsThumbHeld || !m_Pointer) {
        return m_IsThumbHeld ? BarLook::kHeld : BarLook::kSlim;
    }
    if (Holds(m_Shown.m_Thumb, m_Pointer->m_X, m_Pointer->m_Y)) {
        return BarLook::kPointed;
    }
    CANVASRect near = m_Shown.m_Track;
    near.left -= kNearBar;
    near.width += near.width > 0 ? kNearBar : 0;
    return Holds(near, m_Pointer->m_X, m_Pointer->m_Y) ? BarLook::kNear : BarLook::kSlim;
}

void Session::NotePointer(const PointerInput& input) {
    const bool isInside =
        input.m_X >= 0 && input.m_X < m_Size.m_Width && input.m_Y < m_Size.m_Height;
    m_Pointer = isInside ? std::optional(Point{input.m_X, input.m_Y}) : std::nullopt;
    NoteDwell(input);
    const bool isPrimary = (input.m_State & POINTERSTATE_PRIMARY) != 0;
    const bool isPress = input.m_Action == POINTERACTION_PRESS;
    m_IsThumbHeld = isPrimary && input.m_Action != POINTERACTION_RELEASE &&
                    (isPress ? Holds(m_Shown.m_Thumb, input.m_X, input.m_Y) : m_IsThumbHeld);
    const bool isButton = isPrimary || (input.m_State & POINTERSTATE_SECONDARY) != 0;
    const auto row = isButton ? PointedRow() : std::nullopt;
    if (row) {
        m_Keyboard.NoteRow(*row);
        m_IsKeyUsed = false;
    }
    if (isButton && input.m_Keys != 0) {
        m_Keyboard.NoteMarks();
    }
}

Highlights Session::Marked() const {
    return {.m_HasGuides = m_HasGuides,
        .m_Pointed = PointedRow(),
        .m_Focused = m_IsKeyUsed ? m_Keyboard.LastRow() : std::nullopt,
        .m_Hint = m_Dwell.Place(Milliseconds()),
        .m_Bar = LookOfBar()};
}

int32_t Session::RowsShown() const {
    int32_t rowHeight = 0;
    m_Tree->GetElementSize(nullptr, &rowHeight);
    return rowHeight > 0 ? std::max(m_Size.m_Height / rowHeight, 1) : 1;
}
