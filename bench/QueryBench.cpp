#include "bench/BareCalls.h"
#include "bench/Work.h"

#include <benchmark/benchmark.h>

// What is asked and done without drawing.

void AddQueries(Source source, Shape shape, int32_t most) {
    const std::function<void(Stage&)> count = [](Stage& stage) {
        benchmark::DoNotOptimize(CountBare(stage.Root()));
    };
    const std::function<void(Stage&)> ask = [](Stage& stage) {
        SmartPtr<IUnknown> node;
        stage.Root()->GetItem(0, node.Receive());
    };
    const auto none = [](Stage&) {};
    for (const int32_t rows : {1'000, 10'000, 1'000'000}) {
        if (rows > most) {
            continue;
        }
        const std::string tree = std::to_string(rows) + '/' + NameOf(shape) + '/' + NameOf(source);
        const auto make = [=] { return MakeTree(source, shape, rows); };
        const bool isVouched = source.m_Vouched == Vouched::kYes;
        const double counted = rows == 10'000 ? 180 : rows == 1'000'000 ? 29'000 : 0;
        const double wanted = isVouched ? 0.5 : counted;
        Measure({"hit test/" + tree, wanted, make, none,
            [](Stage& stage) {
                SmartPtr<IUnknown> node;
                stage.Tree()->HitTest(50, 300, stage.Rect(), node.Receive());
            },
            isVouched ? ask : count});
        if (isVouched) {
            continue; // whoever asks for the number has them counted
        }
        Measure({"count rows/" + tree, 0, make, none,
            [](Stage& stage) { benchmark::DoNotOptimize(stage.CountRows()); }, count});
    }
}

/// From the closed folder to the picture of its children.
void AddOpening(Source source) {
    constexpr int32_t kChildren = 100'000;
    Measure({"open/" + std::to_string(kChildren) + "/flat/" + NameOf(source), 2'000,
        [=] { return MakeFolder(source, kChildren); },
        [](Stage& stage) { stage.Tree()->CompactNodes(); },
        [](Stage& stage) {
            stage.Tree()->MakeNodeVisible(stage.Root(), 0);
            stage.Repaint();
        },
        [](Stage& stage) {
            SmartPtr<IUnknown> folder;
            stage.Root()->GetItem(0, folder.Receive());
            ShowBare(Query<ISuperCollection>(folder.Get()).Get());
            CountBare(stage.Root());
            stage.RepaintBare();
        }});
}
