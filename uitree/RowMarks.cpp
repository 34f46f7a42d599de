#include "uitree/RowMarks.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

/// When all are used, every second one goes and the others lie twice as far apart.
void RowMarks::Advance() {
    if (m_Count == kMost) {
        for (size_t i = 1; i < kMost; i += 2) {
            m_Marks[i / 2] = m_Marks[i];
        }
        m_Count = kMost / 2;
        m_Step *= 2;
    }
    const bool fits = m_Next <= std::numeric_limits<int32_t>::max() - m_Step;
    m_Next = fits ? m_Next + m_Step : std::numeric_limits<int32_t>::max();
}

std::optional<RowMark> RowMarks::Nearest(int32_t row) const {
    const RowMark* nearest = nullptr;
    int32_t distance = row;
    const auto consider = [&](const RowMark& mark) {
        if (std::abs(mark.m_Row - row) < distance) {
            nearest = &mark;
            distance = std::abs(mark.m_Row - row);
        }
    };
    const auto end = m_Marks.begin() + static_cast<ptrdiff_t>(m_Count);
    const auto after = std::partition_point(
        m_Marks.begin(), end, [row](const RowMark& mark) { return mark.m_Row <= row; });
    if (after != m_Marks.begin()) {
        consider(*std::prev(after));
    }
    if (after != end) {
        consider(*after);
    }
    if (m_HasLast) {
        consider(m_Last);
    }
    return nearest ? std::optional(*nearest) : std::nullopt;
}
