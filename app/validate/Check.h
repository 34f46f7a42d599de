#pragma once

#include <filesystem>
#include <functional>
#include <span>
#include <string>

/// What is validated: a component of a module, and the host to do it in.
struct Subject {
    std::filesystem::path m_Module; ///< the file, absolute
    std::wstring m_Component;
    std::filesystem::path m_Host; ///< the folder of the host's modules
};

/// One run of a check. What the check has to say goes out at once, so that it is not lost when the
/// process ends before the check does.
class Trial {
public:
    enum class Say { kFinding, kFigure, kSkip, kPlace };
    using Listener = std::function<void(Say, const std::string&)>;

    Trial(const Subject& subject, Listener listener)
        : m_Subject(subject), m_Listener(std::move(listener)) {}

    const Subject& TheSubject() const { return m_Subject; }
    /// A finding unless it holds. Answers whether it does. The first few are told.
    bool Expect(bool holds, const std::string& finding);
    /// What was measured or counted.
    void Measure(const std::string& figure) { m_Listener(Say::kFigure, figure); }
    /// Where the check is, in words that follow "ended by SIGSEGV": a crash, a hang or an exception
    /// is told with the last place. Costs little.
    void At(const std::string& place) { m_Listener(Say::kPlace, place); }
    /// The check does not apply, because of that.
    [[noreturn]] void Skip(const std::string& reason);
    bool HasFailed() const { return m_Findings > 0; }

private:
    const Subject& m_Subject;
    Listener m_Listener;
    int m_Findings = 0;
};

/// Ends a check that does not apply.
struct Skipped {};

/// One promise that every module keeps, and how to find out whether this one does.
struct Check {
    const char* m_Name;   ///< "<family>.<promise>"
    const char* m_Proves; ///< one line
    const char* m_LookAt; ///< one line: where the fault is when it fails
    void (*m_Run)(Trial&);
};

/// Every check, in the order in which they run: what others build on first.
std::span<const Check* const> AllChecks();

// The families, a file each in checks/.
std::span<const Check> ModuleChecks();
std::span<const Check> ObjectChecks();
std::span<const Check> NullChecks();
std::span<const Check> ParameterChecks();
std::span<const Check> SettingsChecks();
std::span<const Check> DrawingChecks();
std::span<const Check> NumberChecks();
std::span<const Check> HostileChecks();
std::span<const Check> FaultChecks();
std::span<const Check> ThreadChecks();
