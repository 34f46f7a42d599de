#include "host/data/Expansion.h"

#include "framework/interfaces/FileInterfaces.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "framework/runtime/QueryItem.h"

#include <algorithm>
#include <unordered_map>
#include <utility>
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

/// The way down to where nodes are opened, and the collections that were on it.
class OpenedPath {
public:
    /// Goes on into a collection, unless it was entered before at most as deep. Whether it did.
    bool Enter(const SmartPtr<ISuperCollection>& collection) {
        const IUnknown* identity = IdentityOf(collection.Get());
        if (m_OnPath.contains(identity) || !IsLessDeep(collection, identity)) {
            return false;
        }
        m_OnPath.insert(identity);
        m_Path.push_back({collection, 0});
        return true;
    }
    void Leave() {
        m_OnPath.erase(IdentityOf(m_Path.back().m_Collection.Get()));
        m_Path.pop_back();
    }
    size_t Depth() const { return m_Path.size(); }
    Place& Last() { return m_Path.back(); }

private:
    /// What nobody else holds was made for who asked, and is not met again.
    bool IsLessDeep(const SmartPtr<ISuperCollection>& collection, const IUnknown* identity) {
        if (!IsHeldElsewhere(collection.Get())) {
            return true;
        }
        const auto [before, isNew] = m_Depths.try_emplace(identity, Depth());
        if (isNew) {
            m_Entered.push_back(collection);
            return true;
        }
        const size_t depth = std::exchange(before->second, std::min(before->second, Depth()));
        return Depth() < depth;
    }

    std::vector<Place> m_Path;
    Identities m_OnPath;
    std::unordered_map<const IUnknown*, size_t> m_Depths;
    std::vector<SmartPtr<ISuperCollection>> m_Entered; ///< keeps their addresses theirs
};

} // namespace

int32_t FlagsBelow(int32_t flags) {
    return LevelBelow(flags) | ((flags & NODE_EXPANDED) != 0 ? NODE_VISIBLE : 0);
}

void OpenLevels(ISuperCollection* root, int32_t depth) {
    // Flags belong to the collection, so the items of each are shown once, where it is least deep.
    OpenedPath path;
    path.Enter(SmartPtr(root));
    while (path.Depth() > 0) {
        const auto [collection, index] = path.Last();
        if (static_cast<int32_t>(path.Depth()) > depth || index >= CountOf(collection.Get())) {
            path.Leave();
            continue;
        }
        ++path.Last().m_Index;
        const auto children = OpenNode(collection.Get(), index);
        if (children && path.Enter(children)) {
            SetChildren(collection.Get(), index, children.Get(), true);
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
