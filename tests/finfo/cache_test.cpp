// Caches: who goes first, budgets, writes that fail, threads, memory that runs short.
#include "general/finfo/cacheman.h"

#include <atomic>
#include <thread>
#include <utility>

#include "general/collm/mem.h"
#include "general/error/errorman.h"
#include "general/finfo/filedata.h"
#include "general/module/app.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

#if __has_include(<sys/resource.h>)
#define POSIX_LAYER
#include "general/platform/posix/seam.h"
#include <cerrno>
#include <unistd.h>
#endif

namespace {

using File = NX_File;
constexpr unsigned int block = 16384;
NX_CacheManager* const manager = NX_CacheManager::cacheManagerP();

std::string readAt(NX_FileData& file, unsigned int pos, unsigned int size) {
    std::string bytes(size, '?');
    EXPECT_EQ(file.dataReadAt(static_cast<long>(pos), bytes.data(), size), 0);
    return bytes;
}

char byteAt(NX_FileData& file, unsigned int number) {
    return readAt(file, number * block, 1)[0];
}

// The digits of the blocks, of the first eight, that are in memory: those that do not see what others write.
std::string residents(NX_FileData& file, NX_Cache& cache, char const* name) {
    cache.cacheBudget(64 * block);
    nxFileMake(name, std::string(8 * block, 'n'));
    std::string in;
    for (unsigned int n = 0; n < 8; ++n)
        if (byteAt(file, n) == 'o')
            in += static_cast<char>('0' + n);
    nxFileMake(name, std::string(8 * block, 'o'));
    return in;
}

void readAll(NX_FileData& file, char const* digits) {
    for (; *digits != 0; ++digits)
        byteAt(file, static_cast<unsigned int>(*digits - '0'));
}

} // namespace

TEST(Cache, TheLeastRecentlyUsedBlockGoesFirst) {
    nxFileMake("lru.bin", std::string(8 * block, 'o'));
    // blocks
    std::tuple<unsigned int, char const*, char const*> const table[] = {
        {3, "0246", "246"},    {3, "024064", "046"},   {4, "01234567", "4567"}, {1, "53", "3"},
        {4, "760524", "0245"}, {4, "7053707", "0357"}, {0, "012", ""}};
    for (auto const& [budget, reads, left] : table) {
        SCOPED_TRACE(reads);
        NX_Cache cache(budget * block + 100);
        NX_FileData file("lru.bin", File::modeRead, &cache);
        readAll(file, reads);
        EXPECT_EQ(cache.cacheSize(), std::string(left).size() * block);
        EXPECT_EQ(residents(file, cache, "lru.bin"), left);
    }
}

TEST(Cache, TheProcessHasABudgetToo) {
    for (char const* name : {"one.bin", "two.bin"})
        nxFileMake(name, std::string(8 * block, 'o'));
    NX_Cache first;
    NX_Cache second;
    NX_FileData one("one.bin", File::modeRead, &first);
    NX_FileData two("two.bin", File::modeRead, &second);
    manager->cacheBudget(4 * block);
    readAll(one, "753");
    NX_FileDataPtr held;
    EXPECT_GT(one.dataHoldAt(5 * block, held), 0);
    readAll(two, "6");
    readAll(one, "7");
    readAll(two, "42"); // 3 of the first file goes, then its own 6
    EXPECT_EQ(manager->cacheSize(), 4 * block);
    EXPECT_EQ(first.cacheSize(), 2 * block);
    manager->cacheBudget(3 * block); // 7
    EXPECT_EQ(second.cacheSize(), 2 * block);
    manager->cacheBudget(0);
    EXPECT_EQ(manager->cacheSize(), block); // what is held
    EXPECT_EQ(byteAt(two, 2), 'o');         // nothing is kept, everything works
    EXPECT_EQ(manager->cacheSize(), block);
    manager->cacheBudget(NX_CacheManager::budgetDefault);
    EXPECT_EQ(residents(one, first, "one.bin"), "5");
    EXPECT_EQ(residents(two, second, "two.bin"), "");
}

TEST(Cache, TheOrderHoldsWhereverATurnEnds) {
    nxFileMake("turn.bin", std::string(8 * block, 'o'));
    NX_Cache first;
    NX_Cache second;
    NX_FileData one("turn.bin", File::modeRead, &first);
    NX_FileData two("turn.bin", File::modeRead, &second);
    for (unsigned int const uses : {65532u, 65533u, 65534u, 65535u, 65536u, 70000u}) {
        manager->cacheBudget(3 * block);
        readAll(two, "5"); // its turn
        manager->cacheBudget(0);
        manager->cacheBudget(3 * block);
        for (unsigned int n = 0; n < uses; ++n)
            byteAt(one, 6);
        readAll(two, "02");
        readAll(one, "61"); // 0 of the second goes
        EXPECT_EQ(first.cacheSize(), 2 * block) << uses;
        EXPECT_EQ(second.cacheSize(), block) << uses;
    }
    manager->cacheBudget(NX_CacheManager::budgetDefault);
}

