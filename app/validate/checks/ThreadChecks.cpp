#include "app/validate/Candidate.h"
#include "framework/interfaces/CollectionVersion.h"
#include "framework/interfaces/TreeProperties.h"
#include "host/components/AnsweredInterfaces.h"
#include "host/components/HostObject.h"

#include <array>
#include <atomic>
#include <thread>

// What several threads may do with one object at once. ThreadSanitizer sees more of it than the
// results tell: script/test --thread.

namespace {

constexpr int kThreads = 4;
constexpr int kTurns = 5'000;

/// Runs the bodies at once, each with the number of its thread.
void RunTogether(const std::vector<std::function<void(int turn)>>& bodies) {
    std::atomic<size_t> ready = 0;
    std::vector<std::thread> threads;
    threads.reserve(bodies.size());
    for (const auto& body : bodies) {
        threads.emplace_back([&] {
            ++ready;
            while (ready < bodies.size()) {
                std::this_thread::yield();
            }
            for (int turn = 0; turn < kTurns; ++turn) {
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

void References(Trial& trial) {
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
    RunTogether(bodies);
    trial.Expect(CountOf(candidate.Get()) == before, "the count is not what it was");
    trial.Measure(Figure(kThreads));
}

/// Counts what it hears.
class CountingListener final
    : public HostObject<CountingListener, _IUIContainerEvents, _IUIRefreshEvent> {
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
    const auto steady = CountingListener::Make();
    source->Advise(steady->Identity(), 1);
    std::array<SmartPtr<CountingListener>, kThreads> passing;
    std::vector<std::function<void(int)>> bodies = {[&](int) { refreshed->Refresh(0); }};
    for (auto& listener : passing) {
        listener = CountingListener::Make();
        bodies.emplace_back([&](int) {
            source->Advise(listener->Identity(), 1);
            source->Advise(listener->Identity(), ADVISE_DISCONNECT);
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
    trial.Measure(Figure(bodies.size()));
}

/// Rows that several threads may read and mark at once, under a version if that is wanted.
class SharedRows final : public HostObject<SharedRows, ISuperCollection, ICollectionVersion> {
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
    SmartPtr<CountingListener> m_Leaf = CountingListener::Make();
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
    for (const bool isVouched : {false, true}) {
        const Candidate candidate(stage);
        auto* tree = candidate.Need<IUITree>(trial, "tree");
        auto* object = candidate.Need<IRenderableObject>(trial, "picture");
        tree->Control(PROP_USEDEFAULTSTYLE, 0); // the default sizes are the host's, too
        const auto odd = SharedRows::Make(isVouched);
        const auto even = SharedRows::Make(isVouched);
        tree->put_Collection(even->Identity());
        std::atomic<int> failures = 0;
        RunTogether(
            {[&](int turn) { tree->put_Collection((turn % 2 == 0 ? even : odd)->Identity()); },
                [&](int) {
                    CANVASRect rect{0, 0, 100, 60};
                    SmartPtr<IUnknown> node;
                    failures += object->Render(nullptr, &rect, nullptr, 0) < 0 ? 1 : 0;
                    failures += tree->HitTest(5, 5, &rect, node.Receive()) < 0 ? 1 : 0;
                }});
        trial.Expect(failures == 0, std::to_string(failures) + " pictures or hits failed");
    }
    stage.Unload();
    trial.Expect(stage.Leaked().empty(), "host objects are held: " + stage.Leaked());
    trial.Measure(Figure(2) + ", twice");
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
