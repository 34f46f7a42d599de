#include "app/validate/Runner.h"

#include "app/validate/Child.h"

#include <exception>

/// Reports leaked memory of this process and answers whether there is any; there in programs under
/// LeakSanitizer only.
extern "C" __attribute__((weak)) int __lsan_do_recoverable_leak_check();

namespace {

using Clock = std::chrono::steady_clock;

/// What a trial says, by the characters that travel through the pipe.
constexpr char kFinding = 'x';
constexpr char kFigure = '=';
constexpr char kSkip = '-';

char KindOf(Trial::Say say) {
    switch (say) {
    case Trial::Say::kFinding:
        return kFinding;
    case Trial::Say::kFigure:
        return kFigure;
    case Trial::Say::kPlace:
        return kPlace;
    default:
        return kSkip;
    }
}

void Note(Verdict& verdict, char kind, const std::string& text) {
    if (kind == kFinding) {
        verdict.m_Findings.push_back(text);
        verdict.m_Outcome = Verdict::Outcome::kFailed;
        return;
    }
    if (kind == kPlace) {
        return; // whoever looks on sees it
    }
    verdict.m_Figure = text;
    if (kind == kSkip) {
        verdict.m_Outcome = Verdict::Outcome::kSkipped;
    }
}

void RunGuarded(const Check& check, Trial& trial, const std::string& place) {
    try {
        check.m_Run(trial);
    } catch (const Skipped&) {
        return;
    } catch (const std::exception& exception) {
        trial.Expect(false, "an exception came out" + place + ": " + exception.what());
    } catch (...) {
        trial.Expect(false, "an exception came out" + place);
    }
}

void RunTrial(const Check& check, const Subject& subject, const Tell& tell) {
    std::string place;
    Trial trial(subject, [&](Trial::Say say, const std::string& text) {
        if (say == Trial::Say::kPlace) {
            place = ' ' + text;
        }
        tell(KindOf(say), text);
    });
    RunGuarded(check, trial, place);
    if (__lsan_do_recoverable_leak_check != nullptr) {
        trial.Expect(__lsan_do_recoverable_leak_check() == 0, "memory leaked");
    }
}

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

} // namespace

Verdict RunInChild(const Check& check, const Subject& subject, std::chrono::seconds limit) {
    Verdict verdict{.m_Check = &check};
    const auto start = Clock::now();
    const ChildEnd end = RunChild([&](const Tell& tell) { RunTrial(check, subject, tell); },
        [&](char kind, const std::string& text) { Note(verdict, kind, text); }, limit);
    verdict.m_Seconds = SecondsSince(start);
    if (!end.m_IsDone) {
        Note(verdict, kFinding, end.m_Reason + (end.m_Place.empty() ? "" : " " + end.m_Place));
    }
    if (verdict.m_Outcome == Verdict::Outcome::kFailed) {
        verdict.m_Output = end.m_Output;
    }
    return verdict;
}

Verdict RunHere(const Check& check, const Subject& subject) {
    Verdict verdict{.m_Check = &check};
    const auto start = Clock::now();
    RunTrial(
        check, subject, [&](char kind, const std::string& text) { Note(verdict, kind, text); });
    verdict.m_Seconds = SecondsSince(start);
    return verdict;
}