TEST(Cache, AFlushTakesTheLeastRecentlyUsedCacheFirst) {
    nxFileMake("flush.bin", std::string(8 * block, 'o'));
    EXPECT_EQ(manager->cacheFlush(), 0);
    NX_Cache first;
    NX_Cache second;
    NX_FileData one("flush.bin", File::modeReadWrite, &first);
    NX_FileData two("flush.bin", File::modeRead, &second);
    readAll(one, "73");
    NX_Cache held[2];
    NX_FileDataPtr pointers[2];
    for (int n = 0; n < 2; ++n) // the oldest two have nothing to give
        EXPECT_GT(NX_FileData("flush.bin", File::modeRead, &held[n]).dataHoldAt(0, pointers[n]), 0);
    readAll(two, "64");
    readAll(one, "1");
    EXPECT_EQ(one.dataWriteAt(5 * block, "dirty", 5), 0);
    for (unsigned int const left : {4, 1, 0}) {
        EXPECT_NE(manager->cacheFlush(), 0);
        EXPECT_EQ(second.cacheSize(), 0u);
        EXPECT_EQ(first.cacheSize(), left * block);
        EXPECT_EQ(nxFileContent("flush.bin").substr(5 * block, 5), left != 0 ? "ooooo" : "dirty");
    }
    EXPECT_EQ(manager->cacheFlush(), 0);
}

TEST(Cache, ThreadsShareBlocks) {
    constexpr unsigned int threads = 3;
    constexpr unsigned int span = 6 * block;
    std::string expected(threads * span, '0');
    nxFileMake("threads.bin", expected);
    NX_Cache cache(5 * block);
    NX_Cache other(4 * block);
    NX_FileData shared("threads.bin", File::modeReadWrite, &cache);
    std::atomic<bool> end = false;
    std::atomic<int> wrong = 0;
    // Each writes bytes of its own all over the file and reads them back; one flushes meanwhile.
    auto const work = [&](unsigned int self) {
        NX_FileData own("threads.bin", File::modeReadWrite, &cache);
        NX_FileData apart("threads.bin", File::modeRead, &other);
        for (unsigned int round = 0; round < 5000; ++round) {
            long const pos = static_cast<long>((round * 7919 % span) * threads + self);
            char const byte = static_cast<char>('a' + round % 26);
            char back = 0;
            expected[static_cast<std::size_t>(pos)] = byte;
            NX_FileDataPtr held;
            NX_FileData& writer = round % 2 != 0 ? own : shared;
            NX_FileData& reader = round % 3 != 0 ? own : shared;
            wrong += writer.dataWriteAt(pos, &byte, 1) != 0;
            wrong += reader.dataReadAt(pos, &back, 1) != 0 || back != byte;
            wrong += reader.dataHoldAt(pos, held) <= 0 || *held.dataPConst() != byte;
            wrong += apart.dataReadAt(pos, &back, 1) != 0;
            if (round % 100 == 99)
                wrong += own.fileFlush() != 0;
        }
    };
    std::vector<std::thread> running;
    for (unsigned int n = 0; n < threads; ++n)
        running.emplace_back(work, n);
    std::thread flusher([&] {
        while (!end) {
            manager->cacheFlush();
            wrong += manager->cacheWrite() != 0;
            shared.dataForget();
            std::this_thread::yield();
        }
    });
    for (std::thread& thread : running)
        thread.join();
    end = true;
    flusher.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(shared.fileClose(), 0);
    EXPECT_EQ(nxFileContent("threads.bin"), expected);
}

#if defined(POSIX_LAYER)

namespace {

std::atomic<bool> diskFull;
std::atomic<int> writes, reads;

// Fails after half of the bytes when `diskFull` is set.
ssize_t writeAt(int file, void const* buffer, std::size_t size, std::int64_t at) {
    ++writes;
    if (!diskFull)
        return ::pwrite64(file, buffer, size, at);
    if (size > 1 && at % 2 == 0)
        return ::pwrite64(file, buffer, 1, at);
    errno = ENOSPC;
    return -1;
}

void (*afterRead)(); // called once
NX_Cache* raceCache;

ssize_t readAt(int file, void* buffer, std::size_t size, std::int64_t at) {
    ++reads;
    ssize_t const done = ::pread64(file, buffer, size, at);
    if (auto const call = std::exchange(afterRead, nullptr))
        call();
    return done;
}

class Seam : NXS_SeamScope {
public:
    Seam() {
        nxSeam.writeAt = writeAt;
        nxSeam.readAt = readAt;
        diskFull = true;
        reads = writes = 0;
    }
};

} // namespace

