// tests/collm/vector_test.cpp - the vector: capacities, sharing, items that own something, counts past all
// bounds.
#include "general/collm/v4x.h"
#include "tests/collm/rawvec.h"
#include "tests/support/support.h"
#include "tests/support/tracked.h"

#include <random>
#include <set>

namespace {

// What adding `n` items by the growth rule to `qty` items in a block of `cap` makes of the capacity.
TEST(Vector, CapacityRules) {
    static std::tuple<unsigned int, unsigned int, unsigned int, unsigned int> const rows[] = {
        {0, 1, 1, 17},      {16, 17, 1, 33},       {32, 33, 1, 49},        {0, 1, 100, 113},
        {15, 17, 1, 18},    {16, 18, 1, 19},       {3, 17, 1, 17},         {9, 10, 0, 11},
        {100, 102, 1, 103}, {1000, 1001, 1, 1265}, {1000, 1001, 400, 1409}};
    for (auto const& [qty, cap, n, expected] : rows) {
        NX_IntVec v(std::vector<int>(qty, 7).data(), qty);
        v.itemQtyCap(cap - 1);
        NX_IntVec quick(v);
        quick.itemQtyCap(cap - 1); // a copy of its own, of the same room, for the short way of +=
        v.dataCreateAt(qty, n);
        EXPECT_EQ(v.itemQtyCap(), expected) << qty << " in " << cap << " plus " << n;
        if (n == 1)
            quick += 8;
        EXPECT_TRUE(n != 1 || quick.itemQtyCap() == expected) << qty << " in " << cap;
    }
    NX_IntVec v;
    for (int n = 0; n < 20000; ++n) {
        v += n;
        unsigned int const qty = v.itemQty();
        ASSERT_EQ(v.itemQtyCap(), qty < 16 ? 17u : qty + 2);
        ASSERT_EQ(v.itemPConst(qty / 2)[0], static_cast<int>(qty / 2));
    }
    v.itemAppend(5);
    v.itemAppend(6);
    EXPECT_TRUE(v.itemQtyCap() == 20003 && NX_IntVec(0, 0).itemQtyCap() == 1);
}

TEST(Vector, WritingInPlaceMarksDirtyAndCloningDoesNot) {
    NX_IntVec a(0, 10);
    a += 1;
    EXPECT_EQ(a.refNo(), 0x110u);
    a.refIsDirty(0);
    NX_IntVec b(a);
    b[0] = 2;
    EXPECT_TRUE(a.itemPConst(0)[0] == 1 && a.refNo() == 0x100 && b.refNo() == 0x100);
    NX_IntVec c(a);
    c.dataCreateAt(0, 1);
    EXPECT_EQ(c.itemQtyCap(), 4u); // cloned for the request alone
    a.dataSole();
    EXPECT_EQ(a.itemQtyCap(), 10u); // neither type nor flags nor other owners: left alone
    a.refIsDirty(1);
    a.dataSole();
    EXPECT_TRUE(a.itemQtyCap() == 2 && a.refNo() == 0x110); // dirty: cloned although sole
}

TEST(Vector, OwnersOfASharedTypeSeeEachOthersWrites) {
    RawVec a(1, 0x101);
    a.itemQtyCap(30);
    a.dataReplaceAt(0, 0, "abc", 3);
    RawVec const b(a);
    a.dataReplaceAt(1, 1, "xyz", 3);
    EXPECT_EQ(b.text(), "axyzc");
    a.dataReplaceAt(0, 1, a.dataPConst() + 1, 2); // own items: goes on in a block of its own
    EXPECT_EQ(a.text() + " " + b.text(), "xyxyzc axyzc");
    EXPECT_TRUE(a.refNo() == 0x111 && b.refNo() == 0x111);
}

TEST(Vector, HexadecimalText) {
    static std::tuple<char const*, char const*, char const*> const rows[] = {
        {"\x1F\xA0", nullptr, "1fa0"}, {"abc", "--", "61--62--63"}, {"", ":", ""}};
    for (auto const& [from, sep, hex] : rows) {
        RawVec v{std::string(from)};
        v.dataHex(sep);
        EXPECT_EQ(v.text(), hex);
        v.dataBin();
        EXPECT_EQ(v.text(), from);
    }
    RawVec odd(std::string("abc"));
    odd.dataBin();
    EXPECT_EQ(odd.text(), "\xAB\x0C");
    RawVec wide(4);
    wide.dataReplaceAt(0, 0, "ABCD", 1);
    wide.dataHex(" ");
    EXPECT_EQ(wide.text(), std::string("41 42 43 44", 12)); // the last item is filled up with a zero
}

TEST(VectorDeath, IndexesOutOfRange) {
    NX_IntVec v(3, 4);
    EXPECT_ASSERTION(v[3] = 1, "item_num < itemQty()", "general/collm/v1.h");
    EXPECT_ASSERTION(v.itemInsertAt(4, 1), "item_num <= itemQty()", "general/collm/v1");
    EXPECT_ASSERTION(v.dataDeleteAt(2, NX_NO_INDEX), "item_num + item_qty <= itemQty()", "general/collm/v1");
    EXPECT_ASSERTION(v.NX_CollM::collManClone(), "0", "general/collm/collm");
}

// No count that wraps in 32 bits ever reaches the items: the process ends for lack of memory.
TEST(VectorDeath, CountsPastAllBounds) {
    RawVec bytes(std::string("abcd"));
    NX_IntVec four(4, 5);
    RawSub bytesView(&bytes, 1, 2);
    NX_VecSubT<NX_IntVec> fourView(&four, 1, 2);
    EXPECT_ERROR_ABORT(bytes.itemQty(NX_NO_INDEX), 16884);
    EXPECT_ERROR_ABORT(four.itemQty(0x40000001u), 16884);
    EXPECT_ERROR_ABORT(four.itemQtyGrow(NX_NO_INDEX - 3), 16884);
    EXPECT_ERROR_ABORT(bytes.itemQtyCap(NX_NO_INDEX), 16884);
    EXPECT_ERROR_ABORT(bytes.dataReplaceAt(0, 0, "x", NX_NO_INDEX - 4), 16884);
    EXPECT_ERROR_ABORT(bytesView.itemQty(100), 16884); // fits 32 bits, but no memory
    EXPECT_ERROR_ABORT(fourView.itemQtyGrow(1), 16884);
    EXPECT_ERROR_ABORT(NX_IntVec(four.dataPConst(), NX_NO_INDEX), 16884);
}

// ---- items that own something, against a plain model
// -------------------------------------------------------

class TrackedVec : public NX_VecT<NXS_Tracked, NXS_OwningItems> {
public:
    using NX_VecM::dataReplaceAt;
    using NX_VecM::refP;
    using NX_VecT::NX_VecT;
};

struct Pool {
    TrackedVec vecs[3];
    std::vector<int> models[3];

