#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "framework/runtime/SmartPtr.h"

#include <string>
#include <vector>

/// What a control shows at its top and which node it has selected, known by name, while the host
/// changes the data beneath it. To the control both are numbers.
class KeptPlace {
public:
    /// `tree` outlives it.
    explicit KeptPlace(IUITree* tree);

    /// Scrolls to the row that was at the top, or else to the first of those below it that is still
    /// there, and makes the control's selection the node that it was, or none. Leaves the nodes'
    /// selected bits alone. The control knows its rows by then. The row of the selected node, or a
    /// negative number.
    int32_t Restore() const;

private:
    struct Item {
        SmartPtr<ISuperCollection> m_Collection = {};
        int32_t m_Index = -1;
        std::wstring m_Name = {};
    };
    class Finder;

    void RestoreSelection(int32_t index, int32_t row) const;

    IUITree* m_Tree;
    std::vector<Item> m_Top; ///< rows from the top on
    Item m_Selected;
    bool m_IsSelectedShown = false;
};
