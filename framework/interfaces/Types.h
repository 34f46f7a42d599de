#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>

// Plain values that cross interfaces. `long` in the contract is 32 bits on every machine, so it is
// int32_t here; a real long would be 64 bits where modules are developed.

static_assert(std::endian::native == std::endian::little, "identifiers are little-endian numbers");
static_assert(sizeof(wchar_t) == 4, "texts hold one code point per character");

/// Statuses: negative is failure, zero and positive are success.
constexpr int32_t S_OK = 0;
constexpr int32_t S_FALSE = 1; ///< success with nothing further
constexpr int32_t E_NOINTERFACE = static_cast<int32_t>(0x80004002U);
constexpr int32_t E_POINTER = static_cast<int32_t>(0x80004003U); ///< a required pointer is null
constexpr int32_t E_FAIL = static_cast<int32_t>(0x80004005U);
constexpr int32_t E_INVALIDARG = static_cast<int32_t>(0x80070057U); ///< addresses nothing

/// Interface identifier: 16 bytes without inner structure.
struct IID {
    uint32_t m_Words[4];

    /// As two long words, which are copied first because they need not be aligned as such.
    bool operator==(const IID& other) const {
        using Halves = std::array<uint64_t, 2>;
        const auto own = std::bit_cast<Halves>(*this);
        const auto others = std::bit_cast<Halves>(other);
        return own[0] == others[0] && own[1] == others[1];
    }
};
static_assert(sizeof(IID) == 16 && alignof(IID) == 4);

/// Reference to wide characters that someone else owns; not necessarily zero-terminated.
struct tagREFString {
    int32_t m_Length;        ///< characters referenced; 0 for an empty reference
    const wchar_t* m_String; ///< first character; may be null when the length is 0
};
static_assert(std::is_trivially_copyable_v<tagREFString>);
static_assert(offsetof(tagREFString, m_String) == sizeof(void*));
static_assert(sizeof(tagREFString) == 2 * sizeof(void*));

/// Rectangle in canvas pixels.
struct CANVASRect {
    int32_t left;
    int32_t top;
    int32_t width;
    int32_t height;
};
static_assert(sizeof(CANVASRect) == 16);

using cairo_t = struct _cairo;

/// The host's drawing surface. Only its first member is known to modules; the rest is the host's.
struct UbuntuCanvas {
    cairo_t* m_Context; ///< borrowed; valid while the call that received the canvas runs
};
static_assert(offsetof(UbuntuCanvas, m_Context) == 0);
