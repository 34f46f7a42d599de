#include "framework/Interfaces.h"
#include "framework/Runtime.h"
#include "host/Host.h"
#include "host/components/Module.h"
#include "host/data/SuperCollection.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>

// What the control costs beside the host calls that it cannot do without. Each benchmark runs the
// control and a bare loop of the same host calls in turn and reports the ratio of their times, so
// that the machine's speed falls out.

namespace {

constexpr int32_t kChildren = 100;

class Leaf final : public HostObject<Leaf, IDataStream> {
public:
    static constexpr const char* kKind = "Leaf";
};

/// A tree of open branches of kChildren leaves each.
SmartPtr<SuperCollection> MakeTree(int64_t rows) {
    auto root = SuperCollection::Make();
    const auto leaf = Leaf::Make();
    for (int64_t made = 0; made < rows; made += kChildren + 1) {
        const auto branch = SuperCollection::Make();
        for (int32_t i = 0; i < kChildren; ++i) {
            branch->Append("leaf", leaf->Identity());
            branch->SetItemFlags(i, NODE_VISIBLE | 2);
        }
        root->Append("branch", branch->Identity());
    }
    return root;
}

/// The questions that decide whether an item has rows below it, with nothing around them.
ISuperCollection* AskForCollection(IUnknown* item) {
    void* answer = nullptr;
    if (item->QueryInterface(IID_ISuperCollection, &answer) >= 0) {
        auto* collection = static_cast<ISuperCollection*>(answer);
        if (item->QueryInterface(IID_ICollectionMoniker, &answer) < 0) {
            item->QueryInterface(IID_IObjectInfo, &answer);
        }
        return collection;
    }
    item->QueryInterface(IID_IUINode, &answer);
    item->QueryInterface(IID_ICollectionMoniker, &answer);
    return nullptr;
}

/// Counts the rows with bare calls on bare pointers.
int64_t CountBare(ISuperCollection* collection) {
    int64_t rows = 0;
    int32_t count = 0;
    collection->GetCount(&count);
    for (int32_t i = 0; i < count; ++i) {
        int32_t flags = 0;
        collection->GetItemFlags(i, &flags);
        if ((flags & NODE_VISIBLE) == 0) {
            continue;
        }
        ++rows;
        IUnknown* item = nullptr;
        collection->GetItem(i, &item);
        if (ISuperCollection* below = AskForCollection(item)) {
            rows += CountBare(below);
            below->Release();
        }
        item->Release();
    }
    return rows;
}

template <class Work>
double SecondsOf(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The host and one control bound to a tree of `rows` rows.
struct Bench {
    explicit Bench(int64_t rows)
        : m_Module("./UITree.so", m_Host.Components()), m_Tree(m_Module.Create<IUITree>(L"UITree")),
          m_Root(MakeTree(rows)) {
        m_Tree->put_Collection(m_Root->Identity());
    }

    Host m_Host{std::filesystem::read_symlink("/proc/self/exe").parent_path()};
    Module m_Module;
    SmartPtr<IUITree> m_Tree;
    SmartPtr<SuperCollection> m_Root;
};

void CountRows(benchmark::State& state) {
    const Bench bench(state.range(0));
    double control = 0;
    double bare = 0;
    int32_t rows = 0;
    for ([[maybe_unused]] auto iteration : state) {
        control += SecondsOf([&] { bench.m_Tree->GetContainerSize(nullptr, &rows, nullptr); });
        bare += SecondsOf([&] { benchmark::DoNotOptimize(CountBare(bench.m_Root.Get())); });
    }
    state.counters["rows"] = rows;
    state.counters["ratio"] = control / bare;
}
BENCHMARK(CountRows)->Arg(1'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// A pass that draws nothing counts the rows once; the one row that fits is resolved at the end.
void RenderLastRow(benchmark::State& state) {
    const Bench bench(state.range(0));
    const auto renderable = Query<IRenderableObject>(bench.m_Tree.Get());
    int32_t rows = 0;
    bench.m_Tree->GetContainerSize(nullptr, &rows, nullptr);
    CANVASRect rect = {0, 0, 100, 30};
    renderable->Render(nullptr, &rect, nullptr, 0);
    bench.m_Tree->Control(115, rows - 1);
    double control = 0;
    double bare = 0;
    for ([[maybe_unused]] auto iteration : state) {
        control += SecondsOf([&] { renderable->Render(nullptr, &rect, nullptr, 0); });
        bare += 2 * SecondsOf([&] { benchmark::DoNotOptimize(CountBare(bench.m_Root.Get())); });
    }
    state.counters["rows"] = rows;
    state.counters["ratio"] = control / bare;
}
BENCHMARK(RenderLastRow)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

} // namespace
