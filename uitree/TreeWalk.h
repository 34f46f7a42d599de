#pragma once

#include "uitree/RowMarks.h"
#include "uitree/TreeItems.h"
#include "uitree/TreePath.h"

#include <limits>

/// The one way through the tree: a depth-first walk in display order that goes below an item only
/// when told to.
///
///     TreeWalk walk(collection);
///     while (walk.Next()) {
///         if (walk.Flags() & NODE_VISIBLE) {
///             walk.Descend();
///         }
///     }
///
/// It keeps its own stack, so that depth costs memory and not the thread's stack, and never enters
/// a collection below itself. It holds a reference to every collection on the way down. Throws
/// std::bad_alloc, but not in trees of up to kNearLevels levels.
class TreeWalk {
public:
    /// A walk through nothing when `root` is null.
    explicit TreeWalk(ISuperCollection* root);

    /// Moves to the next item: the first one below the current item after Descend, else its next
    /// sibling, else an ancestor's. False at the end.
    bool Next();
    /// Moves on to the visible row `row`, counted from 0 at the start of the walk and stepping over
    /// hidden items with everything below them. False at the end; Seen() is the number of rows
    /// then. A row that the walk has passed is not found. Marks the rows on the way in `marks`.
    bool SeekRow(int32_t row, RowMarks* marks = nullptr);
    /// Puts a walk that has not begun on the row that was marked. False when the way there is no
    /// more; the walk is of no use then.
    bool GoTo(const RowMark& mark);
    /// Moves back to the row before the one that SeekRow or GoTo found. False at the beginning.
    bool Back();
    /// Moves from the row that SeekRow or GoTo found to another, there or back. False when there is
    /// none.
    bool MoveTo(int32_t row);
    /// Marks the current row, which SeekRow, GoTo or Back found, as the one found last.
    void MarkIn(RowMarks& marks) const { marks.Remember(m_Seen - 1, *m_Levels); }
    /// The rows passed by SeekRow.
    int32_t Seen() const { return m_Seen; }

    /// The current item: the collection that holds it, its index there, its flag word (0 when it
    /// cannot be read) and the item itself, fetched on first use.
    ISuperCollection* Collection() const { return m_Levels->back().m_Collection.Get(); }
    int32_t Index() const { return m_Levels->back().m_Index; }
    int32_t Flags() const { return FlagsOf(*Collection(), Index()); }
    IUnknown* Item();
    bool IsAtRoot() const { return m_Levels->size() == 1; }

    /// Lets Next go below the current item when that is a collection.
    void Descend();

    /// The path down to the current item's collection. Who enters more leaves it again.
    TreePath& Path() { return m_Path; }

private:
    static constexpr int32_t kEndless = std::numeric_limits<int32_t>::max();

    struct Level {
        SmartPtr<ISuperCollection> m_Collection;
        int32_t m_Count;
        int32_t m_Index = -1;
    };

    bool SeekInLevel(int32_t stop);
    /// False for a collection without items, as folders are that nobody has opened yet, and for one
    /// that the path leads through already.
    bool Enter(SmartPtr<ISuperCollection> collection);

    NearVector<Level, kNearLevels> m_Levels;
    TreePath m_Path;
    SmartPtr<IUnknown> m_Item; ///< the current one, once it was asked for
    int32_t m_Seen = 0;
    bool m_IsOnRow = false; ///< SeekRow has still to go below the current item
};
