#include "framework/support/REFString.h"

#include <algorithm>
#include <cwctype>

// The operations of reference strings that find words, tokens and positions.

namespace {

bool IsDigit(wchar_t character) {
    return std::iswdigit(static_cast<wint_t>(character)) != 0;
}

bool IsPunctuation(wchar_t character) {
    return std::iswpunct(static_cast<wint_t>(character)) != 0;
}

bool IsSpace(wchar_t character) {
    return std::iswspace(static_cast<wint_t>(character)) != 0;
}

/// A text that answers "what stands at this position" without ever reading past its end.
class Scanner {
public:
    explicit Scanner(tagREFString text) : m_Text(text) {}

    bool Is(int32_t position, wchar_t character) const {
        return position < m_Text.m_Length && m_Text.m_String[position] == character;
    }
    template <class Predicate>
    bool Is(int32_t position, Predicate predicate) const {
        return position < m_Text.m_Length && predicate(m_Text.m_String[position]);
    }
    int32_t SkipDigits(int32_t position) const {
        while (Is(position, IsDigit)) {
            ++position;
        }
        return position;
    }

private:
    tagREFString m_Text;
};

/// Where the number that starts at `start` ends: digits, a fraction, and after a fraction an
/// exponent, which needs its sign.
int32_t NumberEnd(const Scanner& text, int32_t start) {
    int32_t end = text.SkipDigits(start);
    if (!text.Is(end, L'.') || !text.Is(end + 1, IsDigit)) {
        return end;
    }
    end = text.SkipDigits(end + 1);
    const bool exponent = text.Is(end, L'e') || text.Is(end, L'E');
    const bool sign = text.Is(end + 1, L'+') || text.Is(end + 1, L'-');
    return exponent && sign && text.Is(end + 2, IsDigit) ? text.SkipDigits(end + 2) : end;
}

/// Where a word ends whose opening quotation mark is the first character: at its closing mark, or
/// at the end of the text.
int32_t QuotedEnd(const Scanner& text, int32_t length) {
    if (length == 1 || text.Is(1, L'"')) {
        return 1;
    }
    int32_t end = 2;
    while (end < length && !text.Is(end, L'"')) {
        ++end;
    }
    return end;
}

int32_t IdentifierEnd(const Scanner& text) {
    const auto continues = [](wchar_t character) {
        return character == L'_' || (!IsSpace(character) && !IsPunctuation(character));
    };
    int32_t end = 0;
    while (text.Is(end, continues)) {
        ++end;
    }
    return end;
}

/// The length of the first token of a text that is not empty; 0 when none starts there.
int32_t TokenLength(tagREFString text) {
    const Scanner scanner(text);
    if (scanner.Is(0, L'"')) {
        return QuotedEnd(scanner, text.m_Length);
    }
    if (scanner.Is(0, L'-')) {
        return scanner.Is(1, IsDigit) ? NumberEnd(scanner, 1) : 0;
    }
    if (scanner.Is(0, IsDigit)) {
        return NumberEnd(scanner, 0);
    }
    return scanner.Is(0, IsPunctuation) ? 1 : IdentifierEnd(scanner);
}

/// The position of the first character of `text` that is in the set, or the length.
int32_t FindAny(tagREFString text, tagREFString characters) {
    if (text.m_Length <= 0 || characters.m_Length <= 0) {
        return text.m_Length;
    }
    const wchar_t* found = std::find_first_of(text.m_String, text.m_String + text.m_Length,
        characters.m_String, characters.m_String + characters.m_Length);
    return static_cast<int32_t>(found - text.m_String);
}

} // namespace

int32_t CREFString::GetFirstWord(CREFString* out, bool remove) {
    if (m_Length <= 0) {
        out->m_Length = 0;
        return E_FAIL;
    }
    const int32_t length = TokenLength(*this);
    if (length == 0) {
        return E_FAIL;
    }
    const Scanner scanner(*this);
    const bool closed = scanner.Is(0, L'"') && scanner.Is(length, L'"');
    out->m_String = closed ? m_String + 1 : m_String;
    out->m_Length = closed ? length - 1 : length;
    if (remove) {
        Advance(length); // the closing quotation mark stays in front
    }
    return S_OK;
}

int32_t CREFString::GetWord(CREFString* out, bool remove, tagREFString delimiters) {
    if (m_Length <= 0) {
        if (out) {
            out->m_Length = 0;
        }
        return E_FAIL;
    }
    const int32_t position = FindAny(*this, delimiters);
    const bool found = position < m_Length;
    if (out) {
        out->m_String = m_String;
        out->m_Length = position;
    }
    if (remove) {
        Advance(position);
    }
    return found ? position + 1 : 0;
}

int32_t CREFString::Contains(tagREFString text) {
    if (text.m_Length <= 0) {
        return E_FAIL;
    }
    int32_t matched = 0;
    for (int32_t i = 0; i < m_Length; ++i) {
        if (m_String[i] != text.m_String[matched]) {
            matched = 0;
            continue;
        }
        if (++matched == text.m_Length) {
            return i - matched + 1;
        }
    }
    return E_FAIL;
}

int32_t CREFString::ContainsChar(tagREFString characters) {
    const int32_t position = FindAny(*this, characters);
    return position < m_Length ? position : E_FAIL;
}
