#pragma once

#include "host/reading/ReadProgress.h"

#include <cstdint>
#include <ostream>
#include <string>

/// Shows on a terminal how far a reading is once that takes longer than a second, in one line that
/// is gone with it. Never stops the reading.
class TerminalBar final : public ReadProgress {
public:
    /// `terminal` outlives it, and is not written to unless it is one. The bar has the last part of
    /// `path` in it.
    TerminalBar(const std::string& path, std::ostream& terminal, bool isTerminal);
    ~TerminalBar() override;

    bool Advance(const ReadState& state) override;

private:
    std::ostream& m_Terminal;
    bool m_IsTerminal;
    std::string m_Name;
    int64_t m_Begin; ///< in milliseconds
    std::string m_Shown;
};
