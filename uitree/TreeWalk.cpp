#include "uitree/TreeWalk.h"

#include <limits>
#include <utility>

TreeWalk::TreeWalk(ISuperCollection* root) {
    if (root) {
        Enter(SmartPtr(root));
    }
}

bool TreeWalk::Next() {
    m_Item.Reset();
    while (!m_Levels->empty()) {
        Level& level = m_Levels->back();
        if (++level.m_Index < level.m_Count) {
            return true;
        }
        m_Levels->pop_back();
        m_Path.Leave();
    }
    return false;
}

bool TreeWalk::SeekRow(int32_t row, RowMarks* marks) {
    int32_t nextMark = marks ? marks->Next() : -1;
    if (std::exchange(m_IsOnRow, false)) {
        Descend();
    }
    while (m_Seen < std::numeric_limits<int32_t>::max() && Next()) {
        if ((Flags() & NODE_VISIBLE) == 0) {
            continue;
        }
        if (m_Seen == nextMark) {
            marks->Add(*m_Levels);
            nextMark = marks->Next();
        }
        if (row < ++m_Seen) {
            m_IsOnRow = true;
            return true;
        }
        Descend();
    }
    return false;
}

bool TreeWalk::GoTo(const RowMark& mark) {
    for (int32_t i = 0; i < mark.m_Levels; ++i) {
        if (i > 0) {
            Descend();
        }
        if (static_cast<int32_t>(m_Levels->size()) != i + 1 ||
            mark.m_Indices[static_cast<size_t>(i)] >= m_Levels->back().m_Count) {
            return false;
        }
        m_Item.Reset();
        m_Levels->back().m_Index = mark.m_Indices[static_cast<size_t>(i)];
    }
    m_Seen = mark.m_Row + 1;
    m_IsOnRow = true;
    return true;
}

IUnknown* TreeWalk::Item() {
    if (!m_Item) {
        Collection()->GetItem(Index(), m_Item.Receive());
    }
    return m_Item.Get();
}

void TreeWalk::Descend() {
    if (auto collection = IsCollection(Item())) {
        Enter(std::move(collection));
    }
}

void TreeWalk::Enter(SmartPtr<ISuperCollection> collection) {
    if (m_Path.Enter(collection.Get())) {
        const int32_t count = CountOf(*collection.Get());
        m_Levels->push_back({std::move(collection), count});
    }
}
