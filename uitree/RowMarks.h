#pragma once

#include "uitree/NearVector.h"

#include <array>
#include <cstdint>
#include <optional>

/// Where a row is: the indices that lead to it from the root, one for each level.
struct RowMark {
    int32_t m_Row;
    int32_t m_Levels;
    std::array<int32_t, kNearLevels> m_Indices;
};

/// Marks along the rows of a tree, evenly spread over all that were counted, and one on the row
/// that was found last: who looks for a row begins at the nearest of them instead of at the root.
/// They hold no references; whether what they lead to is still there shows on the way. Rows deeper
/// than kNearLevels get none.
class RowMarks {
public:
    /// The next row to be marked while rows are counted.
    int32_t Next() const { return m_Next; }
    /// Marks row Next(), to which `levels` lead.
    template <class Levels>
    void Add(const Levels& levels) {
        if (Set(m_Marks[m_Count], m_Next, levels)) {
            ++m_Count;
        }
        Advance();
    }
    /// Marks the row that was found last.
    template <class Levels>
    void Remember(int32_t row, const Levels& levels) {
        m_HasLast = Set(m_Last, row, levels);
    }

    /// The mark that is the fewest rows away from a row, on either side; none when the root is
    /// nearer.
    std::optional<RowMark> Nearest(int32_t row) const;

private:
    static constexpr size_t kMost = 32;
    static constexpr int32_t kFirstStep = 64; ///< rows

    template <class Levels>
    static bool Set(RowMark& mark, int32_t row, const Levels& levels) {
        if (levels.size() > kNearLevels) {
            return false;
        }
        mark.m_Row = row;
        mark.m_Levels = static_cast<int32_t>(levels.size());
        for (size_t i = 0; i < levels.size(); ++i) {
            mark.m_Indices[i] = levels[i].m_Index;
        }
        return true;
    }
    void Advance();

    size_t m_Count = 0;
    int32_t m_Step = kFirstStep;
    int32_t m_Next = kFirstStep;
    bool m_HasLast = false;
    RowMark m_Last; // marks are written before they are read
    std::array<RowMark, kMost> m_Marks;
};
