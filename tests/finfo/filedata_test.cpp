// Files through a cache: the same results as plain files, sharing, held bytes, the end of the file.
#include "general/finfo/filedata.h"

#include <filesystem>
#include <memory>
#include <random>

#include "general/error/errorman.h"
#include "general/finfo/cacheman.h"
#include "tests/support/support.h"

namespace {

using File = NX_File;
constexpr File::OpenMode createNew = File::modeReadWrite | File::modeCreate | File::modeTrunc;
constexpr unsigned int block = 16384;

std::string details() {
    return NxErrorBuf().dataPConst();
}

std::string text(unsigned int size, unsigned int seed) {
    std::string made(size, '\0');
    for (char& c : made)
        c = static_cast<char>('a' + (seed = seed * 1103515245 + 12345) / 65536 % 26);
    return made;
}

// Random operations on one file, through two cached handles and one that only writes, beside a string.
void modelRun(unsigned int budget, unsigned int seed) {
    std::mt19937 random(seed);
    auto const below = [&](unsigned int most) { return static_cast<unsigned int>(random() % most); };
    constexpr unsigned int span = 12 * block;
    NX_Cache cache(budget);
    std::string model;
    std::unique_ptr<NX_FileData> files[3];
    for (int n = 0; n < 3; ++n)
        files[n] = std::make_unique<NX_FileData>("model.bin",
                                                 n == 0   ? createNew
                                                 : n == 1 ? File::modeReadWrite
                                                          : File::modeWrite,
                                                 &cache);
    NX_FileDataPtr held;
    std::string heldText;
    std::string buffer(3 * block, '\0');
    for (int step = 0; step < 1500; ++step) {
        SCOPED_TRACE("budget " + std::to_string(budget) + " seed " + std::to_string(seed) + " step " +
                     std::to_string(step));
        NX_FileData& file = *files[below(2)];
        unsigned int const pos = below(8) == 0 ? below(12) * block : below(span);
        unsigned int const size = below(4) == 0 ? below(3 * block) + 1 : below(300) + 1;
        std::string const there = pos < model.size() ? model.substr(pos, size) : "";
        switch (unsigned int const what = below(20); what) {
        case 0: // through any of the three
        case 1:
        case 2:
        case 3:
        case 4:
        case 5: {
            std::string const bytes = text(size, below(1000000));
            ASSERT_EQ(files[below(3)]->dataWriteAt(static_cast<long>(pos), bytes.data(), size), 0);
            if (model.size() < pos + size)
                model.resize(pos + size);
            model.replace(pos, size, bytes);
            break;
        }
        case 6:
            ASSERT_EQ(below(40) == 0 ? file.fileFlush() : cache.cacheWrite(), 0);
            ASSERT_EQ(nxFileContent("model.bin"), model);
            break;
        case 7:
            file.dataForget();
            break;
        case 8:
            cache.cacheFlush();
            break;
        case 9:
            ASSERT_EQ(files[below(3)]->fileSize(), model.size());
            break;
        case 10: { // another handle comes, and one goes
            unsigned int const n = below(3);
            auto made = std::make_unique<NX_FileData>("model.bin",
                                                      n == 2 ? File::modeWrite : File::modeReadWrite, &cache);
            ASSERT_EQ(files[n]->fileClose(), 0);
            files[n] = std::move(made);
            break;
        }
        case 11:
        case 12: {
            ASSERT_EQ(std::string(held.dataPConst() ? held.dataPConst() : "", held.dataSize()), heldText);
            unsigned int const end =
                std::min<unsigned int>((pos / block + 1) * block, static_cast<unsigned int>(model.size()));
            heldText = pos < end ? model.substr(pos, end - pos) : "";
            ASSERT_EQ(file.dataHoldAt(static_cast<long>(pos), held), static_cast<int>(heldText.size()));
            break;
        }
        default:
            if (what < 16) {
                ASSERT_EQ(file.dataReadAtEOF(static_cast<long>(pos), buffer.data(), size),
                          static_cast<int>(there.size()));
            } else {
                ASSERT_EQ(file.dataReadAt(static_cast<long>(pos), buffer.data(), size),
                          there.size() == size ? 0 : -1);
            }
            ASSERT_EQ(buffer.substr(0, there.size()), there);
        }
        // Beyond the budget there is at most what is held, and a copy of it.
        ASSERT_LE(cache.cacheSize(), budget / block * block + 2 * block);
    }
    for (auto& file : files)
        ASSERT_EQ(file->fileClose(), 0);
    EXPECT_EQ(nxFileContent("model.bin"), model);
    EXPECT_EQ(std::string(held.dataPConst() ? held.dataPConst() : "", held.dataSize()), heldText);
    held.dataDrop();
    EXPECT_EQ(cache.cacheSize(), 0u);
}

} // namespace

