// Appending to, sorting and searching vectors.
#include "bench/keep.h"
#include "vx7base.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr unsigned int million = 1'000'000;

std::vector<int> const& randomInts() {
    static std::vector<int> const ints = [] {
        std::mt19937 random(42);
        std::vector<int> made(million);
        for (int& n : made)
            n = static_cast<int>(random());
        return made;
    }();
    return ints;
}

int NX_FASTCALL intCompare(int const* a, int const* b) {
    return *a < *b ? -1 : *a > *b ? 1 : 0;
}

int intCompareC(void const* a, void const* b) {
    return intCompare(static_cast<int const*>(a), static_cast<int const*>(b));
}

void appendOwn(benchmark::State& state) {
    for (auto _ : state) {
        NX_IntVec ints;
        for (unsigned int n = 0; n < million; ++n)
            ints += static_cast<int>(n);
        keep(ints.dataPConst());
        check(ints.itemQty() == million, "count after appending");
    }
}
BENCHMARK(appendOwn)->Name("vector-append-1M-ints/vx7")->Unit(benchmark::kMicrosecond);

void appendItemOwn(benchmark::State& state) {
    for (auto _ : state) {
        NX_IntVec ints;
        for (unsigned int n = 0; n < million; ++n)
            ints.itemAppend(static_cast<int>(n));
        keep(ints.dataPConst());
    }
}
BENCHMARK(appendItemOwn)->Name("vector-append-1M-ints/vx7-itemAppend")->Unit(benchmark::kMicrosecond);

void appendStd(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<int> ints;
        for (unsigned int n = 0; n < million; ++n)
            ints.push_back(static_cast<int>(n));
        keep(ints.data());
    }
}
BENCHMARK(appendStd)->Name("vector-append-1M-ints/std::vector")->Unit(benchmark::kMicrosecond);

void sortOwn(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        NX_IntVec ints(randomInts().data(), million);
        state.ResumeTiming();
        ints.dataSort(intCompare);
        keep(ints.dataPConst());
        state.PauseTiming();
        check(std::is_sorted(ints.dataPConst(), ints.dataPConst() + million), "sorted");
        state.ResumeTiming();
    }
}
BENCHMARK(sortOwn)->Name("sort-1M-ints/vx7")->Unit(benchmark::kMillisecond);

void sortC(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<int> ints(randomInts());
        state.ResumeTiming();
        std::qsort(ints.data(), ints.size(), sizeof(int), intCompareC);
        keep(ints.data());
    }
}
BENCHMARK(sortC)->Name("sort-1M-ints/qsort")->Unit(benchmark::kMillisecond);

void sortStd(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<int> ints(randomInts());
        state.ResumeTiming();
        int(NX_FASTCALL * compare)(int const*, int const*) = intCompare;
        keep(&compare);
        std::sort(ints.begin(), ints.end(),
                  [compare](int const& a, int const& b) { return compare(&a, &b) < 0; });
        keep(ints.data());
    }
}
BENCHMARK(sortStd)->Name("sort-1M-ints/std::sort-by-pointer")->Unit(benchmark::kMillisecond);

void searchOwn(benchmark::State& state) {
    NX_IntVec ints(randomInts().data(), million);
    ints.dataSort(intCompare);
    unsigned int at = 0;
    unsigned int n = 0;
    for (auto _ : state) {
        unsigned int const found = ints.itemSearch(randomInts()[n++ % million], intCompare, &at);
        keep(&found);
    }
    check(ints.itemSearch(randomInts()[0], intCompare, &at) != NX_NO_INDEX, "found");
}
BENCHMARK(searchOwn)->Name("search-1M-ints/vx7");

void searchStd(benchmark::State& state) {
    std::vector<int> ints(randomInts());
    std::sort(ints.begin(), ints.end());
    unsigned int n = 0;
    for (auto _ : state) {
        auto const found = std::lower_bound(ints.begin(), ints.end(), randomInts()[n++ % million]);
        keep(&*found);
    }
}
BENCHMARK(searchStd)->Name("search-1M-ints/std::lower_bound");

std::vector<std::string> const& keys() {
    static std::vector<std::string> const made = [] {
        std::mt19937 random(7);
        std::vector<std::string> list;
        for (int n = 0; n < 10'000; ++n)
            list.push_back("key" + std::to_string(random()));
        return list;
    }();
    return made;
}

void dictionaryOwn(benchmark::State& state) {
    std::vector<NX_StringA> names;
    for (std::string const& key : keys())
        names.emplace_back(key.c_str());
    NX_StringA const value("value");
    for (auto _ : state) {
        NX_StringByName dictionary;
        unsigned int at = 0;
        for (NX_StringA const& name : names)
            dictionary.itemInsert(name, value, &at);
        keep(&dictionary);
    }
}
BENCHMARK(dictionaryOwn)->Name("dictionary-10k-inserts/vx7")->Unit(benchmark::kMicrosecond);

void dictionaryStd(benchmark::State& state) {
    for (auto _ : state) {
        std::map<std::string, std::string> dictionary;
        for (std::string const& key : keys())
            dictionary.insert_or_assign(key, "value");
        keep(&dictionary);
    }
}
BENCHMARK(dictionaryStd)->Name("dictionary-10k-inserts/std::map")->Unit(benchmark::kMicrosecond);

} // namespace
