#include "framework/support/XMLIndex.h"

#include "framework/support/XMLPattern.h"
#include "framework/support/XMLTag.h"

#include <algorithm>
#include <bit>
#include <new>

namespace {

/// A name behind a blank with more of them is searched for, once: beginnings of names are sought at
/// every '<', and so no character is read more often than this.
constexpr int kMostAnglesInName = 512;

constexpr uint64_t kSeed = 0x9E3779B97F4A7C15;

/// The hash of a word with one more character.
uint64_t Mix(uint64_t hash, wchar_t character) {
    hash = (hash ^ static_cast<uint64_t>(character)) * kSeed;
    return hash ^ (hash >> 32);
}

template <class Iterator>
uint64_t HashOf(Iterator first, Iterator last) {
    uint64_t hash = kSeed;
    for (; first != last; ++first) {
        hash = Mix(hash, *first);
    }
    return hash;
}

bool HasManyAngles(std::wstring_view name) {
    return std::count(name.begin(), name.end(), L'<') > kMostAnglesInName;
}

/// Whether a search finds a word that stands in a text: it misses one that begins within something
/// that looked like another. Only a '<' in the word lets it.
bool IsFound(const XMLPattern& pattern, std::wstring_view word, std::wstring_view text) {
    return word.find(L'<') == std::wstring_view::npos ||
           pattern.EndOfMatch(text) != XMLPattern::kNotFound;
}

} // namespace

bool XMLIndex::MayOpen(const CREFString& text, const tagREFString& name) const {
    if (m_State != State::kBuilt || name.m_Length == 0 || name.m_String[-1] == L'<') {
        return true;
    }
    const std::wstring_view word = ViewOf(name);
    if (HasManyAngles(word)) {
        return !m_Unopened.contains(word);
    }
    const auto place = m_Names.find(HashOf(word.begin(), word.end()));
    return place == m_Names.end() || place->second.m_Last >= text.m_String;
}

bool XMLIndex::MayClose(const CREFString& text, const tagREFString& name) const {
    if (m_State != State::kBuilt) {
        return true;
    }
    const std::wstring_view word = ViewOf(name);
    const auto place = m_Closings.find(HashOf(word.rbegin(), word.rend()));
    return place == m_Closings.end() || place->second >= text.m_String;
}

void XMLIndex::NeverOpens(const CREFString& text, const tagREFString& name) {
    Take(text, [&] { m_Unopened.insert(ViewOf(name)); });
}

void XMLIndex::NeverCloses(const CREFString& text) {
    Take(text, [] {});
}

template <class Note>
void XMLIndex::Take(const CREFString& text, Note&& note) {
    if (m_State == State::kLeftOut) {
        return;
    }
    try {
        Build(text);
        note();
    } catch (const std::bad_alloc&) {
        m_State = State::kLeftOut;
        m_Closings.clear();
        m_Names.clear();
        m_Beginnings.clear();
        m_Unopened.clear();
    }
}

void XMLIndex::Build(CREFString text) {
    if (m_State == State::kBuilt) {
        return;
    }
    std::wstring_view whole = ViewOf(text);
    for (XMLFoundTag tag; XMLFindTag(text, tag); text = tag.m_Rest) {
        const tagREFString name = XMLNameOf(tag.m_Text);
        AddName(ViewOf(name), name.m_String != tag.m_Start + 1);
    }
    // No match crosses a '>'.
    for (size_t end = whole.find(L'>'); end < whole.size(); end = whole.find(L'>')) {
        const std::wstring_view piece = whole.substr(0, end + 1);
        FindOpenings(piece);
        FindClosings(piece);
        whole.remove_prefix(end + 1);
    }
    FindOpenings(whole);
    m_State = State::kBuilt;
}

void XMLIndex::AddName(std::wstring_view name, bool hasBlank) {
    m_Closings.try_emplace(HashOf(name.rbegin(), name.rend()));
    if (!hasBlank || HasManyAngles(name)) {
        return;
    }
    uint64_t hash = kSeed;
    for (size_t i = 0; i < name.size(); ++i) {
        hash = Mix(hash, name[i]);
        if (std::has_single_bit(i + 1)) {
            m_Beginnings.insert(hash);
        }
    }
    m_Names.try_emplace(hash);
}

void XMLIndex::FindOpenings(std::wstring_view piece) {
    if (m_Names.empty()) {
        return;
    }
    for (size_t i = piece.find(L'<'); i < piece.size(); i = piece.find(L'<', i + 1)) {
        uint64_t hash = kSeed;
        for (size_t length = 1; i + length < piece.size(); ++length) {
            hash = Mix(hash, piece[i + length]);
            if (std::has_single_bit(length) && !m_Beginnings.contains(hash)) {
                break;
            }
            if (const auto found = m_Names.find(hash); found != m_Names.end()) {
                FindOpening(found->second, piece.substr(i + 1, length), piece);
            }
        }
    }
}

void XMLIndex::FindOpening(Name& place, std::wstring_view name, std::wstring_view piece) {
    const bool isMissed = place.m_Missed.data() >= piece.data() && place.m_Missed == name;
    if (!isMissed && IsFound(XMLPattern::Opening(name), name, piece)) {
        place.m_Last = name.data();
    } else {
        place.m_Missed = name;
    }
}

/// `piece` ends with its '>'.
void XMLIndex::FindClosings(std::wstring_view piece) {
    const size_t end = piece.size() - 1;
    uint64_t hash = kSeed;
    for (size_t i = end; i-- > 1;) {
        if (piece[i] == L'/' && piece[i - 1] == L'<') {
            const std::wstring_view name = piece.substr(i + 1, end - i - 1);
            const auto place = m_Closings.find(hash);
            if (place != m_Closings.end() && IsFound(XMLPattern::Closing(name), name, piece)) {
                place->second = piece.data() + end;
            }
        }
        hash = Mix(hash, piece[i]);
    }
}
