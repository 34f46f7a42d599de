#include "bench/Table.h"
#include "bench/Work.h"

#include <string_view>

/// Measures everything, with --quick small trees only; knows Google Benchmark's options besides.
int main(int count, char** arguments) {
    const bool isQuick = count > 1 && std::string_view(arguments[1]) == "--quick";
    if (isQuick) {
        arguments[1] = arguments[0];
        --count, ++arguments;
    }
    const int32_t most = isQuick ? 10'000 : 1'000'000;
    for (const Data data : {Data::kInPlace, Data::kSuper}) {
        for (const Shape shape : {Shape::kFlat, Shape::kNested}) {
            AddRepaints(data, shape, most);
            AddQueries(data, shape, most);
        }
        AddOpening(data);
        AddMemory(data);
    }
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) {
        return 2;
    }
    Table table;
    benchmark::RunSpecifiedBenchmarks(&table);
    return 0;
}
