// general/text/stringbyname.cpp - the word that all dictionaries share.
#include "general/text/stringbyname.h"

#include <atomic>

namespace {

// Atomic only because dictionaries of several threads write it.
std::atomic<unsigned int> insertAt{0};

} // namespace

void nxByNameInsertAt(unsigned int n) {
    insertAt.store(n, std::memory_order_relaxed);
}

unsigned int nxByNameInsertAt() {
    return insertAt.load(std::memory_order_relaxed);
}
