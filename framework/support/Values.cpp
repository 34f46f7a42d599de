#include "framework/support/Values.h"

namespace {

constexpr int kHexadecimal = 16;

/// Removes the first character when it is `character`.
bool Skip(CREFString& text, wchar_t character) {
    if (text.m_Length <= 0 || *text.m_String != character) {
        return false;
    }
    ++text.m_String;
    --text.m_Length;
    return true;
}

/// -1 for a leading '-', else 1; a sign is skipped.
int SkipSign(CREFString& text) {
    if (Skip(text, L'-')) {
        return -1;
    }
    Skip(text, L'+');
    return 1;
}

/// The value of a digit, -1 for anything else. Letters count from radix 11 on, 0 to 9 always.
int DigitValue(wchar_t character, int radix) {
    if (character >= L'0' && character <= L'9') {
        return character - L'0';
    }
    const wchar_t folded = character >= L'a' ? character - (L'a' - L'A') : character;
    const bool counts = radix > 10 && radix <= kHexadecimal;
    return counts && folded >= L'A' && folded <= L'F' ? static_cast<int>(folded - L'A') + 10 : -1;
}

uint32_t ParseDigits(const CREFString& text, int radix) {
    uint32_t value = 0;
    for (int32_t i = 0; i < text.m_Length; ++i) {
        const int digit = DigitValue(text.m_String[i], radix);
        if (digit < 0) {
            break;
        }
        value = value * static_cast<uint32_t>(radix) + static_cast<uint32_t>(digit);
    }
    return value;
}

/// Whole part and fraction of a decimal number, read from its first character on. The first
/// character above '-' that is no digit is the decimal point, letters included.
double ParseDecimal(const CREFString& text) {
    constexpr uint64_t kLastDivisor = 999'999'999'999'999'999;
    uint64_t whole = 0; // wraps around
    uint64_t fraction = 0;
    uint64_t divisor = 0; // 0 until the point
    for (int32_t i = 0; i < text.m_Length && divisor <= kLastDivisor; ++i) {
        const int digit = DigitValue(text.m_String[i], 10);
        if (digit < 0) {
            if (divisor != 0 || static_cast<uint32_t>(text.m_String[i]) <= L'-') {
                break;
            }
            divisor = 1;
        } else if (divisor == 0) {
            whole = whole * 10 + static_cast<uint64_t>(digit);
        } else {
            fraction = fraction * 10 + static_cast<uint64_t>(digit);
            divisor *= 10;
        }
    }
    const auto value = static_cast<double>(static_cast<int64_t>(whole));
    return divisor == 0 ? value
                        : value + static_cast<double>(fraction) / static_cast<double>(divisor);
}

} // namespace

int _IS2Integer(CREFString text, int radix) {
    if (Skip(text, L'#')) {
        return static_cast<int>(ParseDigits(text, kHexadecimal));
    }
    const int sign = SkipSign(text);
    const uint32_t value = ParseDigits(text, radix);
    return static_cast<int>(sign < 0 ? 0U - value : value);
}

int _IS2Color(CREFString text, int radix) {
    const auto value = static_cast<uint32_t>(_IS2Integer(text, radix));
    return static_cast<int>(((value >> 16) & 0xFF) | ((value & 0xFF) << 16) | (value & 0xFF00));
}

double _IS2Double(CREFString text) {
    if (text.m_Length <= 0) {
        return 0.0;
    }
    if (Skip(text, L'#')) {
        return static_cast<int32_t>(ParseDigits(text, kHexadecimal));
    }
    const int sign = SkipSign(text);
    return sign * ParseDecimal(text);
}
