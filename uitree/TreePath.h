#pragma once

#include "framework/Interfaces.h"
#include "uitree/NearVector.h"

#include <unordered_set>

/// The collections from the root of a walk down to where it stands. It refuses one that is already
/// on the path, so that a collection that contains itself does not make the walk endless. Holds no
/// references: whoever walks holds the collections until they are left.
class TreePath {
public:
    /// False when `collection` is on the path already; the path is unchanged then.
    bool Enter(ISuperCollection* collection);
    /// Leaves the collection entered last.
    void Leave();

private:
    bool Contains(const void* identity);

    ISuperCollection* m_Root = nullptr;
    /// Of the root it is asked only when something is entered below.
    NearVector<const void*, kNearLevels> m_Identities;
    std::unordered_set<const void*> m_Deep; ///< what lies below the first kNearLevels
};
