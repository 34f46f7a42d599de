#include "bench/Table.h"

#include <algorithm>
#include <cstdio>

namespace {

double MedianOf(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double CounterOf(const Table::Run& run, const char* name, double otherwise = 0) {
    const auto found = run.counters.find(name);
    return found == run.counters.end() ? otherwise : double(found->second);
}

} // namespace

void Table::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type == Run::RT_Aggregate || run.error_occurred) {
            continue;
        }
        const std::string& work = run.run_name.function_name;
        if (m_Lines.empty() || m_Lines.back().m_Work != work) {
            m_Lines.push_back({work, {}, {}, CounterOf(run, "wanted")});
        }
        m_Lines.back().m_Ours.push_back(CounterOf(run, "bytes", run.GetAdjustedRealTime()));
        m_Lines.back().m_Floor.push_back(CounterOf(run, "floor"));
    }
}

void Table::Finalize() {
    std::puts("| work, microseconds | ours | floor | ratio | wanted |\n|---|--:|--:|--:|--:|");
    for (const Line& line : m_Lines) {
        const double ours = MedianOf(line.m_Ours);
        const double floor = MedianOf(line.m_Floor);
        std::printf("| %s | %.1f | %.1f | %.2f | ", line.m_Work.c_str(), ours, floor, ours / floor);
        if (line.m_Wanted > 0) {
            std::printf("%g ", line.m_Wanted);
        }
        std::puts("|");
    }
}
