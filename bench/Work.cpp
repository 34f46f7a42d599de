#include "bench/Work.h"

#include <benchmark/benchmark.h>
#include <chrono>

namespace {

template <class Action>
double SecondsOf(Action&& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

void Measure(const Work& work) {
    const auto run = [work](benchmark::State& state) {
        Stage stage(work.m_MakeTree());
        double floor = 0;
        for ([[maybe_unused]] auto iteration : state) {
            work.m_Prepare(stage);
            state.SetIterationTime(SecondsOf([&] { work.m_Ours(stage); }));
            work.m_Prepare(stage);
            floor += SecondsOf([&] { work.m_Floor(stage); });
        }
        state.counters["floor"] = floor * 1e6 / static_cast<double>(state.iterations());
        state.counters["wanted"] = work.m_Wanted;
    };
    benchmark::RegisterBenchmark(work.m_Name.c_str(), run)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
}
