#include "host/data/Expansion.h"

#include "framework/interfaces/FileInterfaces.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "framework/runtime/QueryItem.h"

#include <vector>

namespace {

int32_t CountOf(ISuperCollection* collection) {
    int32_t count = 0;
    collection->GetCount(&count);
    return count;
}

SmartPtr<IUnknown> ItemAt(ISuperCollection* collection, int32_t index) {
    SmartPtr<IUnknown> item;
    collection->GetItem(index, item.Receive());
    return item;
}

void FillLazily(IUnknown* item) {
    const auto archive = Query<IFileArchive>(item);
    int32_t state = 0;
    if (archive && archive->GetContentState(CONTENTSTATE_ARCHIVE, &state) >= 0 && state == 0) {
        archive->Populate();
    }
}

int32_t LevelBelow(int32_t flags) {
    return (flags + 1) & NODE_LEVEL_MASK;
}

/// Gives the items below a node their level and makes them rows of the tree, or no rows any more.
void SetChildren(
    ISuperCollection* collection, int32_t index, ISuperCollection* children, bool isVisible) {
    int32_t flags = 0;
    collection->GetItemFlags(index, &flags);
    const int32_t common = LevelBelow(flags) | (isVisible ? NODE_VISIBLE : 0);
    for (int32_t i = 0; children->GetItemFlags(i, &flags) >= 0; ++i) {
        children->SetItemFlags(i, (flags & NODE_EXPANDED) | common);
    }
}

/// Opens a node and returns the collection below it, whose items are still to be shown; empty for a
/// leaf.
SmartPtr<ISuperCollection> OpenNode(ISuperCollection* collection, int32_t index) {
    const auto item = ItemAt(collection, index);
    auto children = QueryItem<ISuperCollection>(item.Get());
    if (!children) {
        return children;
    }
    FillLazily(item.Get());
    int32_t flags = 0;
    if (CountOf(children.Get()) > 0 && collection->GetItemFlags(index, &flags) >= 0) {
        collection->SetItemFlags(index, flags | NODE_EXPANDED);
    }
    return children;
}

using Collections = std::vector<SmartPtr<ISuperCollection>>;

/// Opens every node of some collections and returns the collections below that are new.
Collections OpenLevel(const Collections& level, Identities& seen) {
    Collections next;
    for (const auto& collection : level) {
        for (int32_t i = 0; i < CountOf(collection.Get()); ++i) {
            auto children = OpenNode(collection.Get(), i);
            if (children && seen.insert(IdentityOf(children.Get())).second) {
                SetChildren(collection.Get(), i, children.Get(), true);
                next.push_back(std::move(children));
            }
        }
    }
    return next;
}

} // namespace

int32_t FlagsBelow(int32_t flags) {
    return LevelBelow(flags) | ((flags & NODE_EXPANDED) != 0 ? NODE_VISIBLE : 0);
}

void OpenLevels(ISuperCollection* root, int32_t depth) {
    // Flags belong to the collection, so the items of each are shown once, where it comes first.
    Identities seen{IdentityOf(root)};
    Collections level{SmartPtr(root)};
    Collections opened = level; // keeps alive what `seen` knows by address
    for (int32_t done = 0; done < depth && !level.empty(); ++done) {
        level = OpenLevel(level, seen);
        opened.insert(opened.end(), level.begin(), level.end());
    }
}

OpenResult OpenRow(ISuperCollection* root, int32_t row) {
    OpenResult result = OpenResult::kNoSuchRow;
    int32_t current = 0;
    VisitRows(root, [&](ISuperCollection* collection, int32_t index, int32_t) {
        if (current++ != row) {
            return true;
        }
        const auto children = OpenNode(collection, index);
        if (children) {
            SetChildren(collection, index, children.Get(), true);
        }
        result = children ? OpenResult::kDone : OpenResult::kNothingBelow;
        return false;
    });
    return result;
}

bool ToggleNode(ISuperCollection* collection, int32_t index) {
    int32_t flags = 0;
    collection->GetItemFlags(index, &flags);
    const bool opens = (flags & NODE_EXPANDED) == 0;
    const auto children = opens ? OpenNode(collection, index) : CollectionBelow(collection, index);
    if (!children) {
        return false;
    }
    if (!opens) {
        collection->SetItemFlags(index, flags & ~NODE_EXPANDED);
    }
    SetChildren(collection, index, children.Get(), opens);
    return true;
}

void VisitRows(ISuperCollection* root, const RowVisitor& visitor) {
    ItemWalk walk(root, NODE_VISIBLE);
    for (const auto* path = walk.Next(); path; path = walk.Next()) {
        if (!visitor(path->back().m_Collection.Get(), path->back().m_Index, walk.Flags())) {
            return;
        }
    }
}
