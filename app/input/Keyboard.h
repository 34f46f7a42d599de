#pragma once

#include "app/input/Input.h"
#include "app/input/Opening.h"
#include "app/input/TypeAhead.h"
#include "app/tree/Rows.h"

#include <optional>
#include <vector>

/// What the host does with the control when a key is pressed or a row is double-clicked, by the
/// control's public operations and the flag words of the data. The control itself hears no keys.
///
/// The control knows its selected node and not which row shows it, and a walk to it takes as long
/// as the tree has rows. So the row is remembered, and checked by the node that the control has
/// there: where collections have a version, a key costs the same in a tree of any size.
///
/// `rowsShown` is the number of rows that the control's rectangle has room for, at least 1.
class Keyboard {
public:
    /// `tree` outlives it.
    explicit Keyboard(IUITree* tree) : m_Tree(tree) {}

    /// Up, down, page-up, page-down, home and end select a row and bring it into view; right opens
    /// a folder or goes to its first child; left closes a folder or goes to its parent; enter opens
    /// or closes a folder; backspace goes to the parent, plus opens, minus closes, and asterisk
    /// opens all folders beside the selected row. Without a selection the first row shown is
    /// selected. S_FALSE when the key has nothing to do.
    int32_t Press(Key key, int32_t rowsShown);

    /// Goes to the next row whose label begins with what is typed, in whatever case, from the
    /// selected row on and then from the first. Folders are not opened for it. '+', '-' and '*' are
    /// keys where they do not go on with something. S_FALSE when there is none.
    int32_t Type(std::string_view utf8, int32_t rowsShown);
    /// Whether asterisk has not opened all yet, since that is limited to a turn.
    bool IsOpening() const { return !m_Openings.empty(); }
    /// Opens on, for a turn. S_FALSE when nothing was opened.
    int32_t GoOnOpening();
    void StopOpening() { m_Openings.clear(); }
    void LimitTurns(std::chrono::milliseconds limit) { m_Turns.Limit(limit); }

    /// Whether letters were typed so lately that the next ones go on with them.
    bool IsTyping() const;

    /// Makes a row the only selected one and brings it into view. S_FALSE when there is no such
    /// row.
    int32_t GoTo(int32_t row, int32_t rowsShown);
    /// Opens or closes the selected row. S_FALSE for a leaf.
    int32_t ToggleSelected();
    /// The number of the row that a key went to last.
    std::optional<int32_t> LastRow() const {
        return m_Row >= 0 ? std::optional(m_Row) : std::nullopt;
    }
    /// The row that shows a node; a negative number when none does.
    int32_t RowShowing(IUnknown* node) const;

    /// The pointer is on a row, which may become the selected one.
    void NoteRow(int32_t row) { m_Row = row; }
    /// Something may leave several rows marked: a key takes the marks off then.
    void NoteMarks() { m_AreSeveralMarked = true; }
    bool MayHaveMarks() const { return m_AreSeveralMarked; }

private:
    Row Selected() const;
    int32_t Toggle(const Row& row);
    int32_t GoBy(Key key, const Row& from, int32_t rowsShown);
    int32_t OpenOrGoIn(const Row& row, int32_t rowsShown);
    int32_t CloseOrGoOut(const Row& row, int32_t rowsShown);

    IUITree* m_Tree;
    int32_t m_Row = -1; ///< where the selected node is likely to be
    bool m_AreSeveralMarked = false;
    TypeAhead m_TypeAhead;
    std::vector<Opening> m_Openings; ///< of which the last goes on
    Turns m_Turns;
};
