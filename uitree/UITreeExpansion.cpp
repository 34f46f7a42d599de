#include "uitree/UITreeImpl.h"

#include <limits>

// What opens, closes, finds and inserts nodes.

namespace {

/// Makes the items of the collection that holds an opened node rows, closed and unselected.
void ShowSiblings(ISuperCollection& collection) {
    int32_t flags = 0;
    for (int32_t i = 0; i < std::numeric_limits<int32_t>::max(); ++i) {
        if (collection.GetItemFlags(i, &flags) < 0) {
            return;
        }
        collection.SetItemFlags(i, (flags & NODE_LEVEL_MASK) | NODE_VISIBLE);
    }
}

} // namespace

int32_t CUITree::MakeNodeVisible(IUnknown* collection, int32_t index) {
    return Perform([&] {
        const auto holding = IsCollection(collection);
        if (!holding) {
            return E_FAIL;
        }
        ShowSiblings(*holding.Get());
        const int32_t flags = FlagsOf(*holding.Get(), index);
        const int32_t kept = flags & (NODE_LEVEL_MASK | NODE_VISIBLE);
        holding->SetItemFlags(index, kept | NODE_EXPANDED);

        const auto node = ItemOf(*holding.Get(), index);
        if (const auto archive = Query<IFileArchive>(node.Get())) {
            FillOnce(*archive.Get(), CONTENTSTATE_ARCHIVE);
        }
        if (const auto children = IsCollection(node.Get())) {
            ShowChildren(*children.Get(), flags, true);
        }
        return S_OK;
    });
}

int32_t CUITree::CompactNodes() {
    return Perform([&] {
        const ObjectGuard guard(*this);
        Compact(m_Collection.Get(), true);
        return S_OK;
    });
}

int32_t CUITree::CompactSubNodes(ISuperCollection* collection) {
    return Perform([&] {
        Compact(collection, false);
        return S_OK;
    });
}

/// Closes and hides every visible item, and takes every other bit but the level. With
/// `keepRootRows` the items of `collection` itself are all closed, but stay visible if they are.
void CUITree::Compact(ISuperCollection* collection, bool keepRootRows) {
    TreeWalk walk(collection);
    while (walk.Next()) {
        const int32_t flags = walk.Flags();
        const bool keep = keepRootRows && walk.IsAtRoot();
        if (!keep && (flags & NODE_VISIBLE) == 0) {
            continue;
        }
        const int32_t kept = keep ? NODE_LEVEL_MASK | NODE_VISIBLE : NODE_LEVEL_MASK;
        walk.Collection()->SetItemFlags(walk.Index(), flags & kept);
        walk.Descend();
    }
}

int32_t CUITree::Find(
    ISuperCollection* collection, IUnknown* node, int32_t* index, ISuperCollection** owner) {
    const SmartPtr<ISuperCollection> searched(collection); // asking may unbind it
    const void* wanted = node ? IdentityOf(node) : nullptr;
    TreeWalk walk(collection);
    while (walk.Next()) {
        IUnknown* item = walk.Item();
        if (item == node || (item && node && IdentityOf(item) == wanted)) {
            *index = walk.Index();
            *owner = SmartPtr(walk.Collection()).Detach();
            return S_OK;
        }
        walk.Descend();
    }
    return E_INVALIDARG;
}

int32_t CUITree::Insert(IUnknown* reference, IUnknown* node, InsertAtConstants /*at*/,
    TrimFlags /*trim*/, ScrollFlags /*scroll*/) {
    return Perform([&] {
        NodeAddress place;
        const int32_t found =
            Find(m_Collection.Get(), reference, &place.m_Index, place.m_Collection.Receive());
        // The index in the reference's own collection serves as the row.
        put_Node(0, found < 0 ? -1 : place.m_Index, 0, node);
        return S_OK;
    });
}

int32_t CUITree::Clear() {
    return Perform([&] {
        m_SelectedCollection.Reset();
        EmptyOwnCollection();
        return S_OK;
    });
}
