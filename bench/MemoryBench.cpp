#include "bench/Work.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

// What stays allocated per row, in bytes: the table's "ours" is the control's own, beside the
// host's data as the floor.

namespace {

size_t AllocatedNow() {
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// What the host's tree takes, and what a control on it that was drawn does besides.
struct Kept {
    Kept(Source source, int32_t rows) {
        const size_t before = AllocatedNow();
        auto root = MakeTree(source, Shape::kNested, rows);
        const size_t made = AllocatedNow();
        Stage stage(std::move(root));
        stage.ScrollTo(rows / 2);
        stage.Repaint();
        m_Host = static_cast<double>(made - before);
        m_Control = static_cast<double>(AllocatedNow()) - static_cast<double>(made);
    }
    double m_Host = 0;
    double m_Control = 0;
};

} // namespace

void AddMemory(Source source) {
    const auto run = [source](benchmark::State& state) {
        constexpr int32_t kFew = 1'000;
        constexpr int32_t kMany = 101'000;
        double own = 0;
        for ([[maybe_unused]] auto iteration : state) {
            Kept(source, kFew); // what the libraries keep from the first time
            const Kept few(source, kFew);
            const Kept many(source, kMany);
            own = (many.m_Control - few.m_Control) / (kMany - kFew);
            state.SetIterationTime(1e-6);
            state.counters["floor"] = (many.m_Host - few.m_Host) / (kMany - kFew);
        }
        state.counters["bytes"] = own;
    };
    benchmark::RegisterBenchmark(("bytes kept per row/nested/" + NameOf(source)).c_str(), run)
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kMicrosecond);
}
