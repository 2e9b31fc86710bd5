// tests/collm/sort_test.cpp - both sorts, comparison by comparison, against plain recursive forms of the same
// methods.
#include "tests/collm/rawvec.h"
#include "tests/support/support.h"

#include <algorithm>
#include <random>

namespace {

std::string compared; // the keys of all comparisons, in their order
std::minstd_rand inconsistent;

int NX_FASTCALL recording(char const* a, char const* b) {
    compared += *a;
    compared += *b;
    return byteCompare(a, b);
}
int NX_FASTCALL recordingContext(char const* a, char const* b, void* context) {
    EXPECT_EQ(context, &compared);
    return recording(a, b);
}
int NX_FASTCALL confused(char const* a, char const* b) {
    compared += *a;
    compared += *b;
    return static_cast<int>(inconsistent() % 3) - 1;
}
int NX_FASTCALL confusedContext(char const* a, char const* b, void*) {
    return confused(a, b);
}

using Plain = int(NX_FASTCALL*)(char const*, char const*);

// Both references sort the `qty` keys at p, the smaller part first.
void referencePlain(char* p, long qty, Plain cmp) {
    if (qty <= 8) {
        for (; qty > 1; --qty) {
            long greatest = 0;
            for (long n = 1; n < qty; ++n)
                greatest = cmp(p + n, p + greatest) > 0 ? n : greatest;
            std::swap(p[greatest], p[qty - 1]);
        }
        return;
    }
    std::swap(p[0], p[qty / 2]);
    long up = 0, down = qty;
    for (;;) {
        do
            ++up;
        while (up < qty && cmp(p + up, p) <= 0);
        do
            --down;
        while (down > 0 && cmp(p + down, p) >= 0);
        if (down < up)
            break;
        std::swap(p[up], p[down]);
    }
    std::swap(p[0], p[down]);
    bool const rightFirst = down > qty - 1 - up; // measured without the last item of each part
    if (rightFirst)
        referencePlain(p + up, qty - up, cmp);
    referencePlain(p, down, cmp);
    if (!rightFirst)
        referencePlain(p + up, qty - up, cmp);
}

void referenceContext(char* p, long qty, Plain cmp) {
    if (qty <= 1)
        return;
    long i = 0, j = qty - 1;
    while (j > i) {
        while (j > i && cmp(p + i, p + qty - 1) <= 0)
            ++i;
        while (j > i && cmp(p + qty - 1, p + j) <= 0)
            --j;
        if (j > i)
            std::swap(p[i++], p[j]);
    }
    std::swap(p[i], p[qty - 1]);
    bool const rightFirst = qty - 1 - i < i;
    if (rightFirst)
        referenceContext(p + i + 1, qty - 1 - i, cmp);
    referenceContext(p, i, cmp);
    if (!rightFirst)
        referenceContext(p + i + 1, qty - 1 - i, cmp);
}

std::vector<std::string> adversaries() {
    std::vector<std::string> all;
    std::mt19937 random(3);
    for (std::size_t const qty : {0u, 1u, 2u, 8u, 9u, 10u, 17u, 33u, 100u, 250u}) {
        std::string rising, organ, few, any;
        for (std::size_t n = 0; n < qty; ++n) {
            rising += static_cast<char>(n);
            organ += static_cast<char>(std::min(n, qty - n));
            few += static_cast<char>(random() % 3);
            any += static_cast<char>(random());
        }
        all.insert(all.end(), {rising, std::string(rising.rbegin(), rising.rend()), organ, few, any,
                               std::string(qty, 'x')});
    }
    return all;
}

// Items of `size` bytes, each filled with its key.
RawVec widened(std::string const& keys, unsigned int size) {
    RawVec v(size);
    for (char const key : keys)
        v.dataReplaceAt(v.itemQty(), 0, std::string(size, key).data(), 1);
    return v;
}

std::string keysOf(RawVec const& v) {
    std::string keys;
    for (unsigned int n = 0; n < v.itemQty(); ++n) {
        std::string const item(v.dataPConst() + n * v.itemSize(), v.itemSize());
        EXPECT_EQ(item, std::string(item.size(), item[0])) << "an item torn apart";
        keys += item[0];
    }
    return keys;
}

void expectSame(bool context, Plain cmp, int(NX_FASTCALL* cmpContext)(char const*, char const*, void*)) {
    for (std::string const& input : adversaries()) {
        std::string expected = input;
        compared.clear();
        inconsistent.seed(5);
        if (context)
            referenceContext(expected.data(), static_cast<long>(input.size()), cmp);
        else
            referencePlain(expected.data(), static_cast<long>(input.size()), cmp);
        std::string const sequence = compared;
        for (unsigned int const size : {1u, 2u, 3u, 4u, 8u, 12u, 16u, 20u, 28u, 33u, 40u, 64u}) {
            RawVec v = widened(input, size);
            compared.clear();
            inconsistent.seed(5);
            if (context)
                v.dataSort(cmpContext, &compared);
            else
                v.dataSort(cmp);
            ASSERT_EQ(keysOf(v) + compared, expected + sequence) << input.size() << " items of " << size;
        }
    }
}

TEST(Sort, BothAgreeComparisonByComparison) {
    for (bool const context : {false, true}) {
        expectSame(context, recording, recordingContext);
        expectSame(context, confused, confusedContext);
    }
}

TEST(Sort, MakesTheVectorModifiable) {
    RawVec const other(std::string("cba"));
    RawVec whole(other), range(other);
    whole.refIsDirty(0);
    whole.dataSort(byteCompare);
    EXPECT_EQ(whole.refNo(), 0x100u);
    range.dataSort(byteCompare, 0, 2); // twice, so that a clone ends up dirty
    EXPECT_EQ(range.refNo(), 0x110u);
    EXPECT_EQ(range.text(), "bca");
    EXPECT_EQ(other.text(), "cba");
}

} // namespace
