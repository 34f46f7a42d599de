#include "uitree/Geometry.h"
#include "uitree/UITreeImpl.h"

#include "framework/runtime/OutParameter.h"

#include <algorithm>
#include <limits>

// The bound collection, and the way between row numbers and nodes.

namespace {

constexpr int32_t kRootFlags = NODE_VISIBLE | 1;
constexpr int32_t kSmallestIndent = 10; ///< pixels

} // namespace

int32_t CUITree::get_VisibleIndex(
    ISuperCollection* collection, int32_t row, int32_t* index, ISuperCollection** owner) {
    if (!collection || !owner || row < 0) {
        return E_INVALIDARG;
    }
    View view;
    view.m_Collection = SmartPtr(collection); // the host may unbind it whenever it is called
    view.m_Rows = std::numeric_limits<int32_t>::max();
    if (collection == m_Collection.Get()) {
        m_Known.Recall(view.m_Version, view.m_Rows);
    }
    std::optional<TreeWalk> walk;
    if (!FindRow(view, row, walk)) {
        Store(index, view.m_Rows);
        return E_INVALIDARG;
    }
    Store(index, walk->Index());
    *owner = SmartPtr(walk->Collection()).Detach();
    return S_OK;
}

int32_t CUITree::CountRows(ISuperCollection* collection, RowMarks* marks) {
    TreeWalk walk(collection);
    return walk.SeekRow(kNoRow, marks) ? walk.Index() : walk.Seen();
}

/// Without a row height, which a host object may just have taken away, there is no row.
void CUITree::GetElementPos(int32_t /*x*/, int32_t y, int32_t* row) const {
    const int64_t position = ScrollPos();
    *row = HasRowHeight() ? Saturate(y / m_ElementHeight + position) : -1;
}

SmartPtr<IUnknown> CUITree::NodeAt(View& view, int32_t y, NodeAddress& address) {
    int32_t row = 0;
    GetElementPos(0, y, &row);
    std::optional<TreeWalk> walk;
    if (!FindRow(view, row, walk)) {
        return {};
    }
    address.m_Collection = SmartPtr(walk->Collection());
    address.m_Index = walk->Index();
    return ItemOf(*walk->Collection(), walk->Index());
}

int32_t CUITree::get_Collection(IUnknown** collection) {
    if (!collection) {
        return E_POINTER;
    }
    *collection = SmartPtr(m_Collection).Detach();
    return *collection ? S_OK : E_INVALIDARG;
}

int32_t CUITree::put_Collection(IUnknown* collection) {
    return Perform([&] {
        const auto bound = Query<ISuperCollection>(collection);
        if (m_RenderStyle) {
            m_RenderStyle->SetStyleValueC(-1);
            m_RenderStyle->SetStyleValueA(0);
            m_RenderStyle->SetStyleValueB(1);
            m_RenderStyle->SetStyleValuePair(-1, 0);
        }
        if (m_UseDefaultStyle != 0) {
            ApplyDefaultSizes();
        }
        if (!bound) {
            return E_INVALIDARG;
        }
        const auto version = Query<ICollectionVersion>(bound.Get());
        const ObjectGuard guard(*this);
        EmptyOwnCollection();
        m_Known.Bind({}); // the old collection is the last to lose its reference
        m_Collection = bound;
        m_Known.Bind(version);
        m_OwnsCollection = false;
        for (int32_t i = CountOf(*bound.Get()) - 1; i >= 0; --i) {
            bound->SetItemFlags(i, kRootFlags);
        }
        Scroll(0);
        return S_OK;
    });
}

/// A collection of the host's is never emptied.
void CUITree::EmptyOwnCollection() {
    const SmartPtr<ISuperCollection> own = m_Collection;
    if (m_OwnsCollection && own) {
        own->RemoveAll();
    }
}

void CUITree::ApplyDefaultSizes() {
    const auto defaults = CreateHostObject<IUIPropInterrogate>("UIDefault");
    if (!defaults) {
        return;
    }
    defaults->Inquire(UIDEFAULT_ROWHEIGHT, &m_ElementHeight);
    int32_t textSize = 0;
    defaults->Inquire(UIDEFAULT_TEXTSIZE, &textSize);
    m_ElementHeight = std::max(m_ElementHeight, textSize);
    if (m_RenderStyle) {
        m_RenderStyle->SetStyleSize(textSize);
    }
}

int32_t CUITree::get_Node(int32_t, int32_t row, int32_t, IUnknown** node) {
    if (!node) {
        return E_POINTER;
    }
    *node = nullptr;
    return Perform([&] {
        NodeAddress found;
        const int32_t status =
            get_VisibleIndex(m_Collection.Get(), row, &found.m_Index, found.m_Collection.Receive());
        return status < 0 ? E_INVALIDARG : found.m_Collection->GetItem(found.m_Index, node);
    });
}

int32_t CUITree::put_Node(int32_t, int32_t row, int32_t, IUnknown* node) {
    return Perform([&] {
        NodeAddress place{.m_Collection = {}, .m_Index = row < 0 ? kNoRow : row};
        const int32_t resolved = get_VisibleIndex(
            m_Collection.Get(), place.m_Index, &place.m_Index, place.m_Collection.Receive());
        if (resolved < 0) {
            place.m_Collection = m_Collection;
        }
        if (!place.m_Collection) {
            return resolved;
        }
        const int32_t status = place.m_Collection->InsertItem(place.m_Index, 0, node, 0, 0);
        place.m_Collection->SetItemFlags(place.m_Index, kRootFlags);
        return status;
    });
}

int32_t CUITree::GetContainerSize(int32_t* columns, int32_t* rows, int32_t* layers) {
    Store(columns, 1);
    Store(layers, 1);
    return Perform([&] {
        SmartPtr<ISuperCollection> owner;
        get_VisibleIndex(m_Collection.Get(), kNoRow, rows, owner.Receive());
        return S_OK;
    });
}

int32_t CUITree::SetElementSize(int32_t /*width*/, int32_t height) {
    m_ElementHeight = height;
    m_IndentWidth = std::max(height, kSmallestIndent);
    return S_OK;
}

int32_t CUITree::GetElementSize(int32_t* width, int32_t* height) {
    Store(height, m_ElementHeight);
    Store(width, 0);
    return S_OK;
}