TEST(Cache, WhatCannotBeWrittenStays) {
    std::string expected(8 * block, 'o');
    nxFileMake("full.bin", expected);
    NX_Cache cache(3 * block);
    Seam const seam;
    {
        NX_FileData file("full.bin", File::modeReadWrite, &cache);
        NX_FileData reader("full.bin", File::modeRead, &cache);
        EXPECT_EQ(file.dataWriteAt(2, "one", 3), 0);
        EXPECT_EQ(file.dataWriteAt(block + 3, "two", 3), 0);
        expected.replace(2, 3, "one").replace(block + 3, 3, "two");
        NxErrorOk();
        EXPECT_EQ(file.fileFlush(), -1);
        EXPECT_STREQ(NxErrorBuf().dataPConst(), "E=241 F=full.bin"); // one byte was written
        EXPECT_TRUE(file.fileFlush() == -1 && NxErrorNum() == errorNumSystem);
        EXPECT_EQ((NXS_Results{cache.cacheWrite(), manager->cacheWrite(), file.fileClose()}),
                  (NXS_Results{-1, -1, -1}));
        EXPECT_NE(file.fileIsOpen(), 0);

        // The cache goes on with what room it has; new bytes that find none are refused, not lost.
        writes = 0;
        for (unsigned int n = 2; n < 8; ++n)
            EXPECT_EQ(byteAt(reader, n), 'o');
        EXPECT_LE(writes, 1);
        EXPECT_EQ(cache.cacheSize(), 3 * block);
        EXPECT_EQ(file.dataWriteAt(5 * block, "three", 5), 0);
        EXPECT_TRUE(file.dataWriteAt(6 * block + 1, "four", 4) == -1 && NxErrorNum() == errorNumSystem);
        expected.replace(5 * block, 5, "three");
        EXPECT_EQ(cache.cacheFlush(), 0);
        EXPECT_EQ(readAt(reader, block + 3, 3), "two");
        EXPECT_EQ(reader.fileClose(), 0);
        NxErrorOk();
    } // the destructor cannot write either
    EXPECT_EQ(NxErrorNum(), errorNumSystem);
    EXPECT_EQ(cache.cacheWrite(), -1);
    {
        NX_FileData again("full.bin", File::modeReadWrite, &cache);
        EXPECT_EQ(readAt(again, 5 * block, 5), "three");
        EXPECT_EQ(again.fileClose(), -1);
        diskFull = false;
        EXPECT_EQ(again.dataWriteAt(0, "0", 1), 0);
        expected[0] = '0';
        EXPECT_EQ(again.fileClose(), 0);
    }
    EXPECT_EQ(nxFileContent("full.bin"), expected);
    EXPECT_EQ(File("full.bin", File::modeRead | File::modeExclusive).errorNum(), 0); // nobody has it open
}

TEST(Cache, UnwrittenDataOutlivesFileAndCache) {
    nxFileMake("orphan.bin", "");
    Seam const seam;
    {
        NX_Cache cache(block);
        NX_FileData file("orphan.bin", File::modeReadWrite, &cache);
        EXPECT_EQ(file.dataWriteAt(block + 1, "data", 4), 0);
        EXPECT_EQ(readAt(file, 7, 5), std::string(5, '\0')); // no room, and not in the file yet
    }
    EXPECT_EQ(manager->cacheWrite(), -1);
    EXPECT_EQ(nxFileContent("orphan.bin"), "");
    diskFull = false;
    EXPECT_EQ(manager->cacheWrite(), 0);
    EXPECT_EQ(nxFileContent("orphan.bin"), std::string(block + 1, '\0') + "data");
    EXPECT_EQ(manager->cacheSize(), 0u);
    EXPECT_EQ(File("orphan.bin", File::modeRead | File::modeExclusive).errorNum(), 0);
}

TEST(Cache, ManyBlocksGoInOrder) {
    constexpr unsigned int budget = 200;
    nxFileMake("many.bin", std::string(400 * block, 'o'));
    NX_Cache cache(budget * block);
    NX_FileData file("many.bin", File::modeRead, &cache);
    Seam const seam;
    std::vector<unsigned int> order; // the model: most recently used last
    int misses = 0;
    for (unsigned int n = 0, random = 1; n < 4000; ++n) {
        random = random * 1103515245 + 12345;
        unsigned int const number = (random >> 16) % (n / 10 + 5) % 400;
        if (std::erase(order, number) == 0)
            ++misses;
        order.push_back(number);
        if (order.size() > budget)
            order.erase(order.begin());
        NX_FileDataPtr held; // fetches no more than its block
        EXPECT_GT(file.dataHoldAt(static_cast<long>(number * block), held), 0);
        ASSERT_EQ(reads, misses) << n;
    }
}

