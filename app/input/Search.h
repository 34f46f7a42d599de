#pragma once

#include "app/tree/Rows.h"
#include "host/data/ItemWalk.h"
#include "host/data/Turn.h"

#include <optional>
#include <string>
#include <string_view>

/// Finding as you type: the items whose label holds a text in whatever case, among all that were
/// read, also in closed folders. Nothing is read for it. It is done in turns, between which the
/// tree may be used.
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

    /// Begins to look for the next such item, and for no other any more.
    void Begin(Direction direction);
    /// The tree has changed: what goes on begins anew.
    void BeginAnew();
    /// Looks on until the turn or the search is over. True when the search is.
    bool GoOn(const Turn& turn);
    bool IsOn() const { return m_Looking.has_value(); }

    /// Opens the folders above the item that was found, and answers its row; none when nothing
    /// holds the text.
    Row Show();
    /// Whether the last search that is over found something.
    bool HasFound() const { return m_HasFound; }

private:
    using Path = std::vector<Place>;

    /// What is known on the way through the tree.
    struct Looking {
        Direction m_Direction;
        std::wstring m_Wanted;
        Place m_Selected;
        bool m_IsBehind; ///< the selected item has been passed
        ItemWalk m_Walk;
        Path m_Near = {}; ///< found on the wanted side of the selected item
        Path m_Far = {};  ///< found on the other side
    };

    static bool IsNearest(Looking& looking, const Path& path);
    void End(Path found);

    IUITree* m_Tree;
    std::wstring m_Text;
    std::optional<Looking> m_Looking;
    Path m_Found; ///< "" was looked for, or nothing holds the text, when it is empty
    bool m_HasFound = true;
};
