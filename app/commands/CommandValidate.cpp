#include "app/commands/Commands.h"
#include "app/installation/Installation.h"
#include "app/validate/Probe.h"
#include "app/validate/Report.h"

#include <iomanip>
#include <iostream>
#include <regex.h>
#include <unistd.h>

namespace {

using Checks = std::vector<const Check*>;

/// An extended regular expression.
class Expression {
public:
    explicit Expression(const std::string& text) {
        if (regcomp(&m_Compiled, text.c_str(), REG_EXTENDED | REG_NOSUB) != 0) {
            throw UsageError("not a regular expression: " + text);
        }
    }
    ~Expression() { regfree(&m_Compiled); }
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;

    bool IsFoundIn(const char* text) const {
        return regexec(&m_Compiled, text, 0, nullptr, 0) == 0;
    }

private:
    regex_t m_Compiled = {};
};

Checks Matching(const std::string& text) {
    Checks matching;
    const Expression expression(text);
    for (const Check* check : AllChecks()) {
        if (expression.IsFoundIn(check->m_Name)) {
            matching.push_back(check);
        }
    }
    if (matching.empty()) {
        throw UsageError("no check matches " + text);
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
