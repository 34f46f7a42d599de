#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"

#include <unordered_set>
#include <vector>

/// Where an item stands in a collection.
struct Place {
    SmartPtr<ISuperCollection> m_Collection;
    int32_t m_Index;
};

/// Addresses that tell collections apart, which are alive as long as their set is used.
using Identities = std::unordered_set<const IUnknown*>;

const IUnknown* IdentityOf(ISuperCollection* collection);

/// The collection below an item; empty when the item is a leaf.
SmartPtr<ISuperCollection> CollectionBelow(ISuperCollection* collection, int32_t index);

/// Goes through the items of a tree in display order, as far as they were read. It keeps its own
/// stack and does not enter a collection that it is in already. The tree may change meanwhile:
/// then items may be left out or come twice. Throws when memory runs out.
class ItemWalk {
public:
    /// Of an item without one of these flags neither it nor what is below it is visited.
    ItemWalk(ISuperCollection* root, int32_t neededFlags) : m_NeededFlags(neededFlags) {
        Descend(SmartPtr(root));
    }

    /// The places from the root down to the next item, until it is asked again; null at the end.
    const std::vector<Place>* Next();
    /// The flags of that item.
    int32_t Flags() const { return m_Flags; }

private:
    void Descend(SmartPtr<ISuperCollection> collection);
    void Ascend();

    int32_t m_NeededFlags;
    std::vector<Place> m_Path;
    std::vector<const IUnknown*> m_Identities; ///< of the collections on the path
    Identities m_OnPath;
    int32_t m_Flags = 0;
    bool m_IsAtItem = false; ///< what is below it is next
};
