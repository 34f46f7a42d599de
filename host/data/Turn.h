#pragma once

#include <chrono>
#include <optional>

/// A part of long work on the window's thread, which answers the user between two of them.
class Turn {
public:
    /// Begins, for so long; without a limit it is never over.
    explicit Turn(std::optional<std::chrono::milliseconds> limit = {})
        : m_Limit(limit), m_Begin(std::chrono::steady_clock::now()) {}

    /// To be asked after each step.
    bool IsOver() const {
        return m_Limit && std::chrono::steady_clock::now() - m_Begin >= *m_Limit;
    }

private:
    std::optional<std::chrono::milliseconds> m_Limit;
    std::chrono::steady_clock::time_point m_Begin;
};
