// Searching, comparing and matching text, on a single-byte code page.
#include "bench/keep.h"
#include "vx7base.h"

#include <cstring>
#include <fnmatch.h>
#include <regex>
#include <string>
#include <strings.h>

namespace {

constexpr int size = 65536;

// Text of words in which neither '#' nor a digit occurs before the end.
std::string const& text() {
    static std::string const made = [] {
        std::string words;
        while (words.size() < size)
            words += "the quick brown fox jumps over the lazy dog ";
        words.resize(size);
        words[size - 1] = '#';
        return words;
    }();
    return made;
}

template <class Search>
void search(benchmark::State& state, Search const& find, long expected) {
    for (auto _ : state) {
        char const* const found = find(text().c_str());
        keep(found);
    }
    check(find(text().c_str()) - text().c_str() == expected, "place found");
}

char const* plain(NX_TextA1PtrConst found) {
    return found;
}

void charOwn(benchmark::State& state) {
    search(
        state, [](char const* t) { return plain(NxTextFind(t, '#')); }, size - 1);
}
BENCHMARK(charOwn)->Name("find-char-64K/vx7-terminated");

void charCountedOwn(benchmark::State& state) {
    search(
        state, [](char const* t) { return plain(NxTextFind(t, size, '#')); }, size - 1);
}
BENCHMARK(charCountedOwn)->Name("find-char-64K/vx7-counted");

void charC(benchmark::State& state) {
    search(
        state, [](char const* t) { return static_cast<char const*>(std::memchr(t, '#', size)); }, size - 1);
}
BENCHMARK(charC)->Name("find-char-64K/memchr");

void textOwn(benchmark::State& state) {
    search(
        state, [](char const* t) { return plain(NxTextFind(t, text().c_str() + size - 8)); }, size - 8);
}
BENCHMARK(textOwn)->Name("find-text-64K/vx7-terminated");

void textCountedOwn(benchmark::State& state) {
    search(
        state, [](char const* t) { return plain(NxTextFind(t, size, text().c_str() + size - 8)); }, size - 8);
}
BENCHMARK(textCountedOwn)->Name("find-text-64K/vx7-counted");

void textC(benchmark::State& state) {
    search(
        state, [](char const* t) { return std::strstr(t, text().c_str() + size - 8); }, size - 8);
}
BENCHMARK(textC)->Name("find-text-64K/strstr");

void textStd(benchmark::State& state) {
    for (auto _ : state) {
        std::size_t const found = text().find(text().c_str() + size - 8);
        keep(&found);
    }
}
BENCHMARK(textStd)->Name("find-text-64K/std::string");

void upperOwn(benchmark::State& state) {
    std::string copy = text();
    for (auto _ : state)
        keep(NxTextUpper(NX_TextA1Ptr(copy.data()), size));
}
BENCHMARK(upperOwn)->Name("upper-64K/vx7");

void upperC(benchmark::State& state) {
    std::string copy = text();
    for (auto _ : state) {
        for (char& c : copy)
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        keep(copy.data());
    }
}
BENCHMARK(upperC)->Name("upper-64K/toupper");

char const folded1[] = "The quick brown fox jumps over the lazy dog and then rests a bit";
char const folded2[] = "the QUICK brown fox jumps OVER the lazy dog and then rests a BIT";

void foldOwn(benchmark::State& state) {
    int result = 1;
    for (auto _ : state) {
        result = NxTextCompare(folded1, 64, folded2, 64, NX_CompareFold);
        keep(&result);
    }
    check(result == 0, "equal when folded");
}
BENCHMARK(foldOwn)->Name("compare-folded-64/vx7");

void foldC(benchmark::State& state) {
    for (auto _ : state) {
        int const result = strncasecmp(folded1, folded2, 64);
        keep(&result);
    }
}
BENCHMARK(foldC)->Name("compare-folded-64/strncasecmp");

void numOwn(benchmark::State& state) {
    int result = 0;
    for (auto _ : state) {
        result = NxTextCompare("chapter-9-page-10.txt", "chapter-9-page-9.txt", NX_CompareFoldNum);
        keep(&result);
    }
    check(result > 0, "10 after 9");
}
BENCHMARK(numOwn)->Name("compare-numbers/vx7");

void numC(benchmark::State& state) {
    for (auto _ : state) {
        int const result = strverscmp("chapter-9-page-10.txt", "chapter-9-page-9.txt");
        keep(&result);
    }
}
BENCHMARK(numC)->Name("compare-numbers/strverscmp");

void wildOwn(benchmark::State& state) {
    int result = 1;
    for (auto _ : state) {
        result = NxTextCompare("a-report-of-last-year.txt", 25, "*.txt", 5, NX_CompareWild);
        keep(&result);
    }
    check(result == 0, "wildcard matches");
}
BENCHMARK(wildOwn)->Name("wildcard/vx7");

void wildC(benchmark::State& state) {
    for (auto _ : state) {
        int const result = fnmatch("*.txt", "a-report-of-last-year.txt", 0);
        keep(&result);
    }
}
BENCHMARK(wildC)->Name("wildcard/fnmatch");

void regexpOwn(benchmark::State& state, char const* pattern) {
    NX_StringA const own(text().c_str(), size);
    NX_RegExpA const expression(pattern);
    unsigned int length = 0;
    for (auto _ : state) {
        unsigned int const found = expression.itemNum(own, &length, 0);
        keep(&found);
    }
    check(expression.itemNum(own, &length, 0) == NX_NO_INDEX, "no match");
}
BENCHMARK_CAPTURE(regexpOwn, class, "[0-9]+x")->Name("regexp-64K-no-match/class/vx7");
BENCHMARK_CAPTURE(regexpOwn, literal, "%\\[[A-Za-z0-9_]+\\]")->Name("regexp-64K-no-match/literal/vx7");

void regexpStd(benchmark::State& state, char const* pattern) {
    std::regex const expression(pattern);
    for (auto _ : state) {
        std::cmatch match;
        bool const found = std::regex_search(text().c_str(), text().c_str() + size, match, expression);
        keep(&found);
    }
}
BENCHMARK_CAPTURE(regexpStd, class, "[0-9]+x")->Name("regexp-64K-no-match/class/std::regex");
BENCHMARK_CAPTURE(regexpStd, literal, "%\\[[A-Za-z0-9_]+\\]")->Name("regexp-64K-no-match/literal/std::regex");

} // namespace
