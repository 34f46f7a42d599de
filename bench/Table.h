#pragma once

#include <benchmark/benchmark.h>
#include <string>
#include <vector>

/// Prints a line for each work when all is measured: the median of its repetitions, beside the
/// floor's.
class Table : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    struct Line {
        std::string m_Work;
        std::vector<double> m_Ours, m_Floor;
        double m_Wanted = 0;
    };
    std::vector<Line> m_Lines;
};
