#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "framework/runtime/SmartPtr.h"
#include "host/data/Expansion.h"

#include <optional>
#include <string_view>

/// A visible row of a control, and where its node is kept. A row that was not found has a negative
/// number and no collection.
struct Row {
    int32_t m_Number = -1;
    SmartPtr<ISuperCollection> m_Collection = {};
    int32_t m_Index = 0;
    int32_t m_Flags = 0;

    bool IsFound() const { return m_Number >= 0; }
};

/// The collection that a control shows; empty when it has none.
SmartPtr<ISuperCollection> RootOf(IUITree* tree);
int32_t CountRows(IUITree* tree);
/// Tells the listeners what the host changed, so that whoever shows the control draws it again.
int32_t Announce(IUITree* tree);

/// The row under a height in pixels below the control's upper edge, whether there is one or not;
/// nothing above it, and where rows have no height.
std::optional<int32_t> RowUnder(IUITree* tree, double y);

Row RowAt(IUITree* tree, int32_t number);
/// The first row at or after `from`, or else the first one, whose label begins so in whatever case.
Row RowLabelled(IUITree* tree, std::wstring_view beginning, int32_t from);
/// The first row that shows this node.
Row RowOfNode(IUITree* tree, IUnknown* node);
/// The first row whose node is, or stands for, this collection.
Row RowOfCollection(IUITree* tree, IUnknown* collection);
/// The row of an item. None while that is hidden.
Row RowOfItem(IUITree* tree, ISuperCollection* collection, int32_t index);
/// The row of the selected node. None while that is hidden.
Row SelectedRow(IUITree* tree);
/// The item that the control has as selected, shown or not; no collection without one.
Place SelectedPlace(IUITree* tree);
/// The item at a place; null for none.
SmartPtr<IUnknown> NodeAt(const Place& place);
/// What an item is called; empty for what has no name.
std::wstring LabelOf(const Place& place);
bool IsSame(const Place& first, const Place& second);
/// The row above under which `row` is indented.
Row ParentRow(IUITree* tree, const Row& row);