TEST(FileData, DoesWhatAStringDoes) {
    for (unsigned int const budget : {0u, block, 3 * block, 8 * block + 1, 64 * block})
        for (unsigned int seed = 1; seed <= 3; ++seed)
            modelRun(budget, seed);
    EXPECT_EQ(NX_CacheManager::cacheManagerP()->cacheSize(), 0u);
}

TEST(FileData, OpensAndFailsAsFilesDo) {
    std::filesystem::create_directory("opendir");
    nxFileMake("open.txt", "content");
    struct {
        char const* name;
        File::OpenMode mode;
    } const table[] = {{"open.txt", File::modeRead},
                       {"open.txt", File::modeWrite},
                       {"open.txt", File::modeReadWrite | File::modeExclusive},
                       {"open.txt", File::modeReadDenyWrite},
                       {"missing.txt", File::modeRead},
                       {"opendir", File::modeRead},
                       {"nodir/x", File::modeWrite | File::modeCreate}};
    for (auto const& row : table) {
        SCOPED_TRACE(std::string(row.name) + " " + std::to_string(row.mode));
        // Each step on a plain and on a cached file: result, error number, details.
        auto const steps = [&](auto& file) {
            char buffer[16] = {};
            std::string told;
            auto const tell = [&](long result) {
                told += std::to_string(result) + "/" + std::to_string(NxErrorNum()) + "/" +
                        std::to_string(file.errorNum()) + "/" + (NxErrorNum() != 0 ? details() : "") + "\n";
                NxErrorOk();
            };
            tell(file.fileIsOpen() + 2 * file.fileIsOpenRead() + 4 * file.fileIsOpenWrite());
            tell(file.dataReadAt(3, buffer, 4));
            tell(file.dataReadAt(3, buffer, 5));
            told += std::string(buffer, sizeof buffer);
            tell(file.dataReadAt(7, buffer, 1));
            tell(file.dataReadAt(100, buffer, 0));
            tell(file.dataReadAt(-1, buffer, 1));
            tell(file.dataWriteAt(-1, buffer, 0));
            tell(file.dataWriteAt(3, "t", 1));
            tell(static_cast<long>(file.fileSize()));
            tell(file.fileClose());
            tell(file.fileClose());
            tell(file.dataReadAt(0, buffer, 1));
            tell(file.dataWriteAt(0, buffer, 1));
            tell(static_cast<long>(file.fileSize()));
            return told;
        };
        NxErrorOk();
        std::string plain;
        {
            File file(row.name, row.mode);
            plain = steps(file);
        }
        NxErrorOk();
        NX_FileData file(row.name, row.mode);
        EXPECT_EQ(steps(file), plain);
        NX_FileDataPtr held;
        EXPECT_EQ(file.dataHoldAt(0, held), -1);
    }
}

