#pragma once

#include "framework/support/REFString.h"

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// What a text surely does not contain. A search that fails reads all that is left of the text;
/// with an index such searches are few however many elements are never closed, and reading all
/// elements of a text takes a time that grows with the text.
///
/// It is of one text, and the `text` that is passed is what is left of that: its end, from the
/// beginning or from behind a '>' on. A `name` is that of the text's first tag, in its place.
/// Nothing is read or allocated before a first search has failed.
class XMLIndex {
public:
    /// Whether a search for what opens or closes elements of a name may find something.
    bool MayOpen(const CREFString& text, const tagREFString& name) const;
    bool MayClose(const CREFString& text, const tagREFString& name) const;

    /// Takes note of a search that found nothing. Throws std::bad_alloc.
    void NeverOpens(const CREFString& text, const tagREFString& name);
    void NeverCloses(const CREFString& text);

private:
    struct Name {
        const wchar_t* m_Last = nullptr; ///< in the last piece where a search finds it
        std::wstring_view m_Missed;      ///< where it stands and a search does not find it
    };
    static constexpr uint32_t kNoName = UINT32_MAX;

    void Build(CREFString text);
    void AddName(std::wstring_view name, bool hasBlank);
    void FindOpenings(std::wstring_view piece);
    static void FindOpening(Name& place, std::wstring_view name, std::wstring_view piece);
    void FindClosings(std::wstring_view piece);

    // Words stand for themselves by a hash: of two with the same one neither is overlooked.

    /// The '>' of the last closing of each name; null when it has none.
    std::unordered_map<uint64_t, const wchar_t*> m_Closings;
    /// The names that have a blank before them, and all their beginnings, which are kNoName. Other
    /// tags are found where they stand.
    std::unordered_map<uint64_t, uint32_t> m_Beginnings;
    std::vector<Name> m_Names;
    std::unordered_set<std::wstring_view> m_Unopened;
};
