#include "uitree/RowMarks.h"

#include <algorithm>
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

const RowMark* RowMarks::Before(int32_t row) const {
    const auto end = m_Marks.begin() + static_cast<ptrdiff_t>(m_Count);
    const auto after = std::partition_point(
        m_Marks.begin(), end, [row](const RowMark& mark) { return mark.m_Row <= row; });
    return after == m_Marks.begin() ? nullptr : &*std::prev(after);
}
