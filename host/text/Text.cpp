#include "host/text/Text.h"

#include <algorithm>
#include <cwctype>
#include <iterator>

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCodePoint = 0x10FFFF;

bool IsSurrogate(char32_t character) {
    return character >= 0xD800 && character <= 0xDFFF;
}

/// Controls, and what is not seen but changes how the text around it is: marks, overrides and
/// isolates of direction, separators of lines and paragraphs, blanks without width, tags.
bool IsControl(char32_t character) {
    struct Range {
        char32_t m_First, m_Last;
    };
    constexpr Range kUnseen[] = {{0, 0x1F}, {0x7F, 0x9F}, {0xAD, 0xAD}, {0x61C, 0x61C},
        {0x200B, 0x200F}, {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB},
        {0xE0000, 0xE007F}};
    return std::any_of(std::begin(kUnseen), std::end(kUnseen), [character](const Range& range) {
        return character >= range.m_First && character <= range.m_Last;
    });
}

/// How many bytes the character with this first byte has; 0 when none begins with it.
size_t LengthFrom(unsigned char first) {
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xC2 && first <= 0xDF) {
        return 2;
    }
    if (first >= 0xE0 && first <= 0xEF) {
        return 3;
    }
    return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

bool IsInRange(char32_t character, size_t length) {
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return character >= kSmallest[length] && character <= kLastCodePoint && !IsSurrogate(character);
}

/// Takes one character off the front; an ill-formed one takes a single byte with it.
char32_t TakeCharacter(std::string_view& utf8) {
    const auto first = static_cast<unsigned char>(utf8.front());
    const size_t length = LengthFrom(first);
    char32_t character = length < 2 ? first : first & (0x7FU >> length);
    bool wellFormed = length > 0 && length <= utf8.size();
    for (size_t i = 1; wellFormed && i < length; ++i) {
        const auto next = static_cast<unsigned char>(utf8[i]);
        wellFormed = (next & 0xC0U) == 0x80;
        character = character << 6 | (next & 0x3FU);
    }
    wellFormed = wellFormed && IsInRange(character, length);
    utf8.remove_prefix(wellFormed ? length : 1);
    return wellFormed ? character : kReplacement;
}

void AppendByte(std::string& utf8, char32_t byte) {
    utf8.push_back(static_cast<char>(byte));
}

void AppendCharacter(std::string& utf8, char32_t character) {
    if (character < 0x80) {
        AppendByte(utf8, character);
        return;
    }
    if (character < 0x800) {
        AppendByte(utf8, 0xC0 | character >> 6);
    } else {
        if (character < 0x10000) {
            AppendByte(utf8, 0xE0 | character >> 12);
        } else {
            AppendByte(utf8, 0xF0 | character >> 18);
            AppendByte(utf8, 0x80 | (character >> 12 & 0x3F));
        }
        AppendByte(utf8, 0x80 | (character >> 6 & 0x3F));
    }
    AppendByte(utf8, 0x80 | (character & 0x3F));
}

std::string Encode(tagREFString text, bool replaceControls) {
    std::string utf8;
    utf8.reserve(ViewOf(text).size());
    for (const wchar_t wide : ViewOf(text)) {
        const auto character = static_cast<char32_t>(wide);
        const bool illFormed = character > kLastCodePoint || IsSurrogate(character) ||
                               (replaceControls && IsControl(character));
        AppendCharacter(utf8, illFormed ? kReplacement : character);
    }
    return utf8;
}

} // namespace

std::wstring ToWide(std::string_view utf8) {
    std::wstring text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        text.push_back(static_cast<wchar_t>(TakeCharacter(utf8)));
    }
    return text;
}

std::string ToUtf8(tagREFString text) {
    return Encode(text, false);
}

std::string ToPrintable(tagREFString text) {
    return Encode(text, true);
}

tagREFString Refer(std::wstring_view text) {
    return {static_cast<int32_t>(text.size()), text.data()};
}

std::wstring Lowered(std::wstring_view text) {
    std::wstring lowered(text);
    std::transform(lowered.begin(), lowered.end(), lowered.begin(), [](wchar_t character) {
        return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(character)));
    });
    return lowered;
}