TEST(FileData, SharesByFileAndForgetsOnDemand) {
    nxFileMake("share.bin", text(2 * block, 1));
    std::filesystem::create_directory("sharedir");
    NX_FileData one("share.bin", File::modeReadWrite);
    NX_FileData two("sharedir/../share.bin", File::modeRead);
    NX_Cache other;
    NX_FileData apart("share.bin", File::modeRead, &other);
    char buffer[8] = {};
    EXPECT_EQ(apart.dataReadAt(10, buffer, 3), 0);
    std::string const before(buffer);
    EXPECT_EQ(one.dataWriteAt(10, "new", 3), 0);
    EXPECT_EQ(two.dataReadAt(10, buffer, 3), 0);
    EXPECT_STREQ(buffer, "new");
    EXPECT_EQ(nxFileContent("share.bin").substr(10, 3), before);
    EXPECT_EQ(one.fileClose(), 0);
    EXPECT_EQ(nxFileContent("share.bin").substr(10, 3), "new");
    EXPECT_EQ(apart.dataReadAt(10, buffer, 3), 0);
    EXPECT_EQ(buffer, before); // another cache
    NX_FileDataPtr held;
    EXPECT_GT(apart.dataHoldAt(10, held), 0);
    apart.dataForget();
    EXPECT_EQ(apart.dataReadAt(10, buffer, 3), 0);
    EXPECT_STREQ(buffer, "new");
    EXPECT_EQ(std::string(held.dataPConst(), 3), before);

    // What others append is seen at the end; what they cut off as well.
    {
        File plain("share.bin", File::modeWrite);
        EXPECT_EQ(two.dataReadAtEOF(2 * block - 2, buffer, 8), 2);
        EXPECT_EQ(plain.dataWriteAt(2 * block, "tail", 4), 0);
    }
    EXPECT_EQ(two.dataReadAtEOF(2 * block - 2, buffer, 8), 6);
    EXPECT_EQ(std::string(buffer + 2, 4), "tail");
    {
        File plain("share.bin", File::modeWrite);
        EXPECT_EQ(plain.dataWriteAt(2 * block + 4, "more", 4), 0);
    }
    EXPECT_EQ(two.fileSize(), 2 * block + 8);
    EXPECT_EQ(two.dataReadAt(2 * block + 2, buffer, 6), 0);
    EXPECT_EQ(std::string(buffer, 6), "ilmore");
    std::filesystem::resize_file("share.bin", 100);
    EXPECT_EQ(two.fileSize(), 100u);
    EXPECT_EQ(two.dataReadAtEOF(98, buffer, 8), 2);
    nxFileMake("share.bin", std::string(2 * block, '2'));
    EXPECT_EQ(two.dataReadAt(2 * block - 2, buffer, 2), 0);
    EXPECT_EQ(std::string(buffer, 2), "22"); // nothing of the time before

    // A block that has been changed outlives the cutting off of its end.
    NX_FileData writer("share.bin", File::modeReadWrite, &other);
    writer.dataForget();
    EXPECT_EQ(writer.dataWriteAt(10, "x", 1), 0);
    std::filesystem::resize_file("share.bin", 12);
    EXPECT_EQ(writer.fileSize(), 12u);
    EXPECT_EQ(writer.dataWriteAt(14, "y", 1), 0);
    EXPECT_EQ(writer.fileClose(), 0);
    EXPECT_EQ(nxFileContent("share.bin"), "2222222222x2" + std::string(2, '\0') + "y");
}

// A block that was not in memory has what others put there, also where this side only writes.
TEST(FileData, WritingFindsWhatOthersHaveAppended) {
    nxFileMake("grown.bin", "start");
    NX_FileData file("grown.bin", File::modeReadWrite);
    std::string expected = text(3 * block, 4);
    nxFileMake("grown.bin", expected);
    for (unsigned int const pos : {2 * block, block + 7, 2 * block + 99}) {
        EXPECT_EQ(file.dataWriteAt(static_cast<long>(pos), "WXYZ", 4), 0);
        expected.replace(pos, 4, "WXYZ");
    }
    EXPECT_EQ(file.fileClose(), 0);
    EXPECT_EQ(nxFileContent("grown.bin"), expected);
}

