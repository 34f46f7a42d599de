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

/// Whether somebody beside the caller, who has one reference, holds an object.
bool IsHeldElsewhere(IUnknown* object) {
    object->AddRef();
    return object->Release() > 1;
}

/// The collections that were opened, which may be met again unless they were made for who asked.
class Opened {
public:
    /// False when it was opened before.
    bool Add(const SmartPtr<ISuperCollection>& collection) {
        if (!IsHeldElsewhere(collection.Get())) {
            return true;
        }
        const bool isNew = m_Identities.insert(IdentityOf(collection.Get())).second;
        if (isNew) {
            m_Collections.push_back(collection);
        }
        return isNew;
    }

private:
    Identities m_Identities;
    std::vector<SmartPtr<ISuperCollection>> m_Collections; ///< keeps their addresses theirs
};

} // namespace

int32_t FlagsBelow(int32_t flags) {
    return LevelBelow(flags) | ((flags & NODE_EXPANDED) != 0 ? NODE_VISIBLE : 0);
}

void OpenLevels(ISuperCollection* root, int32_t depth) {
    // Flags belong to the collection, so the items of each are shown once, where it comes first.
    Opened opened;
    std::vector<Place> path;
    if (depth > 0 && opened.Add(SmartPtr(root))) {
        path.push_back({SmartPtr(root), 0});
    }
    while (!path.empty()) {
        const auto& [collection, index] = path.back();
        if (index >= CountOf(collection.Get())) {
            path.pop_back();
            continue;
        }
        auto children = OpenNode(collection.Get(), index);
        const bool isNew = children && opened.Add(children);
        if (isNew) {
            SetChildren(collection.Get(), index, children.Get(), true);
        }
        ++path.back().m_Index;
        if (isNew && static_cast<int32_t>(path.size()) < depth) {
            path.push_back({std::move(children), 0});
        }
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
