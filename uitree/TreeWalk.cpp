#include "uitree/TreeWalk.h"

#include <limits>
#include <utility>

TreeWalk::TreeWalk(ISuperCollection* root) {
    if (root) {
        Enter(SmartPtr(root));
    }
}

bool TreeWalk::Next() {
    while (!m_Levels.empty()) {
        Level& level = m_Levels.back();
        level.item.Reset();
        if (++level.index < level.count) {
            return true;
        }
        m_Levels.pop_back();
        m_Path.Leave();
    }
    return false;
}

bool TreeWalk::SeekRow(int32_t row) {
    while (m_Seen < std::numeric_limits<int32_t>::max() && Next()) {
        if ((Flags() & NODE_VISIBLE) == 0) {
            continue;
        }
        if (row < ++m_Seen) {
            return true;
        }
        Descend();
    }
    return false;
}

IUnknown* TreeWalk::Item() {
    Level& level = m_Levels.back();
    if (!level.item) {
        level.collection->GetItem(level.index, level.item.Receive());
    }
    return level.item.Get();
}

void TreeWalk::Descend() {
    if (auto collection = IsCollection(Item())) {
        Enter(std::move(collection));
    }
}

void TreeWalk::Enter(SmartPtr<ISuperCollection> collection) {
    if (m_Path.Enter(collection.Get())) {
        const int32_t count = CountOf(*collection.Get());
        m_Levels.push_back({std::move(collection), count});
    }
}
