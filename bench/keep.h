// bench/keep.h - what the benchmarks share.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

// Makes the compiler believe that the object at `p` is read and written here.
inline void keep(void const* p) {
    asm volatile("" : : "r"(p) : "memory");
}

// A benchmark of wrong results measures nothing.
inline void check(bool right, char const* what) {
    if (!right) {
        std::fprintf(stderr, "wrong result: %s\n", what);
        std::exit(1);
    }
}
