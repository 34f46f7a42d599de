#pragma once

#include "framework/support/REFString.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

/// Ends the program where something that has to hold does not; the fuzzer keeps the input then.
inline void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// What a fuzzer made up, taken from the front.
class Input {
public:
    Input(const uint8_t* data, size_t size) : m_Data(data), m_End(data + size) {}

    bool IsEmpty() const { return m_Data == m_End; }
    uint8_t Byte() { return IsEmpty() ? uint8_t{0} : *m_Data++; }

    /// The bytes up to the next 0 as characters, in a buffer of exactly their size, so that a read
    /// past the end is caught. The highest bytes stand for characters that are easily got wrong.
    std::vector<wchar_t> Text() {
        constexpr uint32_t kOdd[] = {0x85, 0xA0, 0x0130, 0x0661, 0x2028, 0xD800, 0xFEFF, 0xFFFF,
            0x1D7D8, 0x10FFFF, 0x110000, 0xFFFFFFFF, 0x80000000, 0x7FFFFFFF, 0x1E9E, 0x3000};
        std::vector<wchar_t> text;
        while (const uint8_t byte = Byte()) {
            text.push_back(static_cast<wchar_t>(byte < 0xF0 ? byte : kOdd[byte - 0xF0]));
        }
        return {text.begin(), text.end()};
    }

private:
    const uint8_t* m_Data;
    const uint8_t* m_End;
};

inline CREFString Refer(const std::vector<wchar_t>& text) {
    return tagREFString{static_cast<int32_t>(text.size()), text.data()};
}

/// Whether `part` refers into the characters of `whole`; an empty reference refers to nothing.
inline bool IsWithin(const CREFString& part, const CREFString& whole) {
    return part.m_Length == 0 ||
           (part.m_Length > 0 && part.m_String >= whole.m_String &&
               part.m_String + part.m_Length <= whole.m_String + whole.m_Length);
}
