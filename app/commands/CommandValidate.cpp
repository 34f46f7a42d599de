#include "app/commands/Commands.h"
#include "app/validate/Probe.h"
#include "app/validate/Report.h"
#include "app/view/Installation.h"

#include <iomanip>
#include <iostream>
#include <regex>
#include <unistd.h>

namespace {

using Checks = std::vector<const Check*>;

Checks Matching(const std::string& expression) {
    Checks matching;
    try {
        const std::regex regex(expression);
        for (const Check* check : AllChecks()) {
            if (std::regex_search(check->m_Name, regex)) {
                matching.push_back(check);
            }
        }
    } catch (const std::regex_error&) {
        throw UsageError("not a regular expression: " + expression);
    }
    if (matching.empty()) {
        throw UsageError("no check matches " + expression);
    }
    return matching;
}

/// Shows on a terminal what is being done, and takes it away again.
class Progress {
public:
    explicit Progress(const Check& check) {
        if (m_IsShown) {
            std::cout << "        " << check.m_Name << " ..." << std::flush;
        }
    }
    ~Progress() {
        if (m_IsShown) {
            std::cout << "\r\x1b[K";
        }
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    bool m_IsShown = isatty(STDOUT_FILENO) != 0;
};

Verdict Run(const Check& check, const Subject& subject, const ValidateOptions& options) {
    const Progress progress(check);
    return options.m_InProcess
               ? RunHere(check, subject)
               : RunInChild(check, subject, std::chrono::seconds(options.m_TimeLimit));
}

} // namespace

void RunValidate(const ValidateOptions& options) {
    const Checks checks = Matching(options.m_Only);
    if (options.m_List) {
        for (const Check* check : checks) {
            std::cout << std::left << std::setw(22) << check->m_Name << check->m_Proves << '\n';
        }
        return;
    }
    if (options.m_Module.empty()) {
        throw UsageError("MODULE is missing");
    }
    const Subject subject = Probe(options.m_Module, options.m_Component, FindInstallation().m_Host);
    std::vector<Verdict> verdicts;
    for (const Check* check : checks) {
        verdicts.push_back(Run(*check, subject, options));
        if (!options.m_AsJson) {
            PrintVerdict(std::cout, verdicts.back());
            std::cout.flush();
        }
    }
    const Totals totals = Count(verdicts);
    options.m_AsJson ? PrintJson(std::cout, subject, verdicts) : PrintTotals(std::cout, totals);
    if (!options.m_JUnit.empty()) {
        WriteJUnit(options.m_JUnit, subject, verdicts);
    }
    if (totals.m_Failed > 0) {
        throw std::runtime_error(std::to_string(totals.m_Failed) + " of " +
                                 std::to_string(verdicts.size()) + " checks failed");
    }
}
