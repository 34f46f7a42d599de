#pragma once

#include <cstdint>
#include <optional>

/// Tells when the pointer has stayed at a place for a moment. Times are in milliseconds.
class Dwell {
public:
    static constexpr int64_t kPatience = 600;

    /// It is at a place; at another than before its time begins anew.
    void Stay(int32_t place, int64_t now) {
        m_Since = m_Place == place ? m_Since : now;
        m_Place = place;
    }
    void End() { m_Place.reset(); }

    /// Where it is, once that is long enough.
    std::optional<int32_t> Place(int64_t now) const {
        return m_Place && now - m_Since >= kPatience ? m_Place : std::nullopt;
    }
    /// How long until then; none where nothing is to come.
    std::optional<int64_t> Left(int64_t now) const {
        const bool isToCome = m_Place && now - m_Since < kPatience;
        return isToCome ? std::optional(m_Since + kPatience - now) : std::nullopt;
    }

private:
    std::optional<int32_t> m_Place;
    int64_t m_Since = 0;
};