TEST(FileData, EmptyingDropsWhatIsNotWritten) {
    nxFileMake("trunc.bin", text(3 * block, 2));
    NX_FileData one("trunc.bin", File::modeReadWrite);
    EXPECT_EQ(one.dataWriteAt(block, "unwritten", 9), 0);
    {
        NX_FileData two("trunc.bin", File::modeWrite | File::modeTrunc);
        EXPECT_EQ(one.fileSize(), 0u);
        EXPECT_EQ(two.dataWriteAt(5, "x", 1), 0);
        char buffer[8] = {1, 1, 1, 1, 1};
        EXPECT_EQ(one.dataReadAtEOF(0, buffer, 8), 6);
        EXPECT_EQ(std::string(buffer, 6), std::string(5, '\0') + "x");
    }
    EXPECT_EQ(one.fileClose(), 0);
    EXPECT_EQ(nxFileContent("trunc.bin"), std::string(5, '\0') + "x");
}

TEST(FileData, FarPositionsTakeLittleRoom) {
    NX_Cache cache(4 * block);
    {
        NX_FileData file("far.bin", createNew, &cache);
        char buffer[8] = {};
        EXPECT_EQ(file.dataWriteAt(0x7FFFFFFC, "edge", 4), 0);
        EXPECT_EQ(file.dataWriteAt(0x7FFFFFFE, "over", 4), 0); // goes on past the last position
        EXPECT_EQ(file.fileSize(), 0x80000002u);
        EXPECT_EQ(file.dataReadAt(0x7FFFFFFC, buffer, 6), 0);
        EXPECT_EQ(std::string(buffer, 6), "edover");
        EXPECT_EQ(file.dataReadAtEOF(0x7FFFFFFF, buffer, 8), 3);
        EXPECT_EQ(file.dataReadAt(0x40000000, buffer, 8), 0);
        EXPECT_EQ(std::string(buffer, 8), std::string(8, '\0'));
        EXPECT_EQ(file.fileFlush(), 0);
    }
    EXPECT_EQ(std::filesystem::file_size("far.bin"), 0x80000002u);
    std::filesystem::remove("far.bin");
}

TEST(FileData, HeldBytesOutliveEverything) {
    std::string const content = text(3 * block, 3);
    nxFileMake("held.bin", content);
    NX_FileDataPtr held;
    NX_FileDataPtr copy;
    {
        NX_Cache cache(block);
        NX_FileData file("held.bin", File::modeReadWrite, &cache);
        EXPECT_EQ(file.dataHoldAt(100, held), static_cast<int>(block) - 100);
        copy = held;
        EXPECT_EQ(file.dataWriteAt(90, "changed by a writer", 19), 0);
        char buffer[32] = {};
        for (long pos : {static_cast<long>(2 * block), static_cast<long>(block), 90l})
            EXPECT_EQ(file.dataReadAt(pos, buffer, 19), 0);
        EXPECT_EQ(std::string(buffer), "changed by a writer");
        NX_FileDataPtr late;
        EXPECT_EQ(file.dataHoldAt(90, late), static_cast<int>(block) - 90);
        EXPECT_EQ(std::string(late.dataPConst(), 19), "changed by a writer");
        EXPECT_EQ(file.dataHoldAt(3 * block, late), 0);
        EXPECT_EQ(late.dataPConst(), nullptr);
        EXPECT_EQ(file.fileClose(), 0);
        EXPECT_GE(cache.cacheSize(), block);
    }
    { // also when others cut the file short and it grows again, dirty or not
        for (bool const dirty : {true, false}) {
            nxFileMake("held.bin", content);
            NX_FileData file("held.bin", File::modeReadWrite);
            if (dirty) {
                EXPECT_EQ(file.dataWriteAt(0, content.data(), 5), 0);
            }
            EXPECT_EQ(file.dataHoldAt(0, held), static_cast<int>(block));
            std::filesystem::resize_file("held.bin", 3);
            EXPECT_GE(file.fileSize(), 3u);
            EXPECT_EQ(file.dataWriteAt(2 * block, "far", 3), 0);
            EXPECT_EQ(std::string(held.dataPConst(), held.dataSize()), content.substr(0, block));
        }
    }
    held = NX_FileDataPtr();
    EXPECT_EQ(std::string(copy.dataPConst(), copy.dataSize()), content.substr(100, block - 100));
    copy.dataDrop();
    EXPECT_EQ(NX_CacheManager::cacheManagerP()->cacheSize(), 0u);
}
