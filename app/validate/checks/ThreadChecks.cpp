#include "app/validate/Candidate.h"
#include "framework/interfaces/CollectionVersion.h"
#include "framework/interfaces/TreeProperties.h"
#include "host/components/AnsweredInterfaces.h"
#include "host/components/CreatableString.h"

#include <array>
#include <atomic>
#include <fstream>
#include <optional>
#include <thread>
#include <unistd.h>

// What several threads may do with one object at once. ThreadSanitizer sees more of it than the
// results tell: script/test --thread.

namespace {

constexpr int kThreads = 4;
constexpr int kTurns = 5'000;

/// Runs the bodies at once, each so many times.
void RunTogether(const std::vector<std::function<void(int turn)>>& bodies, int turns = kTurns) {
    std::atomic<size_t> ready = 0;
    std::vector<std::thread> threads;
    threads.reserve(bodies.size());
    for (const auto& body : bodies) {
        threads.emplace_back([&] {
            ++ready;
            while (ready < bodies.size()) {
                std::this_thread::yield();
            }
            for (int turn = 0; turn < turns; ++turn) {
                body(turn);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// What counts wrongly for one thread is found elsewhere.
std::vector<IID> WellCounted(IUnknown* object) {
    std::vector<IID> found;
    for (const auto& [name, iid] : InterfacesOf(object)) {
        const int32_t before = CountOf(object);
        Adopt(static_cast<IUnknown*>(QueryObject(object, iid))).Reset();
        if (CountOf(object) == before) {
            found.push_back(iid);
        }
    }
    return found;
}

/// What was run by so many threads.
std::string Figure(size_t threads) {
    return std::to_string(threads) + " threads, " + std::to_string(kTurns) + " turns";
}

/// Lost counts make up for each other now and then, so they are looked for several times.
void References(Trial& trial) {
    constexpr int kLooks = 10;
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    const auto interfaces = WellCounted(candidate.Get());
    const int32_t before = CountOf(candidate.Get());
    const std::vector<std::function<void(int)>> bodies(kThreads, [&](int turn) {
        const IID& iid = interfaces[static_cast<size_t>(turn) % interfaces.size()];
        const auto asked = Adopt(static_cast<IUnknown*>(QueryObject(candidate.Get(), iid)));
        SmartPtr<IUnknown> held;
        held = asked.Get();
    });
    for (int look = 0; look < kLooks; ++look) {
        RunTogether(bodies, kTurns / kLooks);
        trial.Expect(CountOf(candidate.Get()) == before, "the count is not what it was");
    }
    trial.Measure(Figure(kThreads));
}

/// A thread that overtakes the one that makes it, which goes on when the other has ended or waits,
/// as it does for a lock that this one holds.
class Overtaker {
public:
    explicit Overtaker(const std::function<void()>& body)
        : m_Thread([this, body] {
              m_Number = gettid();
              body();
              m_HasEnded = true;
          }) {
        constexpr int kLooks = 20; // a thread waits for memory too, but not that long
        for (int waiting = 0; !m_HasEnded && waiting < kLooks;) {
            waiting = IsWaiting() ? waiting + 1 : 0;
            std::this_thread::yield();
        }
    }
    ~Overtaker() { m_Thread.join(); }
    Overtaker(const Overtaker&) = delete;
    Overtaker& operator=(const Overtaker&) = delete;

private:
    /// The system tells, behind the thread's name, which may be any.
    bool IsWaiting() const {
        std::ifstream file("/proc/self/task/" + std::to_string(m_Number) + "/stat");
        std::string text;
        std::getline(file, text);
        const size_t name = text.rfind(") ");
        return name != std::string::npos && text.compare(name, 3, ") S") == 0;
    }

    std::atomic<pid_t> m_Number = 0;
    std::atomic<bool> m_HasEnded = false;
    std::thread m_Thread;
};

/// A host object of which a check holds one reference, and lends that for the time of a call. Who
/// takes one when there is no other and that is not lent comes too late: in a host the object would
/// be gone.
template <class Self, class... Bases>
class Lent : public HostObject<Self, Bases...> {
    using Base = HostObject<Self, Bases...>;

public:
    template <class Call>
    void LendTo(const Call& call) {
        ++m_Lent;
        call(this->Identity());
        --m_Lent;
    }
    /// Before so many references have been taken another thread runs `body`: the one who takes the
    /// last of them knows the object, and holds it not yet.
    void OvertakeAt(int reference, std::function<void()> body) {
        m_Body = std::move(body);
        m_Until = reference;
    }
    /// Answers whether it came to that.
    bool EndOvertaking() {
        m_Overtaker.reset();
        return m_Until.exchange(0) <= 0;
    }
    int32_t AddRef() final {
        if (--m_Until == 0) {
            m_Overtaker.emplace(m_Body);
        }
        const int32_t count = Base::AddRef();
        m_Late += count == 2 && m_Lent == 0 ? 1 : 0;
        return count;
    }
    void Judge(Trial& trial, const char* name) const {
        trial.Expect(m_Late == 0, std::to_string(m_Late) + " times " + name + " is held too late");
    }

private:
    std::atomic<int> m_Lent = 0;
    std::atomic<int> m_Late = 0;
    std::atomic<int> m_Until = 0;
    std::function<void()> m_Body;
    std::optional<Overtaker> m_Overtaker;
};

/// One thread begins with the object and uses it, and another ends that, at each reference in turn
/// that the first takes meanwhile. Answers how many they are.
template <class Object, class Begin, class Use, class End>
int OvertakeAtEach(Object& object, const Begin& begin, const Use& use, const End& end) {
    int reference = 0;
    for (bool isOvertaken = true; isOvertaken; isOvertaken = object.EndOvertaking()) {
        object.LendTo(begin);
        object.OvertakeAt(++reference, end);
        use();
    }
    return reference - 1;
}

/// Counts what it hears.
class CountingListener final
    : public Lent<CountingListener, _IUIContainerEvents, _IUIRefreshEvent> {
public:
    static constexpr const char* kKind = "CountingListener";

    int32_t NodeSelect(IUnknown*, int32_t, int32_t, int32_t, IUnknown*) override { return S_OK; }
    int32_t NodeDrag(IUnknown*, int32_t, int32_t, int32_t, IUnknown*) override { return S_OK; }
    int32_t UIItemChanged(IUnknown*, int32_t) override { return ++m_Heard, S_OK; }
    int Heard() const { return m_Heard; }

private:
    std::atomic<int> m_Heard = 0;
};

void Listeners(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    auto* source = candidate.Need<IEventSource>(trial, "events");
    auto* refreshed = candidate.Need<IUIRefreshableObject>(trial, "event to fire");
    const auto connect = [&](IUnknown* listener) { source->Advise(listener, 1); };
    const auto disconnect = [&](IUnknown* listener) {
        source->Advise(listener, ADVISE_DISCONNECT);
    };
    const auto leaving = CountingListener::Make();
    const int references = OvertakeAtEach(
        *leaving.Get(), connect, [&] { refreshed->Refresh(0); },
        [&] { leaving->LendTo(disconnect); });
    leaving->LendTo(disconnect);
    leaving->Judge(trial, "a listener");
    if (trial.HasFailed()) {
        return; // what follows would meet with no less
    }
    const auto steady = CountingListener::Make();
    steady->LendTo(connect);
    std::array<SmartPtr<CountingListener>, kThreads> passing;
    std::vector<std::function<void(int)>> bodies = {[&](int) { refreshed->Refresh(0); }};
    for (auto& listener : passing) {
        listener = CountingListener::Make();
        bodies.emplace_back([&](int) {
            listener->LendTo(connect);
            listener->LendTo(disconnect);
        });
    }
    RunTogether(bodies);
    trial.Expect(steady->Heard() == kTurns, "who stays connected heard " +
                                                std::to_string(steady->Heard()) + " of " +
                                                std::to_string(kTurns) + " events");
    trial.Expect(source->GetAdviseCount() == 1, "listeners stay connected");
    source->Advise(nullptr, ADVISE_DISCONNECT);
    for (const auto& listener : passing) {
        trial.Expect(CountOf(listener->Identity()) == 1, "a listener is still held");
    }
    trial.Measure(Figure(bodies.size()) + ", overtaken at " + std::to_string(references));
}

/// Rows that several threads may read and mark at once, under a version if that is wanted.
class SharedRows final : public Lent<SharedRows, ISuperCollection, ICollectionVersion> {
public:
    static constexpr const char* kKind = "SharedRows";

    explicit SharedRows(bool isVouched) : m_IsVouched(isVouched) {}

    int32_t GetVersion(uint64_t* version) override {
        *version = 7;
        return m_IsVouched ? S_OK : E_FAIL;
    }
    int32_t GetCount(int32_t* count) override { return *count = kRows, S_OK; }
    int32_t GetItem(int32_t index, IUnknown** item) override {
        *item = index >= 0 && index < kRows ? SmartPtr(m_Leaf->Identity()).Detach() : nullptr;
        return *item ? S_OK : E_INVALIDARG;
    }
    int32_t GetItemName(int32_t, IString** name) override { return *name = nullptr, E_FAIL; }
    int32_t GetItemData(int32_t, IUnknown** data) override { return *data = nullptr, E_FAIL; }
    int32_t GetItemFlags(int32_t index, int32_t* flags) override {
        const bool exists = index >= 0 && index < kRows;
        *flags = exists ? m_Flags[static_cast<size_t>(index)].load() : 0;
        return exists ? S_OK : E_INVALIDARG;
    }
    int32_t SetItemFlags(int32_t index, int32_t flags) override {
        if (index >= 0 && index < kRows) {
            m_Flags[static_cast<size_t>(index)] = flags;
        }
        return S_OK;
    }
    int32_t AddEntry(IString*, IString*, IString*, int32_t) override { return E_FAIL; }
    int32_t InsertItem(int32_t, int32_t, IUnknown*, int32_t, int32_t) override { return E_FAIL; }
    int32_t RemoveAll() override { return E_FAIL; }

private:
    static constexpr int32_t kRows = 8;

    bool m_IsVouched;
    SmartPtr<CreatableString> m_Leaf = CreatableString::Make(L"leaf");
    std::array<std::atomic<int32_t>, kRows> m_Flags{};
};

/// The host's helpers are made for one thread, so there are none.
void Withdraw(Host& host) {
    for (const wchar_t* name : {L"UIScrollBar", L"PMRenderStyle", L"PMRenderer", L"CIFFileEx"}) {
        host.Register(name, [](const IID&, void** object) { return *object = nullptr, E_FAIL; });
    }
}

void Binding(Trial& trial) {
    Stage stage(trial.TheSubject());
    Withdraw(stage.TheHost());
    stage.Load();
    int references = 0;
    for (const bool isVouched : {false, true}) {
        const Candidate candidate(stage);
        auto* tree = candidate.Need<IUITree>(trial, "tree");
        auto* object = candidate.Need<IRenderableObject>(trial, "picture");
        tree->Control(PROP_USEDEFAULTSTYLE, 0); // the default sizes are the host's, too
        const auto odd = SharedRows::Make(isVouched);
        const auto even = SharedRows::Make(isVouched);
        const auto bind = [&](IUnknown* rows) { tree->put_Collection(rows); };
        std::atomic<int> failures = 0;
        const auto show = [&] {
            CANVASRect rect{0, 0, 100, 60};
            SmartPtr<IUnknown> node;
            failures += object->Render(nullptr, &rect, nullptr, 0) < 0 ? 1 : 0;
            failures += tree->HitTest(5, 5, &rect, node.Receive()) < 0 ? 1 : 0;
        };
        references += OvertakeAtEach(*odd.Get(), bind, show, [&] { even->LendTo(bind); });
        RunTogether(
            {[&](int turn) { (turn % 2 == 0 ? even : odd)->LendTo(bind); }, [&](int) { show(); }});
        trial.Expect(failures == 0, std::to_string(failures) + " pictures or hits failed");
        odd->Judge(trial, "a collection");
    }
    stage.Unload();
    trial.Expect(stage.Leaked().empty(), "host objects are held: " + stage.Leaked());
    trial.Measure(Figure(2) + ", twice, overtaken at " + std::to_string(references));
}

} // namespace

std::span<const Check> ThreadChecks() {
    static constexpr Check checks[] = {
        {"threads.references", "References may be taken and given back by several threads at once.",
            "AddRef and Release: an atomic count", &References},
        {"threads.listeners", "Listeners may come and go while others are told of events.",
            "the list of listeners: changed and read under the object's lock", &Listeners},
        {"threads.binding", "A tree may be bound while another thread draws and hits.",
            "what put_Collection changes: taken once under the object's lock by who reads it",
            &Binding},
    };
    return checks;
}
