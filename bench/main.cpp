#include "bench/Table.h"
#include "bench/Work.h"

#include <string>
#include <string_view>

/// Measures everything, with --quick small trees only; knows Google Benchmark's options besides.
/// With --frames ROWS FRAMES or --frames-with-version ROWS FRAMES it draws only.
int main(int count, char** arguments) {
    if (count == 4 && std::string_view(arguments[1]).starts_with("--frames")) {
        const bool isVouched = arguments[1] == std::string_view("--frames-with-version");
        DrawFrames(isVouched ? Vouched::kYes : Vouched::kNo, std::stoi(arguments[2]),
            std::stoi(arguments[3]));
        return 0;
    }
    const bool isQuick = count > 1 && std::string_view(arguments[1]) == "--quick";
    if (isQuick) {
        arguments[1] = arguments[0];
        --count;
        ++arguments;
    }
    const int32_t most = isQuick ? 10'000 : 1'000'000;
    for (const Data data : {Data::kInPlace, Data::kSuper}) {
        for (const Vouched vouched : {Vouched::kNo, Vouched::kYes}) {
            const Source source{data, vouched};
            for (const Shape shape : {Shape::kFlat, Shape::kNested}) {
                AddRepaints(source, shape, most);
                AddQueries(source, shape, most);
            }
            AddOpening(source);
            AddMemory(source);
        }
    }
    AddSettings();
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) {
        return 2;
    }
    Table table;
    benchmark::RunSpecifiedBenchmarks(&table);
    return 0;
}
