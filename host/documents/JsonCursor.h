#pragma once

#include "host/reading/ReadProgress.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

/// A place in a text, which goes forward as the parser reads and may jump.
class JsonCursor {
public:
    /// `progress` may be null. With `isCut` the end counts as made by it.
    JsonCursor(
        std::string_view text, size_t at, size_t end, ReadProgress* progress, bool isCut = false)
        : m_Text(text), m_At(at), m_Stop(progress ? at : end), m_End(end), m_Progress(progress),
          m_IsCut(isCut) {}

    size_t At() const { return m_At; }
    void Jump(size_t at) {
        m_Jumped += at - m_At;
        m_At = at;
        m_Stop = m_Progress ? at : m_End;
    }
    size_t Jumped() const { return m_Jumped; }
    /// A character is read first that does not stand here.
    void PutInFront(char character) { m_InFront = character; }
    char Character() const { return m_InFront != 0 ? m_InFront : m_Text[m_At]; }
    void Advance() {
        m_At += m_InFront != 0 ? 0 : 1;
        m_InFront = 0;
    }
    bool IsBeforeEnd() { return m_InFront != 0 || m_At != m_Stop || GoOn(); }
    /// Whether the progress made an end of it, and it came to that.
    bool IsStopped() const { return m_IsStopped; }

private:
    bool GoOn() {
        constexpr size_t kStep = size_t{1} << 18;
        if (m_At == m_End) {
            m_IsStopped = m_IsStopped || m_IsCut;
            return false;
        }
        m_IsStopped = !m_Progress->Advance({m_At, m_Text.size()});
        m_Stop = m_IsStopped ? m_At : m_At + std::min(kStep, m_End - m_At);
        m_End = m_IsStopped ? m_At : m_End;
        return !m_IsStopped;
    }

    std::string_view m_Text;
    size_t m_At;
    size_t m_Stop; ///< up to where it reads without asking
    size_t m_End;
    ReadProgress* m_Progress;
    bool m_IsCut;
    size_t m_Jumped = 0;
    char m_InFront = 0;
    bool m_IsStopped = false;
};

/// What the parser, which copies iterators, takes for one; all copies stand where the cursor does.
struct JsonIterator {
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = ptrdiff_t;
    using pointer = const char*;
    using reference = char;

    char operator*() const { return m_Cursor->Character(); }
    JsonIterator& operator++() {
        m_Cursor->Advance();
        return *this;
    }
    bool operator!=(const JsonIterator&) const { return m_Cursor->IsBeforeEnd(); }
    bool operator==(const JsonIterator& other) const { return !(*this != other); }

    JsonCursor* m_Cursor;
};
