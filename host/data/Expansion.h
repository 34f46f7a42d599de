#pragma once

#include "host/data/ItemWalk.h"

#include <functional>

// The view state of a tree is the flag words of its collections, so the host opens nodes by writing
// them. Nothing here recurses, and a collection that contains itself, directly or deeper, is not
// descended into again below itself.

/// Opens every node down to a depth: 0 opens nothing, 1 the items of `root`, 2 those below them as
/// well. Folders are read on the way; what is empty stays closed. Throws when memory runs out.
void OpenLevels(ISuperCollection* root, int32_t depth);

enum class OpenResult {
    kDone,        ///< open, or left closed because there is nothing in it
    kNoSuchRow,   ///< the tree has fewer rows
    kNothingBelow ///< the row is not a collection
};

/// Opens the node in a row, which is counted from 0 over the visible rows.
OpenResult OpenRow(ISuperCollection* root, int32_t row);

/// Opens a closed node and closes an open one. What is open below it stays so and is shown again
/// with it. False for a leaf.
bool ToggleNode(ISuperCollection* collection, int32_t index);

/// The flags of an item that comes below a node with these.
int32_t FlagsBelow(int32_t flags);

/// Called for each visible row with the collection that holds it (borrowed), its index there and
/// its flags; answers whether to go on.
using RowVisitor = std::function<bool(ISuperCollection* collection, int32_t index, int32_t flags)>;

/// Walks the visible rows in display order.
void VisitRows(ISuperCollection* root, const RowVisitor& visitor);
