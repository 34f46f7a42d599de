#pragma once

#include "framework/interfaces/CollectionInterfaces.h"

enum class RereadParts {
    kAll,
    kChanged ///< by what their watch has heard, and what was read beside the window's thread
};

/// Brings all that was read of a tree up to what is behind it now, from the root down. Of folders
/// what is gone is removed, what is new comes where it sorts, and what stays keeps its flag words
/// and what was read below it; a root that is gone is empty. What is being read beside the window's
/// thread is taken as far as it is there. What was never read stays so, and what never changes
/// stays as it is. True when something changed. Throws when memory runs out.
bool RereadTree(ISuperCollection* root, RereadParts which = RereadParts::kAll);
