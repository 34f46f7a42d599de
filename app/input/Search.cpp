#include "app/input/Search.h"

#include "host/text/Text.h"

namespace {

using Path = std::vector<Place>;

/// Without the item itself.
void OpenFoldersOn(const Path& path) {
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

Row Search::Find(Direction direction) {
    const Path path = m_Text.empty() ? Path() : PathTo(direction);
    m_HasFound = m_Text.empty() || !path.empty();
    if (path.empty()) {
        return {};
    }
    OpenFoldersOn(path);
    return RowOfItem(m_Tree, path.back().m_Collection.Get(), path.back().m_Index);
}

/// The nearest on the wanted side of the selected item, or else the farthest on the other side.
std::vector<Place> Search::PathTo(Direction direction) const {
    const auto root = RootOf(m_Tree);
    if (!root) {
        return {};
    }
    const std::wstring wanted = Lowered(m_Text);
    const Place selected = SelectedPlace(m_Tree);
    bool isBehind = !selected.m_Collection; // the selected item has been passed
    Path near;
    Path far;
    VisitItems(root.Get(), [&](const Path& path) {
        const bool isSelected = !isBehind && IsSame(path.back(), selected);
        isBehind |= isSelected;
        if (Lowered(LabelOf(path.back())).find(wanted) == std::wstring::npos) {
            return true;
        }
        if (direction == Direction::kBackwards) {
            (isBehind ? far : near) = path;
            return true;
        }
        const bool isNear = isBehind && (!isSelected || direction == Direction::kStay);
        if (isNear || far.empty()) {
            (isNear ? near : far) = path;
        }
        return !isNear;
    });
    return near.empty() ? far : near;
}
