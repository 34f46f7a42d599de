#include "app/input/Keyboard.h"

#include "app/input/Milliseconds.h"
#include "framework/interfaces/TreeProperties.h"
#include "host/data/Expansion.h"
#include "host/text/Text.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::pair<std::wstring_view, Key> kCommands[] = {
    {L"+", Key::kPlus}, {L"-", Key::kMinus}, {L"*", Key::kAsterisk}};

int32_t FirstRowShown(IUITree* tree) {
    int32_t position = 0;
    tree->Inquire(PROP_SCROLLPOS, &position);
    return position;
}

void BringIntoView(IUITree* tree, int32_t row, int32_t rowsShown) {
    const int32_t first = FirstRowShown(tree);
    const int32_t wanted = std::clamp(first, std::max(row - rowsShown + 1, 0), row);
    if (wanted != first) {
        tree->Control(PROP_SCROLLPOS, wanted);
    }
}

/// Takes the marks off all rows: additive clicks may have left several.
void UnmarkRows(IUITree* tree) {
    VisitRows(RootOf(tree).Get(), [](ISuperCollection* collection, int32_t index, int32_t flags) {
        if ((flags & NODE_SELECTED) != 0) {
            collection->SetItemFlags(index, flags & ~NODE_SELECTED);
        }
        return true;
    });
}

SmartPtr<IUnknown> NodeAt(IUITree* tree, int32_t row) {
    SmartPtr<IUnknown> node;
    tree->get_Node(0, row, 0, node.Receive());
    return node;
}

/// The first visible item below a row.
SmartPtr<IUnknown> FirstChild(const Row& row) {
    SmartPtr<IUnknown> child;
    int32_t flags = 0;
    const auto children = CollectionBelow(row.m_Collection.Get(), row.m_Index);
    for (int32_t i = 0; children && !child && children->GetItemFlags(i, &flags) >= 0; ++i) {
        if ((flags & NODE_VISIBLE) != 0) {
            children->GetItem(i, child.Receive());
        }
    }
    return child;
}

int64_t RowFrom(int64_t row, Key key, int64_t last, int64_t rowsShown) {
    switch (key) {
    case Key::kUp:
        return row - 1;
    case Key::kDown:
        return row + 1;
    case Key::kPageUp:
        return row - rowsShown;
    case Key::kPageDown:
        return row + rowsShown;
    case Key::kHome:
        return 0;
    default:
        return last;
    }
}

} // namespace

int32_t Keyboard::Press(Key key, int32_t rowsShown) {
    const Row selected = Selected();
    const bool isMove = key < Key::kRight;
    if (isMove || !selected.IsFound()) {
        return GoBy(isMove ? key : Key::kDown, selected, rowsShown);
    }
    m_Row = selected.m_Number;
    const bool isOpen = (selected.m_Flags & NODE_EXPANDED) != 0;
    switch (key) {
    case Key::kRight:
        return OpenOrGoIn(selected, rowsShown);
    case Key::kLeft:
        return CloseOrGoOut(selected, rowsShown);
    case Key::kBackspace:
        return GoTo(ParentRow(m_Tree, selected).m_Number, rowsShown);
    case Key::kPlus:
        return isOpen ? S_FALSE : Toggle(selected);
    case Key::kMinus:
        return isOpen ? Toggle(selected) : S_FALSE;
    case Key::kAsterisk:
        m_Openings.emplace_back(selected.m_Collection);
        return GoOnOpening();
    default:
        return Toggle(selected);
    }
}

int32_t Keyboard::Type(std::string_view utf8, int32_t rowsShown) {
    const int64_t now = Milliseconds();
    const std::wstring text = ToWide(utf8);
    if (!m_TypeAhead.IsPending(now)) {
        const auto command = std::find_if(std::begin(kCommands), std::end(kCommands),
            [&text](const auto& each) { return text == each.first; });
        if (command != std::end(kCommands)) {
            return Press(command->second, rowsShown);
        }
    }
    m_TypeAhead.Add(text, now);
    const Row selected = Selected();
    const int32_t from = selected.m_Number + (selected.IsFound() && m_TypeAhead.MayStay() ? 0 : 1);
    return GoTo(RowLabelled(m_Tree, m_TypeAhead.Prefix(), from).m_Number, rowsShown);
}

