// Copying, appending to and substituting in strings.
#include "bench/keep.h"
#include "vx7base.h"

#include <cstring>
#include <string>

namespace {

constexpr int appended = 1'000'000;
char const sentence[] = "a string of some forty characters, not short";

void copyOwn(benchmark::State& state) {
    NX_StringA const source(sentence);
    for (auto _ : state) {
        NX_StringA const copy(source);
        keep(&copy);
    }
    NX_StringA const copy(source);
    check(copy.dataPConst() == source.dataPConst(), "a copy shares its block");
}
BENCHMARK(copyOwn)->Name("string-copy/vx7");

void copyStd(benchmark::State& state) {
    std::string const source(sentence);
    for (auto _ : state) {
        std::string const copy(source);
        keep(&copy);
    }
}
BENCHMARK(copyStd)->Name("string-copy/std::string");

void appendOwn(benchmark::State& state) {
    for (auto _ : state) {
        NX_StringA text;
        for (int n = 0; n < appended; ++n)
            text += 'x';
        keep(text.dataPConst());
        check(text.strLen() == appended, "length after appending");
    }
}
BENCHMARK(appendOwn)->Name("string-append-1M-chars/vx7")->Unit(benchmark::kMicrosecond);

void appendStd(benchmark::State& state) {
    for (auto _ : state) {
        std::string text;
        for (int n = 0; n < appended; ++n)
            text += 'x';
        keep(text.data());
    }
}
BENCHMARK(appendStd)->Name("string-append-1M-chars/std::string")->Unit(benchmark::kMicrosecond);

void errorOwn(benchmark::State& state) {
    for (auto _ : state) {
        NxERROR(errorNumFileNotFound);
        NxErrorBufFileName("a.txt");
        NxErrorBufPos(42);
        NxErrorBufSys(2);
    }
    check(NxErrorNum() == errorNumFileNotFound, "recorded error");
    NxErrorOk();
}
BENCHMARK(errorOwn)->Name("record-error-with-three-details/vx7");

void errorPrintf(benchmark::State& state) {
    char buffer[512];
    for (auto _ : state) {
        std::snprintf(buffer, sizeof buffer, "E=%d F=%s P=%d S=%d", errorNumFileNotFound & 0x7FF, "a.txt", 42,
                      2);
        keep(buffer);
    }
}
BENCHMARK(errorPrintf)->Name("record-error-with-three-details/snprintf");

} // namespace
