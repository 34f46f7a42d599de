#include "app/validate/Check.h"

#include <vector>

namespace {

constexpr int kMostFindings = 8;

} // namespace

bool Trial::Expect(bool holds, const std::string& finding) {
    if (!holds && m_Findings++ < kMostFindings) {
        m_Listener(Say::kFinding, finding);
    }
    return holds;
}

void Trial::Skip(const std::string& reason) {
    m_Listener(Say::kSkip, reason);
    throw Skipped();
}

std::span<const Check* const> AllChecks() {
    static const std::vector<const Check*> checks = [] {
        std::vector<const Check*> all;
        for (const auto family :
            {ModuleChecks(), ObjectChecks(), NullChecks(), ParameterChecks(), SettingsChecks(),
                DrawingChecks(), NumberChecks(), HostileChecks(), FaultChecks(), ThreadChecks()}) {
            for (const Check& check : family) {
                all.push_back(&check);
            }
        }
        return all;
    }();
    return checks;
}
