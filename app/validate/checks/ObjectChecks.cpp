#include "app/faults/FailingNew.h"
#include "app/validate/Candidate.h"
#include "app/validate/Growth.h"
#include "app/validate/Scenario.h"
#include "framework/runtime/Components.h"
#include "framework/support/REFString.h"
#include "host/components/AnsweredInterfaces.h"
#include "host/drawing/LabelPainter.h"
#include "host/text/Text.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

// An object's interfaces, its count, its making and its going.

namespace {

constexpr int kCreations = 10'000;
constexpr int kLives = 1'000;

std::string Sentence(const std::string& subject, const char* verb, const std::string& object) {
    std::string text = subject;
    text += verb;
    text += object;
    return text;
}

/// Every interface that each interface of an object answers, beside those of the object.
void Answers(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    const auto interfaces = InterfacesOf(candidate.Get());
    for (const auto& [name, iid] : interfaces) {
        const auto asked = Adopt(static_cast<IUnknown*>(QueryObject(candidate.Get(), iid)));
        const auto again = Adopt(static_cast<IUnknown*>(QueryObject(candidate.Get(), iid)));
        trial.Expect(asked && asked.Get() == again.Get(), name + " is another one the next time");
        const auto answered = InterfacesOf(asked.Get());
        for (const auto& [other, otherIID] : interfaces) {
            trial.Expect(answered.contains(other), Sentence(name, " does not answer ", other));
        }
        for (const auto& [other, otherIID] : answered) {
            trial.Expect(interfaces.contains(other), Sentence(name, " alone answers ", other));
        }
    }
    trial.Measure(std::to_string(interfaces.size()) + " interfaces");
}

void OneIdentity(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    const void* identity = candidate.As<IUnknown>();
    trial.Expect(identity != nullptr, "it does not answer IUnknown");
    for (const auto& [name, iid] : InterfacesOf(candidate.Get())) {
        const auto asked = Adopt(static_cast<IUnknown*>(QueryObject(candidate.Get(), iid)));
        trial.Expect(Query<IUnknown>(asked.Get()).Get() == identity,
            name + " answers IUnknown with another address");
    }
}

void UnknownInterface(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    for (const auto& [name, iid] : InterfacesOf(candidate.Get())) {
        const auto asked = Adopt(static_cast<IUnknown*>(QueryObject(candidate.Get(), iid)));
        for (const IID& unknown : {IID_NULL, __IIDOfc("NoSuchInterface")}) {
            void* answer = &stage;
            const int32_t status = asked->QueryInterface(unknown, &answer);
            trial.Expect(status == E_NOINTERFACE && !answer,
                name + " does not answer E_NOINTERFACE and null to what it does not know");
        }
    }
}

void CountsOfInterfaces(Trial& trial, const Stage& stage) {
    const Candidate candidate(stage);
    const int32_t before = CountOf(candidate.Get());
    for (const auto& [name, iid] : InterfacesOf(candidate.Get())) {
        const int32_t start = CountOf(candidate.Get());
        auto* asked = static_cast<IUnknown*>(QueryObject(candidate.Get(), iid));
        trial.Expect(CountOf(asked) == start + 1, "a query for " + name + " does not add one");
        trial.Expect(asked->AddRef() == start + 2 && asked->Release() == start + 1 &&
                         asked->Release() == start,
            name + " does not count by one");
    }
    trial.Expect(CountOf(candidate.Get()) == before, "asking for its interfaces leaves references");
}

/// What a component asks its host for the first time it may keep until it is unloaded; from the
/// second time on everything is given back.
int32_t ReferencesKeptByUse(Trial& trial, const Stage& stage, Gate& gate) {
    const Candidate first(stage);
    Scenario(&gate).Play(first.Get());
    const int32_t before = gate.References();
    {
        const Candidate second(stage);
        const int32_t count = CountOf(second.Get());
        Scenario(&gate).Play(second.Get());
        const int32_t change = CountOf(second.Get()) - count;
        trial.Expect(change == 0, "its use changes its count by " + std::to_string(change));
    }
    return gate.References() - before;
}

void Balance(Trial& trial) {
    Stage stage(trial.TheSubject());
    Gate& gate = stage.RaiseGate();
    stage.Load();
    CountsOfInterfaces(trial, stage);
    const int32_t kept = ReferencesKeptByUse(trial, stage, gate);
    trial.Expect(kept == 0, std::to_string(kept) + " references to host objects are kept");
    for (const std::string& misuse : gate.Misuses()) {
        trial.Expect(false, misuse);
    }
    auto* object = stage.CreateOrThrow().Detach();
    trial.Expect(object->Release() == 0, "a new object does not go with its one reference");
    stage.Unload();
}

/// What a creation answered.
struct Creation {
    explicit Creation(CreatorFunction creator)
        : m_Object(&m_Identifier), m_Status(creator(nullptr, &m_Identifier, &m_Object)) {}

