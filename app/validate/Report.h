#pragma once

#include "app/validate/Runner.h"

#include <ostream>

/// How many checks came out how.
struct Totals {
    int m_Passed = 0;
    int m_Failed = 0;
    int m_Skipped = 0;
};
Totals Count(const std::vector<Verdict>& verdicts);

/// A line for each check, and for one that failed what was found, what it proves and where to look.
void PrintVerdict(std::ostream& out, const Verdict& verdict);
void PrintTotals(std::ostream& out, const Totals& totals);

/// All of it for programs, as one object.
void PrintJson(std::ostream& out, const Subject& subject, const std::vector<Verdict>& verdicts);

/// The checks and what they prove.
void PrintList(std::ostream& out, std::span<const Check* const> checks, bool asJson);

/// All of it in the form that build servers read.
void WriteJUnit(std::ostream& out, const Subject& subject, const std::vector<Verdict>& verdicts);
