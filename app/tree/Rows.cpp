#include "app/tree/Rows.h"

#include "framework/interfaces/TreeProperties.h"
#include "framework/support/REFString.h"
#include "host/data/Expansion.h"
#include "host/text/Text.h"

#include <cmath>

namespace {

/// The first row that a test accepts.
template <class Test>
Row FindRow(IUITree* tree, const Test& test) {
    Row found;
    const auto root = RootOf(tree);
    if (!root) {
        return found;
    }
    int32_t number = 0;
    VisitRows(root.Get(), [&](ISuperCollection* collection, int32_t index, int32_t flags) {
        const Row row{number++, SmartPtr(collection), index, flags};
        if (test(row)) {
            found = row;
        }
        return !found.IsFound();
    });
    return found;
}

bool BeginsWith(const Row& row, std::wstring_view beginning) {
    SmartPtr<IString> name;
    row.m_Collection->GetItemName(row.m_Index, name.Receive());
    const std::wstring_view label = ViewOf(CREFString(name.Get())).substr(0, beginning.size());
    return IsEqualIgnoringCase(Refer(label), Refer(beginning));
}

SmartPtr<ISuperCollection> CollectionBelow(const Row& row) {
    return CollectionBelow(row.m_Collection.Get(), row.m_Index);
}

} // namespace

SmartPtr<ISuperCollection> RootOf(IUITree* tree) {
    SmartPtr<IUnknown> root;
    tree->get_Collection(root.Receive());
    return Query<ISuperCollection>(root.Get());
}

int32_t CountRows(IUITree* tree) {
    int32_t rows = 0;
    tree->GetContainerSize(nullptr, &rows, nullptr);
    return rows;
}

int32_t Announce(IUITree* tree) {
    const auto refreshable = Query<IUIRefreshableObject>(tree);
    return refreshable ? refreshable->Refresh(0) : S_OK;
}

std::optional<int32_t> RowUnder(IUITree* tree, double y) {
    int32_t rowHeight = 0;
    int32_t first = 0;
    tree->GetElementSize(nullptr, &rowHeight);
    tree->Inquire(PROP_SCROLLPOS, &first);
    const double row = rowHeight > 0 ? first + std::floor(y / rowHeight) : -1;
    return y >= 0 && row >= 0 && row < INT32_MAX ? std::optional(static_cast<int32_t>(row))
                                                 : std::nullopt;
}

Row RowAt(IUITree* tree, int32_t number) {
    return FindRow(tree, [&](const Row& row) { return row.m_Number == number; });
}

Row RowLabelled(IUITree* tree, std::wstring_view beginning, int32_t from) {
    Row before;
    Row found = FindRow(tree, [&](const Row& row) {
        const bool isBefore = row.m_Number < from;
        if ((isBefore && before.IsFound()) || !BeginsWith(row, beginning)) {
            return false;
        }
        if (isBefore) {
            before = row;
        }
        return !isBefore;
    });
    return found.IsFound() ? found : before;
}

Row RowOfNode(IUITree* tree, IUnknown* node) {
    return node ? FindRow(tree,
                      [&](const Row& row) {
                          return NodeAt({row.m_Collection, row.m_Index}) == node;
                      })
                : Row{};
}

Row RowOfCollection(IUITree* tree, IUnknown* collection) {
    return FindRow(tree, [&](const Row& row) {
        const auto below = CollectionBelow(row);
        return below && IsSameObject(below.Get(), collection);
    });
}

Row RowOfItem(IUITree* tree, ISuperCollection* collection, int32_t index) {
    return FindRow(tree, [&](const Row& row) {
        return row.m_Index == index && IsSameObject(row.m_Collection.Get(), collection);
    });
}

Row SelectedRow(IUITree* tree) {
    const Place selected = SelectedPlace(tree);
    return RowOfItem(tree, selected.m_Collection.Get(), selected.m_Index);
}

Place SelectedPlace(IUITree* tree) {
    SmartPtr<IUnknown> collection;
    const int32_t index = tree->GetSelected(-1, SELECTED_COLLECTION, collection.Receive());
    return {Query<ISuperCollection>(collection.Get()), index};
}

SmartPtr<IUnknown> NodeAt(const Place& place) {
    SmartPtr<IUnknown> node;
    if (place.m_Collection) {
        place.m_Collection->GetItem(place.m_Index, node.Receive());
    }
    return node;
}

std::wstring LabelOf(const Place& place) {
    SmartPtr<IString> name;
    if (place.m_Collection) {
        place.m_Collection->GetItemName(place.m_Index, name.Receive());
    }
    return std::wstring(ViewOf(CREFString(name.Get())));
}

bool IsSame(const Place& first, const Place& second) {
    return first.m_Index == second.m_Index &&
           IsSameObject(first.m_Collection.Get(), second.m_Collection.Get());
}

Row ParentRow(IUITree* tree, const Row& row) {
    Row parent;
    if (IsSameObject(row.m_Collection.Get(), RootOf(tree).Get())) {
        return parent;
    }
    FindRow(tree, [&](const Row& above) {
        const auto below = CollectionBelow(above);
        if (above.m_Number < row.m_Number && IsSameObject(below.Get(), row.m_Collection.Get())) {
            parent = above;
        }
        return above.m_Number >= row.m_Number;
    });
    return parent;
}
