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

    /// Answers whether to go on. If not, what was read until then is the result.
    virtual bool Advance(const ReadState& state) = 0;
    /// A descriptor that becomes readable when a reading that waits for more should call Advance;
    /// negative for a progress that never wants that.
    virtual int Interruption() const { return -1; }
};

/// The progress of the second half of a reading. The first half gets the bytes of a text, and the
/// second one goes through them; it counts from 0, and this adds the first half to that.
class SecondHalf final : public ReadProgress {
public:
    /// `progress` outlives it, and may be null.
    explicit SecondHalf(ReadProgress* progress) : m_Progress(progress) {}

    bool Advance(const ReadState& state) override {
        return !m_Progress ||
               m_Progress->Advance({state.m_Whole + state.m_Done, 2 * state.m_Whole});
    }

private:
    ReadProgress* m_Progress;
};

/// The progress of what is done when both halves are over. It is part of neither, so the user sees
/// that all is done; it can still be stopped.
class Afterwards final : public ReadProgress {
public:
    /// `progress` outlives it, and may be null.
    explicit Afterwards(ReadProgress* progress) : m_Progress(progress) {}

    bool Advance(const ReadState& state) override {
        return !m_Progress || m_Progress->Advance({2 * state.m_Whole, 2 * state.m_Whole});
    }

private:
    ReadProgress* m_Progress;
};
