// Single operations on files, and log entries.
#include "bench/keep.h"
#include "vx7base.h"

#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace {

constexpr unsigned int blockSize = 4096;
constexpr unsigned int blockCount = 256;

std::string fileName() {
    return (std::filesystem::temp_directory_path() / "vx7bench.dat").string();
}

void make() {
    NX_File file(fileName().c_str(), NX_File::modeWrite | NX_File::modeCreate | NX_File::modeTrunc);
    check(file.dataZeroAt(0, blockSize * blockCount) == blockSize * blockCount, "file made");
}

void readOwn(benchmark::State& state) {
    make();
    NX_File file(fileName().c_str(), NX_File::modeRead);
    char buffer[blockSize];
    long n = 0;
    int result = 0;
    for (auto _ : state)
        result |= file.dataReadAt(n++ % blockCount * blockSize, buffer, blockSize);
    check(result == 0, "blocks read");
    NX_File::fileErase(fileName().c_str());
}
BENCHMARK(readOwn)->Name("file-read-4K-at/vx7");

void readPosix(benchmark::State& state) {
    make();
    int const file = open(fileName().c_str(), O_RDONLY | O_CLOEXEC);
    char buffer[blockSize];
    long n = 0;
    bool right = true;
    for (auto _ : state)
        right = pread(file, buffer, blockSize, n++ % blockCount * blockSize) == blockSize && right;
    check(right, "blocks read");
    close(file);
    NX_File::fileErase(fileName().c_str());
}
BENCHMARK(readPosix)->Name("file-read-4K-at/pread");

void logOwn(benchmark::State& state) {
    for (auto _ : state)
        NxLogPrint("an entry of the benchmark");
    check(std::remove("quorix.log") == 0, "entries logged");
}
BENCHMARK(logOwn)->Name("log-entry/vx7");

void logC(benchmark::State& state) {
    for (auto _ : state) {
        std::FILE* const log = std::fopen("vx7bench.log", "a");
        std::time_t const now = std::time(nullptr);
        std::fprintf(log, "\nbench %s%s\n", std::asctime(std::localtime(&now)), "an entry of the benchmark");
        std::fclose(log);
    }
    check(std::remove("vx7bench.log") == 0, "entries logged");
}
BENCHMARK(logC)->Name("log-entry/fopen-fprintf");

} // namespace
