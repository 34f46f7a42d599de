#pragma once

#include "framework/support/REFString.h"

#include <cstdint>
#include <unordered_map>
#include <unordered_set>

/// What a text surely does not contain. A search that fails reads all that is left of the text;
/// with an index such searches are few however many elements are never closed, and reading all
/// elements of a text takes a time that grows with the text.
///
/// It is of one text, and the `text` that is passed is what is left of that: its end, from the
/// beginning or from behind a '>' on. A `name` is that of the text's first tag, in its place.
/// Nothing is read or allocated before a first search has failed. An index that memory does not
/// hold rules nothing out.
class XMLIndex {
public:
    /// Whether a search for what opens or closes elements of a name may find something.
    bool MayOpen(const CREFString& text, const tagREFString& name) const;
    bool MayClose(const CREFString& text, const tagREFString& name) const;

    /// Takes note of a search that found nothing.
    void NeverOpens(const CREFString& text, const tagREFString& name);
    void NeverCloses(const CREFString& text);

private:
    /// A name with a blank before it in its tag, so that it is not found where it stands.
    struct Name {
        const wchar_t* m_Last = nullptr; ///< in the last piece where a search finds it
        std::wstring_view m_Missed;      ///< where it stands and a search does not find it
    };
    enum class State { kUnbuilt, kBuilt, kLeftOut };

    template <class Note>
    void Take(const CREFString& text, Note&& note);
    void Build(CREFString text);
    void AddName(std::wstring_view name, bool hasBlank);
    void FindOpenings(std::wstring_view piece);
    static void FindOpening(Name& place, std::wstring_view name, std::wstring_view piece);
    void FindClosings(std::wstring_view piece);

    State m_State = State::kUnbuilt;

    // Words stand for themselves by a hash: of two with the same one neither is overlooked.

    /// The '>' of the last closing of each name; null when it has none.
    std::unordered_map<uint64_t, const wchar_t*> m_Closings;
    std::unordered_map<uint64_t, Name> m_Names;
    /// The beginnings of these names whose length is a power of two. What begins otherwise is read
    /// no further than twice as far as it begins like one of them.
    std::unordered_set<uint64_t> m_Beginnings;
    /// Names with too many '<' for that, once a search for them has failed.
    std::unordered_set<std::wstring_view> m_Unopened;
};
