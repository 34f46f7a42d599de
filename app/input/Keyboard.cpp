#include "app/input/Keyboard.h"

#include "app/settings/Parameters.h"
#include "app/view/Rows.h"
#include "host/data/Expansion.h"

#include <algorithm>

namespace {

/// Tells the listeners what the host changed, so that whoever shows the control draws it again.
int32_t Announce(IUITree* tree) {
    const auto refreshable = Query<IUIRefreshableObject>(tree);
    return refreshable ? refreshable->Refresh(0) : S_OK;
}

int32_t FirstRowShown(IUITree* tree) {
    int32_t position = 0;
    tree->Inquire(PARAMETER_SCROLLPOS, &position);
    return position;
}

void BringIntoView(IUITree* tree, int32_t row, int32_t rowsShown) {
    const int32_t first = FirstRowShown(tree);
    const int32_t wanted = std::clamp(first, std::max(row - rowsShown + 1, 0), row);
    if (wanted != first) {
        tree->Control(PARAMETER_SCROLLPOS, wanted);
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

int32_t OpenOrGoIn(IUITree* tree, const Row& row, int32_t rowsShown) {
    if ((row.m_Flags & NODE_EXPANDED) == 0) {
        return ToggleRow(tree, row.m_Number);
    }
    const bool hasChild = ParentRow(tree, RowAt(tree, row.m_Number + 1)).m_Number == row.m_Number;
    return hasChild ? GoToRow(tree, row.m_Number + 1, rowsShown) : S_FALSE;
}

int32_t CloseOrGoOut(IUITree* tree, const Row& row, int32_t rowsShown) {
    const bool isOpen = (row.m_Flags & NODE_EXPANDED) != 0;
    return isOpen ? ToggleRow(tree, row.m_Number)
                  : GoToRow(tree, ParentRow(tree, row).m_Number, rowsShown);
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

int32_t GoBy(IUITree* tree, Key key, const Row& from, int32_t rowsShown) {
    const int32_t last = CountRows(tree) - 1;
    const bool isStart = !from.IsFound() && key != Key::kHome && key != Key::kEnd;
    const int64_t row =
        isStart ? FirstRowShown(tree) : RowFrom(from.m_Number, key, last, rowsShown);
    return last < 0
               ? S_FALSE
               : GoToRow(tree, static_cast<int32_t>(std::clamp<int64_t>(row, 0, last)), rowsShown);
}

} // namespace

int32_t PressKey(IUITree* tree, Key key, int32_t rowsShown) {
    const Row selected = SelectedRow(tree);
    const bool isMove = key != Key::kRight && key != Key::kLeft && key != Key::kEnter;
    if (isMove || !selected.IsFound()) {
        return GoBy(tree, isMove ? key : Key::kDown, selected, rowsShown);
    }
    switch (key) {
    case Key::kRight:
        return OpenOrGoIn(tree, selected, rowsShown);
    case Key::kLeft:
        return CloseOrGoOut(tree, selected, rowsShown);
    default:
        return ToggleRow(tree, selected.m_Number);
    }
}

int32_t GoToRow(IUITree* tree, int32_t row, int32_t rowsShown) {
    if (row < 0 || row >= CountRows(tree)) {
        return S_FALSE;
    }
    UnmarkRows(tree);
    tree->SelectNode(row, SELECT_ABSOLUTE | SELECT_CURRENT);
    BringIntoView(tree, row, rowsShown);
    return Announce(tree);
}

int32_t ToggleRow(IUITree* tree, int32_t row) {
    const Row found = RowAt(tree, row);
    const bool isToggled = found.IsFound() && ToggleNode(found.m_Collection.Get(), found.m_Index);
    return isToggled ? Announce(tree) : S_FALSE;
}
