#pragma once

#include "framework/Interfaces.h"

#include <unordered_set>
#include <vector>

/// The collections from the root of a walk down to where it stands. It refuses one that is already
/// on the path, so that a collection that contains itself does not make the walk endless. Holds no
/// references: the walk holds the collections.
class TreePath {
public:
    /// False when `collection` is on the path already; the path is unchanged then.
    bool Enter(ISuperCollection* collection);
    /// Leaves the collection entered last.
    void Leave();

private:
    /// Up to here a scan of the identities is the quickest way to look one up.
    static constexpr size_t kShallow = 32;

    std::vector<const void*> m_Identities;
    std::unordered_set<const void*> m_Deep; ///< what lies below the first kShallow
};
