// The library beside what a user would pick instead. Names read subject/who. Each runs three times; compare
// the lowest medians of one run with each other, not with another run's.
#include "bench/keep.h"
#include "vx7base.h"

#include <vector>

int main(int argc, char** argv) {
    NX_MainInfo info = {nullptr, argc, argv, nullptr, nullptr};
    NX_AppNull const app(info);

    char repetitions[] = "--benchmark_repetitions=3";
    char aggregates[] = "--benchmark_report_aggregates_only=true";
    std::vector<char*> args = {argv[0], repetitions, aggregates};
    args.insert(args.end(), argv + 1, argv + argc);
    int count = static_cast<int>(args.size());
    args.push_back(nullptr);
    benchmark::Initialize(&count, args.data());
    if (benchmark::ReportUnrecognizedArguments(count, args.data()))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
