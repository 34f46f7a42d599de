#pragma once

#include "uitree/TreeItems.h"
#include "uitree/TreePath.h"

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
/// std::bad_alloc.
class TreeWalk {
public:
    /// A walk through nothing when `root` is null.
    explicit TreeWalk(ISuperCollection* root);

    /// Moves to the next item: the first one below the current item after Descend, else its next
    /// sibling, else an ancestor's. False at the end.
    bool Next();
    /// Moves on to the visible row `row`, counted from 0 at the start of the walk and stepping over
    /// hidden items with everything below them. False at the end; Seen() is the number of rows
    /// then.
    bool SeekRow(int32_t row);
    /// The rows passed by SeekRow.
    int32_t Seen() const { return m_Seen; }

    /// The current item: the collection that holds it, its index there, its flag word (0 when it
    /// cannot be read) and the item itself, fetched on first use.
    ISuperCollection* Collection() const { return m_Levels.back().collection.Get(); }
    int32_t Index() const { return m_Levels.back().index; }
    int32_t Flags() const { return FlagsOf(*Collection(), Index()); }
    IUnknown* Item();
    bool IsAtRoot() const { return m_Levels.size() == 1; }

    /// Lets Next go below the current item when that is a collection.
    void Descend();

    /// The path down to the current item's collection.
    const TreePath& Path() const { return m_Path; }

private:
    struct Level {
        SmartPtr<ISuperCollection> collection;
        int32_t count;
        int32_t index = -1;
        SmartPtr<IUnknown> item = {};
    };

    void Enter(SmartPtr<ISuperCollection> collection);

    std::vector<Level> m_Levels;
    TreePath m_Path;
    int32_t m_Seen = 0;
};