    IID m_Identifier = IID_IUnknown;
    void* m_Object; ///< not null before
    int32_t m_Status;
};

void Judge(Trial& trial, const Creation& creation) {
    trial.Expect((creation.m_Status >= 0) == (creation.m_Object != nullptr),
        "status and pointer of a creation disagree");
    if (creation.m_Status >= 0 && creation.m_Object) {
        const int32_t left = static_cast<IUnknown*>(creation.m_Object)->Release();
        trial.Expect(left == 0, "an object does not go with its one reference");
    }
}

void RefusedCreations(Trial& trial, CreatorFunction creator) {
    IID unknown = __IIDOfc("NoSuchInterface");
    void* object = &unknown;
    trial.Expect(creator(nullptr, &unknown, &object) < 0 && !object,
        "an interface that it has not is not refused with null");
    trial.Expect(creator(nullptr, nullptr, &object) < 0, "no identifier is accepted");
    trial.Expect(creator(nullptr, &unknown, nullptr) < 0, "no place for the object is accepted");
}

/// Creates while the call of the host with that number fails; whether there is one.
bool FailHostCall(Trial& trial, Stage& stage, size_t number, size_t failing) {
    Gate& gate = stage.RaiseGate();
    stage.Load();
    const CreatorFunction creator = stage.Creator();
    gate.Fail(number, failing);
    const Creation creation(creator);
    const bool hasFailed = gate.HasFailed();
    gate.FailNothing();
    Judge(trial, creation);
    stage.Unload();
    trial.Expect(gate.References() == 0 && gate.Misuses().empty(),
        "host call " + std::to_string(number) + " fails, and references are not in balance");
    stage.LowerGate();
    return hasFailed;
}

/// The same with allocations.
bool FailAllocation(Trial& trial, Stage& stage, size_t number, size_t failing) {
    stage.Load();
    const CreatorFunction creator = stage.Creator();
    std::optional<FailingNew> memory(std::in_place, number, failing);
    const Creation creation(creator);
    const bool hasFailed = memory->HasFailed();
    memory.reset();
    Judge(trial, creation);
    stage.Unload();
    return hasFailed;
}

/// Lets one after the other fail, and all from there on; answers how many there are. No memory is
/// kept by a creation that fails, unless it is by one that succeeds.
size_t FailEach(Trial& trial, Stage& stage, const std::string& what,
    bool (*create)(Trial& trial, Stage& stage, size_t number, size_t failing)) {
    const auto kept = [&](bool& hasFailed, size_t number, size_t failing) {
        const int64_t before = LiveBlocks();
        hasFailed = create(trial, stage, number, failing);
        return LiveBlocks() - before;
    };
    size_t number = 0;
    for (const size_t failing : {size_t{1}, SIZE_MAX}) {
        bool hasFailed = true;
        kept(hasFailed, SIZE_MAX, 0);
        const int64_t well = std::max<int64_t>(0, kept(hasFailed, SIZE_MAX, 0));
        for (number = 0, hasFailed = true; hasFailed; ++number) {
            const std::string when = "with " + what + ' ' + std::to_string(number);
            trial.At(when);
            const int64_t blocks = kept(hasFailed, number, failing) - well;
            trial.Expect(blocks <= 0, when + ' ' + std::to_string(blocks) + " blocks are kept");
        }
    }
    return number - 1;
}

void HalfWay(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.NeedUnloading(trial);
    stage.Load();
    RefusedCreations(trial, stage.Creator());
    stage.Unload();
    const size_t allocations = FailEach(trial, stage, "allocation", &FailAllocation);
    const size_t calls = FailEach(trial, stage, "host call", &FailHostCall);
    trial.Expect(stage.Leaked().empty(), "host objects are held: " + stage.Leaked());
    trial.Measure(std::to_string(allocations) + " allocations, " + std::to_string(calls) +
                  " host calls failed");
}

void Creations(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Growth growth(kCreations, [&] { stage.CreateOrThrow().Reset(); });
    trial.Measure(std::to_string(kCreations) + " creations, " + growth.Figure());
    growth.Judge(trial, "every object");
}

/// Uses a new object of a newly loaded module, if it can be made. Answers how many references to
/// host objects are kept.
int32_t UseThrough(Gate& gate, Stage& stage) {
    stage.Load();
    if (auto object = stage.Create<IUnknown>()) { // it may well refuse
        const Candidate candidate(std::move(object));
        Scenario(&gate).Play(candidate.Get());
    }
    stage.Unload();
    return gate.References();
}

void MissingComponents(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.NeedUnloading(trial);
    std::set<std::wstring> names = {L"ComponentString"};
    Gate& watching = stage.RaiseGate();
    watching.Notice([&](tagREFString name) { names.emplace(ViewOf(name)); });
    const int32_t kept = UseThrough(watching, stage); // also when nothing is missing
    for (const std::wstring& name : names) {
        const std::string without = "without " + ToUtf8(Refer(name));
        trial.At(without);
        Gate& gate = stage.RaiseGate();
        gate.Withhold(name);
        trial.Expect(UseThrough(gate, stage) <= kept && gate.Misuses().empty(),
            without + " references are not in balance");
    }
    trial.Measure(std::to_string(names.size()) + " components missing in turn");
}

/// The threads of this process: their numbers and names.
std::map<std::string, std::string> Threads() {
    std::map<std::string, std::string> threads;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream file(thread.path() / "comm");
        std::getline(file, threads[thread.path().filename()]);
    }
    return threads;
}

