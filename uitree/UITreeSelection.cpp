#include "uitree/Geometry.h"
#include "uitree/UITreeImpl.h"

// The selected node, and the announcement of changes.

int32_t CUITree::SelectNode(int32_t row, int32_t flags) {
    return Perform([&] {
        const int64_t position = ScrollPos();
        const int64_t offset = (flags & SELECT_ABSOLUTE) != 0 ? 0 : position;
        NodeAddress target{.m_Collection = {}, .m_Index = -1};
        get_VisibleIndex(m_Collection.Get(), Saturate(row - offset), &target.m_Index,
            target.m_Collection.Receive());
        if ((flags & SELECT_SCROLL) != 0) {
            Scroll(row);
        }
        SmartPtr<IUnknown> node;
        if ((flags & SELECT_UNMARKED) == 0 && target.m_Collection) {
            UnmarkSelected();
            node = ItemOf(*target.m_Collection.Get(), target.m_Index);
            const int32_t before = FlagsOf(*target.m_Collection.Get(), target.m_Index);
            m_Known.WriteFlags(
                *target.m_Collection.Get(), target.m_Index, before, before | NODE_SELECTED);
        }
        if ((flags & SELECT_CURRENT) != 0) {
            SetSelection(target);
            Fire_NodeSelect(Self(), NODESELECT_CLICK, target.m_Index, NODEACTION_NONE, node.Get());
        }
        return S_OK;
    });
}

int32_t CUITree::GetSelected(int32_t index, int32_t kind, IUnknown** result) {
    if (!result) {
        return E_POINTER;
    }
    *result = nullptr;
    return Perform([&] {
        SmartPtr<ISuperCollection> collection = m_SelectedCollection;
        const int32_t wanted = index == -1 ? m_SelectedIndex : index;
        if (!collection) {
            return E_FAIL;
        }
        switch (kind) {
        case SELECTED_NODE:
            return collection->GetItem(wanted, result);
        case SELECTED_DATA:
            return collection->GetItemData(wanted, result);
        case SELECTED_COLLECTION:
            *result = collection.Detach();
            return m_SelectedIndex;
        default:
            return E_FAIL;
        }
    });
}

int32_t CUITree::Refresh() {
    return Perform([&] {
        FIRE_UIItemChanged(Self(), 0);
        return S_OK;
    });
}

int32_t CUITree::Refresh(int32_t) {
    return Refresh();
}

/// Whatever changed inside the tree's data, listeners hear that the control itself changed.
/// A change that is announced from within another is passed on too, up to kDeepestChange within
/// each other. Several listeners that each announce another one multiply, so that all of them
/// together are no more than kMostChanges.
int32_t CUITree::UIItemChanged(IUnknown* /*item*/, int32_t /*flags*/) {
    return Perform([&] {
        m_ChangeRounds = m_ChangeDepth == 0 ? 0 : m_ChangeRounds + 1;
        if (m_ChangeDepth < kDeepestChange && m_ChangeRounds < kMostChanges) {
            ++m_ChangeDepth;
            Refresh();
            --m_ChangeDepth;
        }
        return S_OK;
    });
}

void CUITree::SetSelection(const NodeAddress& node) {
    m_SelectedIndex = node.m_Index;
    m_SelectedCollection = node.m_Collection;
}

void CUITree::UnmarkSelected() {
    if (const SmartPtr<ISuperCollection> collection = m_SelectedCollection) {
        Unmark(collection.Get(), m_SelectedIndex);
    }
}

/// Takes an item's selected bit, with all above it; an item that cannot be read is left alone.
void CUITree::Unmark(ISuperCollection* collection, int32_t index) {
    constexpr int32_t kKept = NODE_LEVEL_MASK | NODE_VISIBLE | NODE_EXPANDED;
    int32_t flags = 0;
    if (collection->GetItemFlags(index, &flags) >= 0) {
        m_Known.WriteFlags(*collection, index, flags, flags & kKept);
    }
}
