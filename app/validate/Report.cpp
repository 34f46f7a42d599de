#include "app/validate/Report.h"

#include "host/text/Text.h"

#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>

namespace {

using Outcome = Verdict::Outcome;

const char* NameOf(Outcome outcome) {
    switch (outcome) {
    case Outcome::kPassed:
        return "passed";
    case Outcome::kFailed:
        return "failed";
    default:
        return "skipped";
    }
}

std::string Printable(const std::string& text) {
    const std::wstring wide = ToWide(text);
    return ToPrintable(Refer(wide));
}

/// What a module printed, line by line.
std::string PrintableLines(const std::string& text) {
    std::string lines;
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find('\n', at), text.size());
        lines += Printable(text.substr(at, end - at)) + '\n';
        at = end + 1;
    }
    return lines;
}

/// Text as XML carries it.
std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char character : text) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : "; ") + line;
    }
    return text;
}

void WriteCase(std::ostream& out, const Verdict& verdict, const std::string& component) {
    out << "    <testcase classname=\"" << component << "\" name=\"" << verdict.m_Check->m_Name
        << "\" time=\"" << verdict.m_Seconds << "\">";
    if (verdict.m_Outcome == Outcome::kFailed) {
        out << "<failure message=\"" << Escaped(Printable(Joined(verdict.m_Findings))) << "\">"
            << Escaped(verdict.m_Check->m_LookAt) << "</failure>";
    } else if (verdict.m_Outcome == Outcome::kSkipped) {
        out << "<skipped message=\"" << Escaped(verdict.m_Figure) << "\"/>";
    }
    if (!verdict.m_Output.empty()) {
        out << "<system-out>" << Escaped(PrintableLines(verdict.m_Output)) << "</system-out>";
    }
    out << "</testcase>\n";
}

} // namespace

Totals Count(const std::vector<Verdict>& verdicts) {
    Totals totals;
    for (const Verdict& verdict : verdicts) {
        ++(verdict.m_Outcome == Outcome::kPassed    ? totals.m_Passed
            : verdict.m_Outcome == Outcome::kFailed ? totals.m_Failed
                                                    : totals.m_Skipped);
    }
    return totals;
}

void PrintVerdict(std::ostream& out, const Verdict& verdict) {
    const bool hasFailed = verdict.m_Outcome == Outcome::kFailed;
    out << std::left << std::setw(8) << (hasFailed ? "FAILED" : NameOf(verdict.m_Outcome))
        << std::setw(22) << verdict.m_Check->m_Name << std::setw(60) << verdict.m_Figure
        << std::right << std::fixed << std::setprecision(2) << std::setw(8) << verdict.m_Seconds
        << " s\n";
    if (!hasFailed) {
        return;
    }
    for (const std::string& finding : verdict.m_Findings) {
        out << "        - " << Printable(finding) << '\n';
    }
    out << "        promised: " << verdict.m_Check->m_Proves
        << "\n        look at:  " << verdict.m_Check->m_LookAt << '\n';
    std::istringstream lines(PrintableLines(verdict.m_Output));
    for (std::string line; std::getline(lines, line);) {
        out << "        | " << line << '\n';
    }
}

void PrintTotals(std::ostream& out, const Totals& totals) {
    out << totals.m_Passed << " passed, " << totals.m_Failed << " failed, " << totals.m_Skipped
        << " skipped\n";
}

void PrintJson(std::ostream& out, const Subject& subject, const std::vector<Verdict>& verdicts) {
    const Totals totals = Count(verdicts);
    nlohmann::ordered_json report = {{"module", Printable(subject.m_Module.string())},
        {"component", ToPrintable(Refer(subject.m_Component))}, {"passed", totals.m_Passed},
        {"failed", totals.m_Failed}, {"skipped", totals.m_Skipped},
        {"checks", nlohmann::ordered_json::array()}};
    for (const Verdict& verdict : verdicts) {
        nlohmann::ordered_json findings = nlohmann::ordered_json::array();
        for (const std::string& finding : verdict.m_Findings) {
            findings.push_back(Printable(finding));
        }
        report["checks"].push_back(
            {{"name", verdict.m_Check->m_Name}, {"outcome", NameOf(verdict.m_Outcome)},
                {"findings", std::move(findings)}, {"figure", verdict.m_Figure},
                {"output", PrintableLines(verdict.m_Output)}, {"seconds", verdict.m_Seconds},
                {"proves", verdict.m_Check->m_Proves}, {"lookAt", verdict.m_Check->m_LookAt}});
    }
    out << report.dump(2) << '\n';
}

void PrintList(std::ostream& out, std::span<const Check* const> checks, bool asJson) {
    auto list = nlohmann::ordered_json::array();
    for (const Check* check : checks) {
        if (asJson) {
            list.push_back({{"name", check->m_Name}, {"proves", check->m_Proves},
                {"lookAt", check->m_LookAt}});
        } else {
            out << std::left << std::setw(22) << check->m_Name << check->m_Proves << '\n';
        }
    }
    if (asJson) {
        out << list.dump(2) << '\n';
    }
}

void WriteJUnit(std::ostream& out, const Subject& subject, const std::vector<Verdict>& verdicts) {
    const Totals totals = Count(verdicts);
    const std::string component = Escaped(ToPrintable(Refer(subject.m_Component)));
    double seconds = 0;
    for (const Verdict& verdict : verdicts) {
        seconds += verdict.m_Seconds;
    }
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n  <testsuite name=\""
        << component << "\" tests=\"" << verdicts.size() << "\" failures=\"" << totals.m_Failed
        << "\" skipped=\"" << totals.m_Skipped << "\" time=\"" << seconds << "\">\n";
    for (const Verdict& verdict : verdicts) {
        WriteCase(out, verdict, component);
    }
    out << "  </testsuite>\n</testsuites>\n";
}
