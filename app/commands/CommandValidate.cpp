#include "app/commands/Commands.h"
#include "app/installation/Installation.h"
#include "app/validate/Probe.h"
#include "app/validate/Report.h"

#include <fstream>
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

/// Shows on a terminal what is being done, and takes it away again. Standard output may be read by
/// programs.
class Progress {
public:
    Progress(const Check& check, size_t number, size_t all) {
        if (m_IsShown) {
            std::cerr << "        " << number << " of " << all << "  " << check.m_Name << " ...";
        }
    }
    ~Progress() {
        if (m_IsShown) {
            std::cerr << "\r\x1b[K";
        }
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    bool m_IsShown = isatty(STDERR_FILENO) != 0;
};

/// The report for build servers, whose file is there before anything is run.
class Report {
public:
    explicit Report(const std::string& file) : m_Name(file) {
        if (!file.empty()) {
            m_File.open(file);
            Check();
        }
    }
    void Write(const Subject& subject, const std::vector<Verdict>& verdicts) {
        if (m_File.is_open()) {
            WriteJUnit(m_File, subject, verdicts);
            m_File.flush();
            Check();
        }
    }

private:
    void Check() const {
        if (!m_File) {
            throw std::runtime_error("cannot write " + m_Name);
        }
    }

    std::string m_Name;
    std::ofstream m_File;
};

std::vector<Verdict> RunAll(
    const Checks& checks, const Subject& subject, const ValidateOptions& options) {
    const std::chrono::seconds limit(options.m_TimeLimit);
    std::vector<Verdict> verdicts;
    for (const Check* check : checks) {
        {
            const Progress progress(*check, verdicts.size() + 1, checks.size());
            verdicts.push_back(options.m_InProcess ? RunHere(*check, subject)
                                                   : RunInChild(*check, subject, limit));
        }
        if (!options.m_AsJson) {
            PrintVerdict(std::cout, verdicts.back());
            std::cout.flush();
        }
    }
    return verdicts;
}

} // namespace

void RunValidate(const ValidateOptions& options) {
    const Checks checks = Matching(options.m_Only);
    if (options.m_List) {
        PrintList(std::cout, checks, options.m_AsJson);
        return;
    }
    if (options.m_Module.empty()) {
        throw UsageError("MODULE is missing");
    }
    const Subject subject = Probe(options.m_Module, options.m_Component, FindInstallation().m_Host,
        std::chrono::seconds(options.m_TimeLimit));
    Report report(options.m_JUnit);
    const std::vector<Verdict> verdicts = RunAll(checks, subject, options);
    const Totals totals = Count(verdicts);
    options.m_AsJson ? PrintJson(std::cout, subject, verdicts) : PrintTotals(std::cout, totals);
    report.Write(subject, verdicts);
    if (totals.m_Failed > 0) {
        throw std::runtime_error(std::to_string(totals.m_Failed) + " of " +
                                 std::to_string(verdicts.size()) + " checks failed");
    }
}
