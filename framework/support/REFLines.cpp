#include "framework/support/REFString.h"

#include <algorithm>
#include <cwchar>
#include <cwctype>

// Construction of reference strings, and the operations that cut lines and parts.

namespace {

bool IsLineBreak(wchar_t character) {
    return character == L'\n' || character == L'\r';
}

/// The position of the last `delimiter`, or -1.
int32_t FindLast(tagREFString text, wchar_t delimiter) {
    int32_t position = text.m_Length - 1;
    while (position >= 0 && text.m_String[position] != delimiter) {
        --position;
    }
    return position;
}

void Refer(CREFString* out, const wchar_t* text, int32_t length) {
    if (out) {
        out->m_String = text;
        out->m_Length = length;
    }
}

void Clear(CREFString* out) {
    if (out) {
        out->m_Length = 0;
    }
}

template <class Same>
bool IsEqualBy(tagREFString first, tagREFString second, Same same) {
    if (first.m_Length != second.m_Length) {
        return false;
    }
    return first.m_Length <= 0 ||
           (first.m_String && second.m_String &&
               std::equal(first.m_String, first.m_String + first.m_Length, second.m_String, same));
}

} // namespace

CREFString::CREFString(const wchar_t* text)
    : tagREFString{text ? static_cast<int32_t>(std::wcslen(text)) : 0, text} {}

CREFString::CREFString(IString* text) : CREFString() {
    wchar_t* characters = nullptr;
    int32_t length = 0;
    if (text) {
        text->GetString(&characters, &length);
    }
    if (characters) {
        m_String = characters;
        m_Length = std::max(length, 0);
    }
}

int32_t CREFString::Advance(int32_t count) {
    m_String += count;
    m_Length -= count;
    return m_Length > 0 ? S_OK : S_FALSE;
}

int32_t CREFString::GetLine(CREFString* out, bool remove, wchar_t delimiter, bool dropDelimiter) {
    if (m_Length <= 0) {
        Clear(out);
        return E_FAIL;
    }
    const wchar_t* end = m_String + m_Length;
    const wchar_t* found = std::find(m_String, end, delimiter);
    const auto before = static_cast<int32_t>(found - m_String);
    const int32_t taken = found == end ? before : before + 1;
    Refer(out, m_String, dropDelimiter ? before : taken);
    if (!remove) {
        return taken < m_Length ? S_OK : E_FAIL;
    }
    return Advance(taken);
}

int32_t CREFString::GetLineCRLF(CREFString* out, bool dropBreak, bool remove) {
    if (m_Length <= 0) {
        Clear(out);
        return E_FAIL;
    }
    const wchar_t* end = m_String + m_Length;
    const wchar_t* found = std::find_if(m_String, end, IsLineBreak);
    const auto before = static_cast<int32_t>(found - m_String);
    int32_t taken = before;
    if (found != end) {
        const wchar_t* next = found + 1;
        taken += next != end && *next != *found && IsLineBreak(*next) ? 2 : 1;
    }
    Refer(out, m_String, dropBreak ? before : taken);
    return remove ? Advance(taken) : S_OK;
}

int32_t CREFString::GetReverseLine(
    CREFString* out, wchar_t delimiter, bool remove, bool skipDelimiter) {
    const int32_t position = FindLast(*this, delimiter);
    Refer(out, m_String, std::max(position, 0));
    if (position <= 0) {
        return E_FAIL;
    }
    if (remove) {
        Advance(skipDelimiter ? position + 1 : position);
    }
    return S_OK;
}

int32_t CREFString::GetLineRight(
    CREFString* out, wchar_t delimiter, bool remove, bool dropDelimiter, bool wholeIfMissing) {
    if (m_Length <= 0) {
        return E_FAIL;
    }
    if (!wholeIfMissing || FindLast(*this, delimiter) >= 0) {
        return TakeRight(out, delimiter, remove, dropDelimiter);
    }
    Refer(out, m_String, m_Length);
    if (remove) {
        m_Length = 0;
    }
    return S_OK;
}

int32_t CREFString::Crop(CREFString* out, wchar_t delimiter, bool remove, bool dropDelimiter) {
    return TakeRight(out, delimiter, remove, dropDelimiter);
}

int32_t CREFString::TakeRight(CREFString* out, wchar_t delimiter, bool remove, bool dropDelimiter) {
    const int32_t position = FindLast(*this, delimiter);
    if (position < 0) {
        Clear(out);
        return E_FAIL;
    }
    const int32_t start = dropDelimiter ? position + 1 : position;
    Refer(out, m_String + start, m_Length - start);
    if (remove) {
        m_Length = dropDelimiter ? position : position + 1;
    }
    return S_OK;
}

int32_t CREFString::Split(
    CREFString* first, CREFString* rest, CREFString delimiters, int32_t controlsDelimit) {
    const auto matches = [&](wchar_t character) {
        const bool control = static_cast<uint32_t>(character) < L' ';
        return (controlsDelimit != 0 && control) ||
               CREFString(tagREFString{1, &character}).ContainsChar(delimiters) >= 0;
    };
    const int32_t length = std::max(m_Length, 0);
    const wchar_t* end = m_String + length;
    const wchar_t* found = delimiters.m_Length > 0 ? std::find_if(m_String, end, matches) : end;
    const auto position = static_cast<int32_t>(found - m_String);
    Refer(first, m_String, position);
    if (found == end) {
        Clear(rest);
        return E_FAIL;
    }
    Refer(rest, found, length - position);
    return S_OK;
}

std::wstring_view ViewOf(const tagREFString& text) {
    const bool isEmpty = text.m_Length <= 0 || !text.m_String;
    return isEmpty ? std::wstring_view() : std::wstring_view(text.m_String, size_t(text.m_Length));
}

bool IsEqual(tagREFString first, tagREFString second) {
    return IsEqualBy(first, second, [](wchar_t a, wchar_t b) { return a == b; });
}

bool IsEqualIgnoringCase(tagREFString first, tagREFString second) {
    return IsEqualBy(first, second, [](wchar_t a, wchar_t b) {
        return std::towlower(static_cast<wint_t>(a)) == std::towlower(static_cast<wint_t>(b));
    });
}