void LiveOnce(const Stage& stage) {
    const Candidate candidate(stage);
    Scenario().Play(candidate.Get());
}

/// Threads that were not there before; those that are about to end are waited for.
std::map<std::string, std::string> ThreadsSince(const std::map<std::string, std::string>& before) {
    constexpr auto kPatience = std::chrono::seconds(2);
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (true) {
        auto threads = Threads();
        std::erase_if(threads, [&](const auto& thread) { return before.contains(thread.first); });
        if (threads.empty() || std::chrono::steady_clock::now() > end) {
            return threads;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

/// The library that draws the host's texts starts threads when it meets a font, so the host draws
/// one itself before it looks. A thread that the module starts only once is found in its first
/// life.
void NoThreads(Trial& trial) {
    Stage stage(trial.TheSubject());
    const SurfacePtr paper(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 40, 20));
    const ContextPtr context(cairo_create(paper.get()));
    UbuntuCanvas canvas{context.get()};
    LabelPainter(canvas).Draw("A", 0, {0, 0, 40, 20});
    const auto before = Threads();
    stage.Load();
    LiveOnce(stage);
    for (const auto& [number, name] : ThreadsSince(before)) {
        trial.Expect(false, "the thread '" + name + "' runs on");
    }
    trial.Measure("1 life beside " + std::to_string(before.size()) + " threads");
}

/// The host's text renderer, whose libraries keep more and more of what they drew, drawing nothing.
class SilentRenderer final : public HostObject<SilentRenderer, IPMRenderer> {
public:
    static constexpr const char* kKind = "SilentRenderer";

    int32_t DrawText(
        IPMRenderStyle*, tagREFString, UbuntuCanvas*, CANVASRect*, int32_t, int32_t) override {
        return S_OK;
    }
};

/// Uses one object again and again; what its making costs is looked at elsewhere.
void Lives(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.TheHost().Register(L"PMRenderer", [](const IID& iid, void** object) {
        return SilentRenderer::Make()->QueryInterface(iid, object);
    });
    stage.Load();
    const Candidate candidate(stage);
    const int32_t spare = CountOf(candidate.Get());
    const Growth growth(kLives, [&] {
        for (int32_t count = CountOf(candidate.Get()); count < spare; ++count) {
            candidate.Get()->AddRef(); // a count too few is found elsewhere
        }
        Scenario().Play(candidate.Get());
    });
    trial.Measure(std::to_string(kLives) + " lives, " + growth.Figure());
    growth.Judge(trial, "every use", 64);
}

} // namespace

std::span<const Check> ObjectChecks() {
    static constexpr Check checks[] = {
        {"query.answers", "Every interface of an object answers the same ones, every time.",
            "QueryInterface: all bases lead to one implementation with one list", &Answers},
        {"query.identity", "IUnknown has one address through every interface.",
            "QueryInterface: IID_IUnknown is the address of ObjectBase, always", &OneIdentity},
        {"query.unknown", "An unknown interface is answered with E_NOINTERFACE and null.",
            "QueryInterface: the out-pointer on its last path", &UnknownInterface},
        {"counts.balance", "References are taken and given back one for one.",
            "AddRef and Release by hand; what an operation keeps belongs in a SmartPtr", &Balance},
        {"create.fails", "A creation that fails half way leaves null and nothing else.",
            "FinalConstruct: what it made before it failed; the destructor of such an object",
            &HalfWay},
        {"create.grows", "Making objects again and again costs no memory, files or mappings.",
            "what the constructor takes and the destructor does not give back", &Creations},
        {"use.grows", "Using an object again and again costs no memory, files or mappings.",
            "what an operation takes and does not give back, and lists that only grow", &Lives},
        {"host.missing", "Every component of the host may be missing.",
            "what CreateHostObject answered is used without a look whether it is null",
            &MissingComponents},
        {"module.threads", "No thread runs on when the last object is gone.",
            "threads are joined in FinalRelease", &NoThreads},
    };
    return checks;
}
