#pragma once

#include <cstddef>
#include <string>

/// How far a reading is.
struct ReadState {
    size_t m_Done = 0;
    size_t m_Whole = 0;        ///< 0 where nobody knows
    bool m_AreEntries = false; ///< of a folder, and not bytes
};

/// For users: how much of the whole, or else what there is by now, in steps that are worth showing.
std::string ToText(const ReadState& state);

/// Hears how far a reading is, on the thread that reads.
class ReadProgress {
public:
    virtual ~ReadProgress() = default;

    /// Answers whether to go on; what was read until then is the result else.
    virtual bool Advance(const ReadState& state) = 0;
    /// Can be read from when a reading that waits for more is to ask; negative for never.
    virtual int Interruption() const { return -1; }
};

/// A text is read in two halves: its bytes first, and then they are gone through. What goes through
/// them knows of nothing before it.
class LaterHalf final : public ReadProgress {
public:
    /// `progress` outlives it, and may be null. What comes after both halves adds nothing.
    explicit LaterHalf(ReadProgress* progress, bool isOver = false)
        : m_Progress(progress), m_IsOver(isOver) {}

    bool Advance(const ReadState& state) override {
        const size_t done = m_IsOver ? state.m_Whole : state.m_Done;
        return !m_Progress || m_Progress->Advance({state.m_Whole + done, 2 * state.m_Whole});
    }

private:
    ReadProgress* m_Progress;
    bool m_IsOver;
};