bool Keyboard::IsTyping() const {
    return m_TypeAhead.IsPending(Milliseconds());
}

int32_t Keyboard::GoTo(int32_t row, int32_t rowsShown) {
    if (row < 0 || row >= CountRows(m_Tree)) {
        return S_FALSE;
    }
    if (std::exchange(m_AreSeveralMarked, false)) {
        UnmarkRows(m_Tree);
    }
    m_Tree->SelectNode(row, SELECT_ABSOLUTE | SELECT_CURRENT);
    m_Row = row;
    BringIntoView(m_Tree, row, rowsShown);
    return Announce(m_Tree);
}

int32_t Keyboard::ToggleSelected() {
    return Toggle(Selected());
}

int32_t Keyboard::RowShowing(IUnknown* node) const {
    return node && NodeAt(m_Tree, m_Row) == node ? m_Row : RowOfNode(m_Tree, node).m_Number;
}

Row Keyboard::Selected() const {
    SmartPtr<IUnknown> node;
    SmartPtr<IUnknown> collection;
    m_Tree->GetSelected(-1, SELECTED_NODE, node.Receive());
    if (m_Row < 0 || !node || !(NodeAt(m_Tree, m_Row) == node.Get())) {
        return SelectedRow(m_Tree);
    }
    Row row{.m_Number = m_Row};
    row.m_Index = m_Tree->GetSelected(-1, SELECTED_COLLECTION, collection.Receive());
    row.m_Collection = Query<ISuperCollection>(collection.Get());
    row.m_Collection->GetItemFlags(row.m_Index, &row.m_Flags);
    return row;
}

int32_t Keyboard::Toggle(const Row& row) {
    const bool isToggled = row.IsFound() && ToggleNode(row.m_Collection.Get(), row.m_Index);
    return isToggled ? Announce(m_Tree) : S_FALSE;
}

int32_t Keyboard::GoBy(Key key, const Row& from, int32_t rowsShown) {
    const int32_t last = CountRows(m_Tree) - 1;
    const bool isStart = !from.IsFound() && key != Key::kHome && key != Key::kEnd;
    const int64_t row =
        isStart ? FirstRowShown(m_Tree) : RowFrom(from.m_Number, key, last, rowsShown);
    return last < 0 ? S_FALSE
                    : GoTo(static_cast<int32_t>(std::clamp<int64_t>(row, 0, last)), rowsShown);
}

int32_t Keyboard::OpenOrGoIn(const Row& row, int32_t rowsShown) {
    if ((row.m_Flags & NODE_EXPANDED) == 0) {
        return Toggle(row);
    }
    const auto child = FirstChild(row);
    const bool isNext = child && NodeAt(m_Tree, row.m_Number + 1) == child.Get();
    return isNext ? GoTo(row.m_Number + 1, rowsShown) : S_FALSE;
}

int32_t Keyboard::CloseOrGoOut(const Row& row, int32_t rowsShown) {
    const bool isOpen = (row.m_Flags & NODE_EXPANDED) != 0;
    return isOpen ? Toggle(row) : GoTo(ParentRow(m_Tree, row).m_Number, rowsShown);
}

int32_t Keyboard::GoOnOpening() {
    const bool isAnyOpened = m_Openings.back().GoOn(m_Turns.Begin());
    if (m_Openings.back().IsOver()) {
        m_Openings.pop_back();
    }
    const Turn after;
    m_Row = SelectedRow(m_Tree).m_Number; // rows have come above it
    m_Turns.NoteCost(after.Past());
    return isAnyOpened ? Announce(m_Tree) : S_FALSE;
}
