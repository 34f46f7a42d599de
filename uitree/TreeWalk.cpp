#include "uitree/TreeWalk.h"

#include <algorithm>
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
    if (std::exchange(m_IsOnRow, false)) {
        Descend();
    }
    m_Item.Reset();
    while (!m_Levels->empty()) {
        const int32_t nextMark = marks ? marks->Next() : kEndless;
        if (!SeekInLevel(std::min(row, nextMark))) {
            m_Levels->pop_back();
            m_Path.Leave();
        } else if (m_Seen == kEndless) {
            return false; // there are more rows than numbers
        } else if (m_IsOnRow) {
            if (m_Seen == nextMark) {
                marks->Add(*m_Levels);
            }
            ++m_Seen;
            if (row < m_Seen) {
                return true;
            }
            m_IsOnRow = false;
            Descend();
            m_Item.Reset();
        }
    }
    return false;
}

/// Goes on in the current collection up to the visible row `stop`, where it stands then, or into
/// the first collection below, whichever comes first; false when there is neither. This is where
/// the time of every operation on the shown rows goes: beside the host's calls there is next to
/// nothing.
bool TreeWalk::SeekInLevel(int32_t stop) {
    Level& level = m_Levels->back();
    ISuperCollection& collection = *level.m_Collection.Get();
    const int32_t count = level.m_Count;
    int32_t index = level.m_Index;
    int32_t seen = m_Seen;
    while (++index < count) {
        if ((FlagsOf(collection, index) & NODE_VISIBLE) == 0) {
            continue;
        }
        if (seen == stop) {
            m_IsOnRow = true;
            break;
        }
        ++seen;
        const SmartPtr<IUnknown> item = ItemOf(collection, index);
        if (auto children = IsCollection(item.Get())) {
            level.m_Index = index;
            m_Seen = seen;
            if (Enter(std::move(children))) { // which may move the levels
                return true;
            }
        }
    }
    level.m_Index = index;
    m_Seen = seen;
    return m_IsOnRow;
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

bool TreeWalk::Back() {
    m_Item.Reset();
    while (!m_Levels->empty()) {
        Level& level = m_Levels->back();
        if (--level.m_Index < 0) { // the row before is the one that led here
            m_Levels->pop_back();
            m_Path.Leave();
            break;
        }
        if ((FlagsOf(*level.m_Collection.Get(), level.m_Index) & NODE_VISIBLE) == 0) {
            continue;
        }
        const auto item = ItemOf(*level.m_Collection.Get(), level.m_Index);
        auto children = IsCollection(item.Get());
        if (!children || !Enter(std::move(children))) {
            break;
        }
        m_Levels->back().m_Index = m_Levels->back().m_Count; // the last row below comes first
    }
    --m_Seen;
    return !m_Levels->empty();
}

bool TreeWalk::MoveTo(int32_t row) {
    while (m_Seen > row + 1) {
        if (!Back()) {
            return false;
        }
    }
    return m_Seen == row + 1 || SeekRow(row);
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

bool TreeWalk::Enter(SmartPtr<ISuperCollection> collection) {
    const int32_t count = CountOf(*collection.Get());
    if (count == 0 || !m_Path.Enter(collection.Get())) {
        return false;
    }
    m_Levels->push_back({std::move(collection), count});
    return true;
}
