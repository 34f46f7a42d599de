#include "app/faults/FailingNew.h"
#include "app/validate/Candidate.h"
#include "app/validate/Scenario.h"

#include <algorithm>

// A component's life in a host, in which one thing after the other fails, and then everything from
// there on.

namespace {

/// What a life leaves behind. Nothing of it allocates: it is there while memory is counted.
struct Aftermath {
    bool m_HasFailed = false;        ///< there was as much as that to fail
    bool m_HasThrown = false;        ///< an exception left an operation
    bool m_IsMadeWell = false;       ///< the component was made before anything failed
    std::optional<size_t> m_Picture; ///< drawn when all was well again, if there was a component
    std::optional<size_t> m_Fresh;   ///< drawn by one that was made after all that
    const char* m_Canvas = nullptr;  ///< what is wrong with the canvas
    int32_t m_Count = 0;             ///< references to the component that its use added
    int32_t m_References = 0;        ///< references to host objects that are kept
    int64_t m_Blocks = 0;            ///< of memory that are kept
    size_t m_Misuses = 0;
};

/// While one lives, calls of the host fail, from `first` on so many.
class HostFault {
public:
    HostFault(Gate& gate, size_t first, size_t failing) : m_Gate(gate) {
        gate.Fail(first, failing);
    }
    ~HostFault() { m_Gate.FailNothing(); }
    HostFault(const HostFault&) = delete;
    HostFault& operator=(const HostFault&) = delete;

    bool HasFailed() const { return m_Gate.HasFailed(); }

private:
    Gate& m_Gate;
};

/// The same of allocations.
class MemoryFault {
public:
    MemoryFault(Gate&, size_t first, size_t failing) : m_Failing(first, failing) {}

    bool HasFailed() const { return m_Failing.HasFailed(); }

private:
    FailingNew m_Failing;
};

/// Creates a component, if that succeeds, and uses it while something fails. Nothing here allocates
/// while memory does.
template <class Fault>
void Use(Aftermath& aftermath, CreatorFunction creator, std::optional<Candidate>& candidate,
    Scenario& scenario, const Fault& fault) {
    IID iid = IID_IUnknown;
    void* made = nullptr;
    if (creator(nullptr, &iid, &made) < 0 || !made) {
        return;
    }
    candidate.emplace(Adopt(static_cast<IUnknown*>(made)));
    aftermath.m_IsMadeWell = !fault.HasFailed();
    const int32_t before = CountOf(candidate->Get());
    scenario.Play(candidate->Get());
    aftermath.m_Count = CountOf(candidate->Get()) - before;
}

template <class Fault>
void Live(Aftermath& aftermath, const Stage& stage, Gate& gate, size_t first, size_t failing) {
    Scenario scenario(&gate);
    std::optional<Candidate> candidate;
    std::optional<Fault> fault(std::in_place, gate, first, failing);
    try {
        Use(aftermath, stage.Creator(), candidate, scenario, *fault);
    } catch (...) {
        aftermath.m_HasThrown = true;
    }
    aftermath.m_HasFailed = fault->HasFailed();
    fault.reset();
    aftermath.m_Canvas = scenario.CanvasFault();
    try {
        if (candidate) {
            aftermath.m_Picture = scenario.Picture(candidate->Get());
        }
        const Candidate fresh(stage);
        aftermath.m_Fresh = scenario.Picture(fresh.Get());
    } catch (...) {
        aftermath.m_HasThrown = true;
    }
}

/// The module is loaded anew, so that what it keeps until it is unloaded counts too.
template <class Fault>
Aftermath LiveOnce(Stage& stage, size_t first, size_t failing) {
    Aftermath aftermath;
    const int64_t blocks = LiveBlocks();
    Gate& gate = stage.RaiseGate();
    stage.Load();
    Live<Fault>(aftermath, stage, gate, first, failing);
    stage.Unload();
    aftermath.m_References = gate.References();
    aftermath.m_Misuses = gate.Misuses().size();
    stage.LowerGate();
    aftermath.m_Blocks = LiveBlocks() - blocks;
    return aftermath;
}

/// What it does even when all is well is found elsewhere, and is less where less comes to pass.
void Judge(Trial& trial, const std::string& when, const Aftermath& well, const Aftermath& now) {
    trial.Expect(!now.m_HasThrown, when + " an exception leaves an operation");
    trial.Expect(now.m_Fresh == well.m_Fresh, when + " a new one does not draw as ever");
    trial.Expect(!now.m_IsMadeWell || now.m_Picture == well.m_Picture,
        when + " it does not draw as ever when all is well again");
    trial.Expect(!now.m_Canvas || well.m_Canvas, when + ' ' + (now.m_Canvas ? now.m_Canvas : ""));
    const bool isCounted =
        now.m_Count >= std::min(0, well.m_Count) && now.m_Count <= std::max(0, well.m_Count);
    const int32_t kept = now.m_References - well.m_References;
    const int64_t blocks = now.m_Blocks - std::max<int64_t>(0, well.m_Blocks);
    trial.Expect(isCounted, when + " its count changes by " + std::to_string(now.m_Count));
    trial.Expect(
        kept <= 0, when + ' ' + std::to_string(kept) + " references to host objects are kept");
    trial.Expect(blocks <= 0, when + ' ' + std::to_string(blocks) + " blocks of memory are kept");
    trial.Expect(now.m_Misuses == well.m_Misuses, when + " something is released twice");
}

using LifeFunction = Aftermath (*)(Stage& stage, size_t first, size_t failing);

void FailEach(Trial& trial, LifeFunction liveOnce, const std::string& what, size_t failing) {
    Stage stage(trial.TheSubject());
    stage.NeedUnloading(trial);
    liveOnce(stage, SIZE_MAX, 0); // what the host keeps once and for all is no longer counted
    const Aftermath well = liveOnce(stage, SIZE_MAX, 0);
    size_t first = 0;
    for (bool hasFailed = true; hasFailed; ++first) {
        const std::string when = "with " + what + ' ' + std::to_string(first);
        trial.At(when);
        const Aftermath now = liveOnce(stage, first, failing);
        Judge(trial, when, well, now);
        hasFailed = now.m_HasFailed;
    }
    trial.Expect(stage.Leaked().empty(), "host objects are held: " + stage.Leaked());
    trial.Measure(std::to_string(first - 1) + " times");
}

void HostOnce(Trial& trial) {
    FailEach(trial, &LiveOnce<HostFault>, "host call", 1);
}

void HostOnwards(Trial& trial) {
    FailEach(trial, &LiveOnce<HostFault>, "all host calls from", SIZE_MAX);
}

void MemoryOnce(Trial& trial) {
    FailEach(trial, &LiveOnce<MemoryFault>, "allocation", 1);
}

void MemoryOnwards(Trial& trial) {
    FailEach(trial, &LiveOnce<MemoryFault>, "all allocations from", SIZE_MAX);
}

} // namespace

std::span<const Check> FaultChecks() {
    static constexpr const char* kHost = "what the host handed out is used without a look at it";
    static constexpr const char* kMemory = "what may allocate stands in Guarded, and undoes itself";
    static constexpr Check checks[] = {
        {"faults.host-once", "Any one call of the host may fail.", kHost, &HostOnce},
        {"faults.host-onwards", "The host may fail from any call on.", kHost, &HostOnwards},
        {"faults.memory-once",
            "Any one operator new may fail, and no exception leaves an operation.", kMemory,
            &MemoryOnce},
        {"faults.memory-onwards",
            "Memory may run out at any operator new, and no exception leaves an operation.",
            kMemory, &MemoryOnwards},
    };
    return checks;
}
