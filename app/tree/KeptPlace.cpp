#include "app/tree/KeptPlace.h"

#include "app/tree/Rows.h"
#include "framework/interfaces/TreeProperties.h"
#include "host/data/Expansion.h"
#include "host/text/Text.h"

#include <map>
#include <unordered_map>

namespace {

constexpr int32_t kRowsKept = 64; // about what a window shows

std::wstring NameOf(ISuperCollection* collection, int32_t index) {
    SmartPtr<IString> name;
    collection->GetItemName(index, name.Receive());
    return std::wstring(ViewOf(CREFString(name.Get())));
}

} // namespace

/// Finds items by their names, then the rows of all of them in one walk.
class KeptPlace::Finder {
public:
    /// The item's index now; negative when it is gone.
    int32_t IndexOf(const Item& item) {
        ISuperCollection* collection = item.m_Collection.Get();
        if (!collection || NameOf(collection, item.m_Index) == item.m_Name) {
            return collection ? item.m_Index : -1;
        }
        const auto& names = NamesIn(collection);
        const auto found = names.find(item.m_Name);
        return found != names.end() ? found->second : -1;
    }

    void FindRows(IUITree* tree, const std::vector<Item>& top, const Item& selected) {
        for (const Item& item : top) {
            m_Rows.emplace(std::pair(item.m_Collection.Get(), IndexOf(item)), -1);
        }
        m_Rows.emplace(std::pair(selected.m_Collection.Get(), IndexOf(selected)), -1);
        int32_t row = 0;
        VisitRows(RootOf(tree).Get(), [&](ISuperCollection* collection, int32_t index, int32_t) {
            const auto found = m_Rows.find({collection, index});
            if (found != m_Rows.end() && found->second < 0) {
                found->second = row;
            }
            ++row;
            return true;
        });
    }

    /// The first row that shows the item; negative when none does.
    int32_t RowOf(const Item& item) { return m_Rows.at({item.m_Collection.Get(), IndexOf(item)}); }

private:
    using Names = std::unordered_map<std::wstring, int32_t>;

    const Names& NamesIn(ISuperCollection* collection) {
        const auto [place, isNew] = m_Names.try_emplace(collection);
        int32_t count = 0;
        collection->GetCount(&count);
        for (int32_t i = 0; isNew && i < count; ++i) {
            place->second.emplace(NameOf(collection, i), i);
        }
        return place->second;
    }

    std::map<ISuperCollection*, Names> m_Names;
    std::map<std::pair<ISuperCollection*, int32_t>, int32_t> m_Rows;
};

KeptPlace::KeptPlace(IUITree* tree) : m_Tree(tree) {
    int32_t skipped = 0;
    m_Tree->Inquire(PROP_SCROLLPOS, &skipped);
    VisitRows(RootOf(tree).Get(), [&](ISuperCollection* collection, int32_t index, int32_t) {
        if (skipped-- <= 0) {
            m_Top.push_back({SmartPtr(collection), index, NameOf(collection, index)});
        }
        return m_Top.size() < kRowsKept;
    });
    m_IsSelectedShown = SelectedRow(tree).IsFound();
    SmartPtr<IUnknown> collection;
    m_Selected.m_Index = tree->GetSelected(-1, SELECTED_COLLECTION, collection.Receive());
    m_Selected.m_Collection = Query<ISuperCollection>(collection.Get());
    if (m_Selected.m_Collection) {
        m_Selected.m_Name = NameOf(m_Selected.m_Collection.Get(), m_Selected.m_Index);
    }
}

int32_t KeptPlace::Restore() const {
    Finder finder;
    finder.FindRows(m_Tree, m_Top, m_Selected);
    for (const Item& item : m_Top) {
        const int32_t row = finder.RowOf(item);
        if (row >= 0) {
            m_Tree->Control(PROP_SCROLLPOS, row);
            break;
        }
    }
    const int32_t selected = finder.RowOf(m_Selected);
    RestoreSelection(finder.IndexOf(m_Selected), selected);
    return selected;
}

/// What is hidden cannot be selected. Where its index is still right, it is left selected so.
void KeptPlace::RestoreSelection(int32_t index, int32_t row) const {
    const bool isLost = row < 0 && m_IsSelectedShown;
    if (m_Selected.m_Collection && (isLost || index != m_Selected.m_Index)) {
        m_Tree->SelectNode(row, SELECT_ABSOLUTE | SELECT_CURRENT | SELECT_UNMARKED);
    }
}
