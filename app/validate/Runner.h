#pragma once

#include "app/validate/Check.h"

#include <chrono>
#include <vector>

/// What came out of a check.
struct Verdict {
    enum class Outcome { kPassed, kFailed, kSkipped };

    const Check* m_Check = nullptr;
    Outcome m_Outcome = Outcome::kPassed;
    std::vector<std::string> m_Findings = {}; ///< why it failed
    std::string m_Figure = {}; ///< what was counted or measured, or why it was skipped
    std::string m_Output = {}; ///< the end of what the module printed, when it failed
    double m_Seconds = 0;
};

/// Runs a check in a child process, which is ended after the limit. A child that crashes or hangs
/// has failed. Throws std::system_error when there is no child to be had.
Verdict RunInChild(const Check& check, const Subject& subject, std::chrono::seconds limit);

/// Runs a check in this process, for debuggers: what crashes there crashes here.
Verdict RunHere(const Check& check, const Subject& subject);
