// tests/collm/mem_test.cpp - blocks read zero however they grow and shrink; bookkeeping; requests that cannot
// be met.
#include "general/collm/mem.h"
#include "general/collm/vecref.h"
#include "tests/support/support.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace {

bool allAre(void const* p, unsigned int from, unsigned int to, char value) {
    char const* const bytes = static_cast<char const*>(p);
    return std::all_of(bytes + from, bytes + to, [=](char c) { return c == value; });
}

TEST(Mem, GrowingShowsZerosAfterAnySequenceOfSizes) {
    std::mt19937 random(1);
    void* p = nullptr;
    unsigned int size = 0;
    for (int step = 0; step < 8000; ++step) {
        bool const large = random() % 8 == 0;
        unsigned int const next =
            step % 40 == 39 ? 0 : 1 + static_cast<unsigned int>(random() % (large ? 300000 : 200));
        NxMemHeapRealloc(&p, next);
        ASSERT_EQ(p == nullptr, next == 0);
        ASSERT_GE(NxMemStdSize(p), next);
        ASSERT_TRUE(allAre(p, 0, std::min(size, next), '\x5A')) << size << " to " << next;
        ASSERT_TRUE(allAre(p, std::min(size, next), next, 0)) << size << " to " << next;
        std::fill_n(static_cast<char*>(p), next, '\x5A');
        size = next;
    }
    NxMemHeapFree(&p);
}

TEST(Mem, FreesAreCountedToAThousand) {
    auto const freeOne = [] {
        void* p = NxMemStdAlloc(8);
        NxMemHeapFree(&p);
        return NX_Mem::memP()->memFreeCount();
    };
    while (freeOne() != 0) {
    }
    for (int n = 1; n <= 1000; ++n)
        ASSERT_EQ(freeOne(), n);
    EXPECT_EQ(freeOne(), 0);
}

TEST(MemDeath, WithoutAnApplicationAFailureIsFatalAtOnce) {
    void* p = NxMemStdAlloc(10);
    EXPECT_ERROR_ABORT(NxMemStdAlloc(0x80000000u), 16884);
    EXPECT_ERROR_ABORT(NxMemHeapRealloc(&p, 0xFFFFFFFFu), 16884);
    NxMemHeapFree(&p);
}

// ---- the block
// -----------------------------------------------------------------------------------------------------

TEST(VecRef, StatesOfTheReferenceWord) {
    // Sole, passing as constant or sole, cloneable, modifiable.
    static std::tuple<unsigned long, char const*> const rows[] = {
        {0x000, "0110"}, {0x001, "0110"}, {0x100, "1111"}, {0x101, "1011"},
        {0x110, "1011"}, {0x200, "0010"}, {0x201, "0001"}, {0xFFFFFF31, "0001"}};
    for (auto const& [word, expected] : rows) {
        NX_VecRefM* const ref = NX_VecRefM::refAlloc(word, 6, 4);
        std::string states;
        for (int const is :
             {ref->refIsSole(), ref->refIsConstOrSole(), ref->refIsCloneable(), ref->refIsModifiable()})
            states += is ? '1' : '0';
        EXPECT_EQ(states, expected) << word;
        ref->itemQtySet(5);
        NX_VecRefM* const copy = ref->refClone(0);
        EXPECT_TRUE(copy->refNo() == 0x100 + (word & 0xFF) && copy->itemQtyCap() == 6);
        copy->refFree();
        ref->refFree();
    }
}

TEST(VecRef, ConstantBlocksAreLeftAlone) {
    for (NX_VecRefM* const empty : {NXS_EmptyBlock<4>::blockP(), NXS_EmptyBlock<24>::blockP()}) {
        empty->refInc();
        empty->refDec();
        EXPECT_EQ(empty->refFlag(NX_RefFlagDirty, 1), 0);
        EXPECT_TRUE(empty->refNo() == 0 && *empty->itemPExtraConst(0) == 0);
        NX_VecRefM* const heap = empty->itemQtyCap(5);
        EXPECT_TRUE(heap->refNo() == 0x100 && heap->itemQtyCap() == 5 &&
                    heap->itemSize() == empty->itemSize());
        heap->refFree();
    }
}

// However the memory behind a block is rounded, items never used before read zero.
TEST(VecRef, AddedRoomReadsZero) {
    for (unsigned int const size : {1u, 2u, 3u, 4u, 7u, 40u}) {
        NX_VecRefM* block = NX_VecRefM::refAlloc(0x100, 1, size);
        for (unsigned int cap = 1; cap < 3000; cap += 1 + cap / 40) {
            std::memset(block->dataPMod(), 0x5A, block->dataSizeCap());
            unsigned int const used = block->dataSizeCap();
            block = block->itemQtyCap(cap);
            ASSERT_TRUE(allAre(block->dataPConst(), 0, used, 0x5A));
            ASSERT_TRUE(allAre(block->dataPConst(), used, block->dataSizeCap(), 0)) << size << " * " << cap;
            ASSERT_GE(NxMemStdSize(block), block->refSize(block->itemQtyCap()));
        }
        block->refFree();
    }
}

} // namespace
