#pragma once

#include "uitree/NearVector.h"

#include <array>
#include <cstdint>
#include <span>

/// Where a row is: the indices that lead to it from the root, one for each level.
struct RowMark {
    int32_t m_Row = -1;
    int32_t m_Levels = 0;
    std::array<int32_t, kNearLevels> m_Indices = {};
};

/// Marks along the rows of a tree, evenly spread over all that were counted: who looks for a row
/// begins at the last mark before it instead of at the root. They hold no references; whether what
/// they lead to is still there shows on the way.
class RowMarks {
public:
    /// The next row to be marked while rows are counted.
    int32_t Next() const { return m_Next; }
    /// Marks row Next(), to which `indices` lead; rows deeper than kNearLevels are left out.
    template <class Levels>
    void Add(const Levels& levels) {
        if (levels.size() <= kNearLevels) {
            RowMark& mark = m_Marks[m_Count];
            mark.m_Row = m_Next;
            mark.m_Levels = static_cast<int32_t>(levels.size());
            for (size_t i = 0; i < levels.size(); ++i) {
                mark.m_Indices[i] = levels[i].m_Index;
            }
            ++m_Count;
        }
        Advance();
    }
    /// The last mark at or before a row; null when there is none.
    const RowMark* Before(int32_t row) const;

private:
    static constexpr size_t kMost = 32;
    static constexpr int32_t kFirstStep = 64; ///< rows

    void Advance();

    size_t m_Count = 0;
    int32_t m_Step = kFirstStep;
    int32_t m_Next = kFirstStep;
    std::array<RowMark, kMost> m_Marks;
};
