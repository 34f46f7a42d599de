#include "app/input/Search.h"

#include "host/data/Expansion.h"
#include "host/text/Text.h"

#include <utility>

namespace {

/// Without the item itself.
void OpenFoldersOn(const std::vector<Place>& path) {
    for (size_t i = 0; i + 1 < path.size(); ++i) {
        int32_t flags = 0;
        path[i].m_Collection->GetItemFlags(path[i].m_Index, &flags);
        if ((flags & NODE_EXPANDED) == 0) {
            ToggleNode(path[i].m_Collection.Get(), path[i].m_Index);
        }
    }
}

} // namespace

bool Search::Erase() {
    if (m_Text.empty()) {
        return false;
    }
    m_Text.pop_back();
    return true;
}

void Search::Begin(Direction direction) {
    m_Looking.reset();
    const auto root = RootOf(m_Tree);
    if (!root || m_Text.empty()) {
        End({});
        return;
    }
    const Place selected = SelectedPlace(m_Tree);
    m_Looking.emplace(Looking{
        direction, Lowered(m_Text), selected, !selected.m_Collection, ItemWalk(root.Get(), 0)});
}

void Search::BeginAnew() {
    if (m_Looking) {
        Begin(m_Looking->m_Direction);
    }
}

bool Search::GoOn(const Turn& turn) {
    constexpr int kItems = 256; // between two looks at the clock
    while (m_Looking) {
        for (int i = 0; i < kItems && m_Looking; ++i) {
            const Path* path = m_Looking->m_Walk.Next();
            if (!path || IsNearest(*m_Looking, *path)) {
                End(std::move(m_Looking->m_Near.empty() ? m_Looking->m_Far : m_Looking->m_Near));
            }
        }
        if (turn.IsOver()) {
            break;
        }
    }
    return !m_Looking;
}

/// Notes an item that holds the text. Whether no other one can be nearer.
bool Search::IsNearest(Looking& looking, const Path& path) {
    const bool isSelected = !looking.m_IsBehind && IsSame(path.back(), looking.m_Selected);
    looking.m_IsBehind |= isSelected;
    if (Lowered(LabelOf(path.back())).find(looking.m_Wanted) == std::wstring::npos) {
        return false;
    }
    if (looking.m_Direction == Direction::kBackwards) {
        (looking.m_IsBehind ? looking.m_Far : looking.m_Near) = path;
        return false;
    }
    const bool mayBe = !isSelected || looking.m_Direction == Direction::kStay;
    const bool isNear = looking.m_IsBehind && mayBe;
    if (isNear || looking.m_Far.empty()) {
        (isNear ? looking.m_Near : looking.m_Far) = path;
    }
    return isNear;
}

void Search::End(Path found) {
    m_Found = std::move(found);
    m_HasFound = m_Text.empty() || !m_Found.empty();
    m_Looking.reset();
}

Row Search::Show() {
    const Path path = std::exchange(m_Found, {});
    if (path.empty()) {
        return {};
    }
    OpenFoldersOn(path);
    return RowOfItem(m_Tree, path.back().m_Collection.Get(), path.back().m_Index);
}
