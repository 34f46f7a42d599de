#pragma once

#include "framework/support/REFString.h"

/// What opens or closes an element: its name between some characters of markup. Kept in pieces, so
/// that a search copies nothing.
class XMLPattern {
public:
    static constexpr int32_t kNotFound = -1;

    static XMLPattern Opening(std::wstring_view name) { return {L"<", name, {}}; }
    static XMLPattern Closing(std::wstring_view name) { return {L"</", name, L">"}; }

    int32_t Length() const {
        return static_cast<int32_t>(m_Pieces[0].size() + m_Pieces[1].size() + m_Pieces[2].size());
    }

    /// The position after the first match in one pass over the text: a character that ends a match
    /// is compared with the pattern's first one again, those before it are not.
    int32_t EndOfMatch(std::wstring_view text) const {
        const wchar_t first = m_Pieces[0].front();
        for (size_t i = text.find(first); i < text.size(); i = text.find(first, i)) {
            int32_t matched = 1;
            ++i;
            while (matched < Length() && i < text.size() && text[i] == At(matched)) {
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
    XMLPattern(std::wstring_view before, std::wstring_view name, std::wstring_view behind)
        : m_Pieces{before, name, behind} {}

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
