#include "framework/support/XMLTag.h"

#include <algorithm>

namespace {

constexpr int32_t kNotFound = -1;

tagREFString FirstOf(tagREFString text, int32_t length) {
    return {length, text.m_String};
}

tagREFString WithoutFirst(tagREFString text, int32_t length) {
    return {text.m_Length - length, text.m_String + length};
}

tagREFString NameOf(const CREFString& tag) {
    const std::wstring_view whole = ViewOf(tag);
    const size_t end = std::min(whole.find_first_of(L" \r>"), whole.size());
    return FirstOf(tag, static_cast<int32_t>(end));
}

/// What opens or closes an element: its name between some characters of markup. Kept in pieces, so
/// that a search copies nothing.
class Pattern {
public:
    Pattern(std::wstring_view opening, tagREFString name, std::wstring_view closing)
        : m_Pieces{opening, ViewOf(name), closing} {}

    int32_t Length() const {
        return static_cast<int32_t>(m_Pieces[0].size() + m_Pieces[1].size() + m_Pieces[2].size());
    }

    /// The position after the first match in one pass over the text: a character that ends a match
    /// is compared with the pattern's first one again, those before it are not.
    int32_t EndOfMatch(const CREFString& text) const {
        const std::wstring_view whole = ViewOf(text);
        const wchar_t first = m_Pieces[0].front();
        for (size_t i = whole.find(first); i < whole.size(); i = whole.find(first, i)) {
            int32_t matched = 1;
            ++i;
            while (matched < Length() && i < whole.size() && whole[i] == At(matched)) {
                ++matched;
                ++i;
            }
            if (matched == Length()) {
                return static_cast<int32_t>(i);
            }
        }
        return kNotFound;
    }

private:
    wchar_t At(int32_t position) const {
        auto rest = static_cast<size_t>(position);
        for (const std::wstring_view& piece : m_Pieces) {
            if (rest < piece.size()) {
                return piece[rest];
            }
            rest -= piece.size();
        }
        return L'\0';
    }

    std::wstring_view m_Pieces[3];
};

/// Splits an opening tag, from after its name on, from what follows it.
void TakeAttributes(CREFString& rest, CREFString& attributes) {
    const size_t end = ViewOf(rest).find(L'>');
    if (end == std::wstring_view::npos) {
        attributes = rest;
        return;
    }
    attributes = FirstOf(rest, static_cast<int32_t>(end));
    for (const wchar_t mark : {L'?', L'/'}) {
        if (attributes.m_Length > 0 && attributes.m_String[attributes.m_Length - 1] == mark) {
            --attributes.m_Length;
        }
    }
    rest = WithoutFirst(rest, static_cast<int32_t>(end) + 1);
}

} // namespace

int32_t XMLGetTAGGED(
    CREFString& text, CREFString& tag, CREFString& attributes, CREFString& content, short advance) {
    const tagREFString name = NameOf(tag);
    content = text;
    const int32_t start = Pattern(L"<", name, {}).EndOfMatch(text);
    if (start == kNotFound) {
        return E_FAIL;
    }
    CREFString rest = WithoutFirst(text, start);
    TakeAttributes(rest, attributes);

    const Pattern closing(L"</", name, L">");
    const int32_t end = closing.EndOfMatch(rest);
    const bool isClosed = end != kNotFound;
    content = FirstOf(rest, isClosed ? end - closing.Length() : 0);
    if (advance != 0) {
        text = isClosed ? WithoutFirst(rest, end) : rest;
    }
    return S_OK;
}