    // Every vector reads as its model, and just the items that lie in blocks exist.
    void check() const {
        std::set<NX_VecRefM*> blocks;
        unsigned int items = 0;
        for (int k = 0; k < 3; ++k) {
            ASSERT_EQ(vecs[k].itemQty(), models[k].size());
            ASSERT_LT(vecs[k].itemQty(), vecs[k].itemQtyCap());
            for (unsigned int n = 0; n < vecs[k].itemQty(); ++n)
                ASSERT_EQ(vecs[k].itemPConst(n)->value(), models[k][n]);
            if (blocks.insert(vecs[k].refP()).second)
                items += vecs[k].itemQty();
        }
        ASSERT_EQ(NXS_Tracked::alive(), static_cast<int>(items));
    }
};

TEST(Vector, RandomOperationsAgreeWithAModel) {
    std::mt19937 random(7);
    auto const below = [&](std::size_t n) { return static_cast<unsigned int>(random() % n); };
    for (int round = 0; round < 60; ++round) {
        Pool pool;
        for (int step = 0; step < 120; ++step) {
            unsigned int const k = below(3), from = below(3), op = below(12);
            TrackedVec& v = pool.vecs[k];
            TrackedVec const& source = pool.vecs[from];
            std::vector<int>& m = pool.models[k];
            std::vector<int> const other = pool.models[from];
            unsigned int const pos = below(m.size() + 1), del = below(m.size() - pos + 1);
            unsigned int const at = below(other.size() + 1), qty = below(other.size() - at + 1);
            auto const place = m.begin() + pos;
            if (op == 0) {
                v += NXS_Tracked(step);
                m.push_back(step);
            } else if (op == 1 && at < other.size()) {
                v += *source.itemPConst(at); // may be one of its own
                m.push_back(other[at]);
            } else if (op == 2) {
                v.itemInsertAt(pos, step);
                m.insert(place, step);
            } else if (op <= 5) { // by a run of any vector, often its own or of the same block
                char const* const run = reinterpret_cast<char const*>(source.dataPConst() + at);
                v.dataReplaceAt(pos, del + 9 * (del + pos == m.size()), run, qty);
                m.erase(place, place + del);
                m.insert(m.begin() + pos, other.begin() + at, other.begin() + at + qty);
            } else if (op == 6) {
                v.dataDeleteAt(pos, del);
                m.erase(place, place + del);
            } else if (op == 7) {
                v.dataCreateAt(pos, qty);
                m.insert(place, qty, 0);
            } else if (op <= 9) {
                v = source;
                m = other;
            } else if (op == 10 && pos < m.size()) {
                v[pos] = step;
                m[pos] = step;
            } else {
                v.dataSole();
            }
            pool.check();
            if (testing::Test::HasFatalFailure())
                FAIL() << "after operation " << op << ", round " << round << ", step " << step;
        }
    }
    EXPECT_EQ(NXS_Tracked::alive(), 0);
}

} // namespace
