#include "app/faults/FailingNew.h"
#include "app/validate/Candidate.h"
#include "app/validate/Scenario.h"

#include <algorithm>

// A component's life in a host, in which one thing after the other fails, and then everything from
// there on.

namespace {

/// What a life leaves behind.
struct Aftermath {
    bool m_HasFailed = false; ///< there was as much as that to fail
    bool m_HasThrown = false; ///< an exception left an operation
    bool m_DrawsAgain = false;
    int32_t m_Count = 0;      ///< references to the component that its use added
    int32_t m_References = 0; ///< references to host objects that are kept
    size_t m_Misuses = 0;
};

/// Fails from `first` on so many times while `live` runs, and answers whether it came to that.
using Fault = bool (*)(Gate& gate, size_t first, size_t failing, const std::function<void()>& live);

bool FailHost(Gate& gate, size_t first, size_t failing, const std::function<void()>& live) {
    gate.Fail(first, failing);
    live();
    const bool hasFailed = gate.HasFailed();
    gate.FailNothing();
    return hasFailed;
}

bool FailMemory(Gate&, size_t first, size_t failing, const std::function<void()>& live) {
    const FailingNew failingNew(first, failing);
    live();
    return failingNew.HasFailed();
}

/// Creates a component and uses it while something fails; one that could not be made then is made
/// afterwards. It has to draw when all is well again. Nothing here allocates while memory fails.
void Live(Aftermath& aftermath, const Stage& stage, Gate& gate, Fault fault, size_t first,
    size_t failing) {
    Scenario scenario(&gate);
    const CreatorFunction creator = stage.Creator();
    std::optional<Candidate> candidate;
    aftermath.m_HasFailed = fault(gate, first, failing, [&] {
        try {
            IID iid = IID_IUnknown;
            void* made = nullptr;
            if (creator(nullptr, &iid, &made) >= 0 && made) {
                candidate.emplace(Adopt(static_cast<IUnknown*>(made)));
                const int32_t before = CountOf(candidate->Get());
                scenario.Play(candidate->Get());
                aftermath.m_Count = CountOf(candidate->Get()) - before;
            }
        } catch (...) {
            aftermath.m_HasThrown = true;
        }
    });
    if (!candidate) {
        candidate.emplace(stage);
    }
    aftermath.m_DrawsAgain = scenario.Draws(candidate->Get());
}

/// The module is loaded anew, so that what it keeps until it is unloaded counts too.
Aftermath LiveOnce(Stage& stage, Fault fault, size_t first, size_t failing) {
    Aftermath aftermath;
    Gate gate;
    stage.Load(gate.Wrap(stage.TheHost().Components()).Get());
    Live(aftermath, stage, gate, fault, first, failing);
    stage.Unload();
    aftermath.m_References = gate.References();
    aftermath.m_Misuses = gate.Misuses().size();
    return aftermath;
}

void Judge(Trial& trial, const std::string& when, const Aftermath& well, const Aftermath& now) {
    trial.Expect(!now.m_HasThrown, when + "an exception leaves an operation");
    trial.Expect(now.m_DrawsAgain, when + "it does not draw when all is well again");
    // What it does even when all is well is found elsewhere, and is less where less comes to pass.
    const bool isCounted =
        now.m_Count >= std::min(0, well.m_Count) && now.m_Count <= std::max(0, well.m_Count);
    const int32_t kept = now.m_References - well.m_References;
    trial.Expect(isCounted, when + "its count changes by " + std::to_string(now.m_Count));
    trial.Expect(kept <= 0, when + std::to_string(kept) + " references to host objects are kept");
    trial.Expect(now.m_Misuses == well.m_Misuses, when + "something is released twice");
}

void FailEach(Trial& trial, Fault fault, const std::string& what, size_t failing) {
    Stage stage(trial.TheSubject());
    stage.NeedUnloading(trial);
    const Aftermath well = LiveOnce(stage, fault, SIZE_MAX, 0);
    size_t first = 0;
    for (bool hasFailed = true; hasFailed; ++first) {
        const Aftermath now = LiveOnce(stage, fault, first, failing);
        Judge(trial, "with " + what + " " + std::to_string(first) + " ", well, now);
        hasFailed = now.m_HasFailed;
    }
    trial.Expect(stage.Leaked().empty(), "host objects are held: " + stage.Leaked());
    trial.Measure(std::to_string(first - 1) + " times");
}

void HostOnce(Trial& trial) {
    FailEach(trial, &FailHost, "host call", 1);
}

void HostOnwards(Trial& trial) {
    FailEach(trial, &FailHost, "all host calls from", SIZE_MAX);
}

void MemoryOnce(Trial& trial) {
    FailEach(trial, &FailMemory, "allocation", 1);
}

void MemoryOnwards(Trial& trial) {
    FailEach(trial, &FailMemory, "all allocations from", SIZE_MAX);
}

} // namespace

std::span<const Check> FaultChecks() {
    static constexpr const char* kHost = "what the host handed out is used without a look at it";
    static constexpr const char* kMemory = "what may allocate stands in Guarded, and undoes itself";
    static constexpr Check checks[] = {
        {"faults.host-once", "Any one call of the host may fail.", kHost, &HostOnce},
        {"faults.host-onwards", "The host may fail from any call on.", kHost, &HostOnwards},
        {"faults.memory-once", "Any one allocation may fail.", kMemory, &MemoryOnce},
        {"faults.memory-onwards", "Memory may run out at any allocation.", kMemory, &MemoryOnwards},
    };
    return checks;
}
