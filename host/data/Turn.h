#pragma once

#include <algorithm>
#include <chrono>
#include <optional>

/// A part of long work on the window's thread, which answers the user between two of them.
class Turn {
public:
    using Duration = std::chrono::steady_clock::duration;

    /// Begins, for so long; without a limit it is never over.
    explicit Turn(std::optional<Duration> limit = {}) : m_Limit(limit) {}

    /// To be asked after each step.
    bool IsOver() const { return m_Limit && Past() >= *m_Limit; }
    Duration Past() const { return std::chrono::steady_clock::now() - m_Begin; }

private:
    std::optional<Duration> m_Limit;
    std::chrono::steady_clock::time_point m_Begin = std::chrono::steady_clock::now();
};

/// How long the turns of some work are.
class Turns {
public:
    /// So long each from now on, or for one step with 0; else the first one goes on to the end.
    void Limit(std::chrono::milliseconds limit) { m_Limit = limit; }
    /// What a turn cost beside its steps: the next ones last so long too, so that it is half of the
    /// time at most.
    void NoteCost(Turn::Duration cost) { m_Cost = cost; }
    Turn Begin() const {
        const bool isTimed = m_Limit && *m_Limit > Turn::Duration::zero();
        return Turn(isTimed ? std::max(*m_Limit, m_Cost) : m_Limit);
    }

private:
    std::optional<Turn::Duration> m_Limit;
    Turn::Duration m_Cost{};
};
