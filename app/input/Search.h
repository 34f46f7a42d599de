#pragma once

#include "app/tree/Rows.h"

#include <string>
#include <string_view>

/// Finding as you type: the items whose label holds a text in whatever case, among all that were
/// read, also in closed folders. Nothing is read for it.
class Search {
public:
    /// `tree` outlives it.
    explicit Search(IUITree* tree) : m_Tree(tree) {}

    enum class Direction {
        kStay,     ///< the selected item may be it
        kForwards, ///< from the selected item to the last one and on from the first
        kBackwards
    };

    void Add(std::wstring_view text) { m_Text += text; }
    /// Takes back the last character; false when there is none.
    bool Erase();
    const std::wstring& Text() const { return m_Text; }

    /// Opens the folders above the next such item, and answers its row; none when nothing holds the
    /// text.
    Row Find(Direction direction);
    /// Whether the last search found something.
    bool HasFound() const { return m_HasFound; }

private:
    std::vector<Place> PathTo(Direction direction) const;

    IUITree* m_Tree;
    std::wstring m_Text;
    bool m_HasFound = true;
};