TEST(Cache, WhatChangesWhileItIsReadIsReadAgain) {
    nxFileMake("race.bin", std::string(2 * block, 'o'));
    NX_Cache cache(2 * block);
    NX_FileData file("race.bin", File::modeRead, &cache);
    Seam const seam;
    diskFull = false;
    afterRead = [] { // another handle writes, and its block leaves the cache at once
        NX_FileData other("race.bin", File::modeReadWrite, raceCache);
        EXPECT_EQ(other.dataWriteAt(5, "new", 3), 0);
        EXPECT_EQ(raceCache->cacheWrite(), 0);
        other.dataForget();
    };
    raceCache = &cache;
    EXPECT_EQ(readAt(file, 5, 3), "new");
}

TEST(Cache, ReadsThatFollowEachOtherFetchSeveralBlocks) {
    nxFileMake("ahead.bin", std::string(64 * block, 'o'));
    NX_Cache cache(40 * block);
    NX_FileData file("ahead.bin", File::modeRead, &cache);
    Seam const seam;
    for (unsigned int pos = 0; pos < 64 * block; pos += 4096)
        readAt(file, pos, 4096);
    EXPECT_LE(reads, 11); // 2, 4, then 8 blocks
    EXPECT_EQ(cache.cacheSize(), 40 * block);
    file.dataForget();
    reads = 0;
    for (unsigned int n = 0; n < 30; ++n)
        byteAt(file, n * 37 % 64);
    EXPECT_EQ(reads, 30); // and these one each
    EXPECT_EQ(cache.cacheSize(), 30 * block);

    // Neither is a block read twice when another one is written to make room for it.
    NX_Cache small(4 * block);
    NX_FileData writer("ahead.bin", File::modeReadWrite, &small);
    diskFull = false;
    reads = 0;
    for (unsigned int n = 0; n < 30; ++n)
        EXPECT_EQ(writer.dataWriteAt(static_cast<long>(n * 37 % 64 * block + 5), "x", 1), 0);
    EXPECT_TRUE(reads == 30 && writes == 26);
}

namespace {

struct AskedApp : NX_AppNull {
    AskedApp(char** args) : NX_AppNull({nullptr, 1, args, nullptr, nullptr}) {}
    int appMemUnavail(unsigned int, int) override {
        ++asked;
        return 0;
    }
    int asked = 0;
};

// 48 MiB are in the cache, clean or dirty, and 16 MiB more are to be had: a request for 40 MiB is met at the
// cache's cost, while a thread is at work in the cache.
int shortage(int, char** argv) {
    char name[] = "shortage";
    char* args[] = {name, nullptr};
    AskedApp app(args);
    constexpr unsigned int size = 48u << 20;
    bool const dirty = *argv[0] == 'd';
    NX_Cache cache(size + block);
    NX_FileData file("shortage.bin", File::modeReadWrite | File::modeCreate, &cache);
    std::string const chunk(block, dirty ? 'd' : 'c');
    std::atomic<bool> end = false;
    std::atomic<bool> atWork = false;
    std::atomic<int> wrong = 0;
    for (unsigned int pos = 0; pos < size; pos += block)
        wrong += file.dataWriteAt(static_cast<long>(pos), chunk.data(), block) != 0;
    if (!dirty)
        wrong += cache.cacheWrite() != 0;
    wrong += cache.cacheSize() != size;
    std::thread reader([&] {
        NX_FileData own("shortage.bin", File::modeRead, &cache);
        while (!end) {
            wrong += byteAt(own, 5) != chunk[0];
            atWork = true;
        }
    });
    while (!atWork) // the thread has the memory it begins with
        std::this_thread::yield();
    wrong += !nxMemoryLimit(16u << 20);
    void* p = NxMemStdAlloc(40 << 20);
    end = true;
    reader.join();
    NxMemHeapFree(&p);
    return app.asked == 0 && wrong == 0 && cache.cacheSize() < 4 * block ? 0 : 3;
}
NXS_ChildEntry const shortageEntry("cache-shortage", shortage);

} // namespace

TEST(Cache, AFailingRequestIsMetAtItsCost) {
    if (!nxMemoryEnds)
        GTEST_SKIP() << "memory has no end here";
    for (char const* kind : {"clean", "dirty"}) {
        EXPECT_EQ(nxRunSelf("cache-shortage", {kind}), 0) << kind;
        EXPECT_EQ(nxFileContent("shortage.bin"), std::string(48u << 20, kind[0])) << kind;
    }
}

#endif
