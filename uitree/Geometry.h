#pragma once

#include "framework/interfaces/Types.h"

#include <limits>

// Where the pieces of the control lie, in canvas pixels. Everything that comes from outside is
// summed in 64 bits and saturated, so that no coordinate is ever undefined.

constexpr int32_t Saturate(int64_t value) {
    using Limits = std::numeric_limits<int32_t>;
    return value < Limits::min()   ? Limits::min()
           : value > Limits::max() ? Limits::max()
                                   : static_cast<int32_t>(value);
}

/// A position as whole pixels, truncated toward zero. What is no number lies left of and above
/// everything.
constexpr int32_t Truncate(double value) {
    using Limits = std::numeric_limits<int32_t>;
    if (!(value > Limits::min())) {
        return Limits::min();
    }
    return value >= Limits::max() ? Limits::max() : static_cast<int32_t>(value);
}

/// Whether a point lies in the control: the right edge is outside, the bottom edge inside.
constexpr bool Contains(const CANVASRect& rect, int32_t x, int32_t y) {
    return x >= rect.left && x < int64_t{rect.left} + rect.width && y >= rect.top &&
           y <= int64_t{rect.top} + rect.height;
}

/// The rectangle that a caller passed; one that is null is empty.
constexpr CANVASRect RectOf(const CANVASRect* rect) {
    return rect ? *rect : CANVASRect{};
}

/// The pieces of one drawn row. Space for the expander and the image is kept on every row, so that
/// the labels of one level line up.
class RowGeometry {
public:
    /// `position` counts the rows drawn, from 0 at the top of `client`; `level` is 1 for root
    /// items.
    constexpr RowGeometry(const CANVASRect& client, int32_t height, int32_t position, int32_t level)
        : m_Left(client.left + (int64_t{level} - 1) * height),
          m_Top(client.top + int64_t{position} * height), m_ClientWidth(client.width),
          m_Height(height) {}

    constexpr CANVASRect Expander() const { return {Left(0), Top(0), m_Height, m_Height}; }
    constexpr CANVASRect Image() const {
        return {Left(int64_t{m_Height} + 1), Top(1), Saturate(int64_t{m_Height} - 2),
            Saturate(int64_t{m_Height} - 2)};
    }
    /// As wide as the client rectangle, although shifted right: the clip cuts it.
    constexpr CANVASRect Label() const {
        return {Left(2 * int64_t{m_Height}), Top(0),
            Saturate(m_ClientWidth < 0 ? -m_ClientWidth : m_ClientWidth), m_Height};
    }

private:
    constexpr int32_t Left(int64_t offset) const { return Saturate(m_Left + offset); }
    constexpr int32_t Top(int64_t offset) const { return Saturate(m_Top + offset); }

    int64_t m_Left;
    int64_t m_Top;
    int64_t m_ClientWidth;
    int32_t m_Height;
};
