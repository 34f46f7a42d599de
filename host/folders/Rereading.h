#pragma once

#include "framework/interfaces/CollectionInterfaces.h"

enum class FoldersRead {
    kAll,
    kChanged ///< by what their watch has heard
};

/// Brings all that was read of a tree of folders up to what is on disk now, from the root down:
/// what is gone is removed, what is new comes where it sorts, and what stays keeps its flag words
/// and what was read below it. Folders that were never read stay so; a root that is gone is empty.
/// A tree of something else stays as it is. True when something changed. Throws when memory runs
/// out.
bool ReadFoldersAgain(ISuperCollection* root, FoldersRead which = FoldersRead::kAll);
