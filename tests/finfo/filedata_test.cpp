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
constexpr unsigned int block = 16384;

std::string text(unsigned int size, unsigned int seed) {
    std::string made(size, '\0');
    for (char& c : made)
        c = static_cast<char>('a' + (seed = seed * 1103515245 + 12345) / 65536 % 26);
    return made;
}

// What there is of these bytes.
std::string readAt(NX_FileData& file, unsigned int pos, unsigned int size) {
    std::string bytes(size, '?');
    int const got = file.dataReadAtEOF(static_cast<long>(pos), bytes.data(), size);
    EXPECT_GE(got, 0);
    return bytes.substr(0, static_cast<unsigned int>(got));
}

int writeAt(auto&& file, unsigned int pos, std::string const& bytes) {
    return file.dataWriteAt(static_cast<long>(pos), bytes.data(), nxSize(bytes));
}

std::string heldBy(NX_FileDataPtr const& held) {
    return {held.dataPConst(), held.dataPConst() + held.dataSize()};
}

// Random operations on one file, through two cached handles and one that only writes, beside a string.
void modelRun(unsigned int budget, unsigned int seed) {
    std::mt19937 random(seed);
    auto const below = [&](unsigned int most) { return static_cast<unsigned int>(random() % most); };
    NX_Cache cache(budget);
    std::string model;
    nxFileMake("model.bin", model);
    std::unique_ptr<NX_FileData> files[3];
    auto const opened = [&](unsigned int n) {
        File::OpenMode const mode = n == 2 ? File::modeWrite : File::modeReadWrite;
        return std::make_unique<NX_FileData>("model.bin", mode, &cache);
    };
    for (unsigned int n = 0; n < 3; ++n)
        files[n] = opened(n);
    NX_FileDataPtr held;
    std::string heldText;
    std::string buffer(3 * block, '\0');
    for (int step = 0; step < 1500; ++step) {
        SCOPED_TRACE(testing::Message() << "budget " << budget << " seed " << seed << " step " << step);
        NX_FileData& file = *files[below(2)];
        unsigned int const any = below(3);
        unsigned int const pos = below(8) == 0 ? below(12) * block : below(12 * block);
        unsigned int const size = below(4) == 0 ? below(3 * block) + 1 : below(300) + 1;
        std::string const there = pos < model.size() ? model.substr(pos, size) : "";
        unsigned int const what = below(20);
        if (what < 6) {
            std::string const bytes = text(size, below(1000000));
            ASSERT_EQ(writeAt(*files[any], pos, bytes), 0);
            if (model.size() < pos + size)
                model.resize(pos + size);
            model.replace(pos, size, bytes);
        } else if (what == 6) {
            ASSERT_EQ(below(40) == 0 ? file.fileFlush() : cache.cacheWrite(), 0);
            ASSERT_EQ(nxFileContent("model.bin"), model);
        } else if (what == 7) {
            file.dataForget();
        } else if (what == 8) {
            cache.cacheFlush();
        } else if (what == 9) {
            ASSERT_EQ(files[any]->fileSize(), model.size());
        } else if (what == 10) { // another handle comes, and one goes
            auto made = opened(any);
            ASSERT_EQ(files[any]->fileClose(), 0);
            files[any] = std::move(made);
        } else if (what < 13) {
            ASSERT_EQ(heldBy(held), heldText);
            heldText = pos < model.size() ? model.substr(pos, block - pos % block) : "";
            ASSERT_EQ(file.dataHoldAt(static_cast<long>(pos), held), static_cast<int>(heldText.size()));
        } else if (what < 16) {
            ASSERT_EQ(readAt(file, pos, size), there);
        } else {
            int const result = there.size() == size ? 0 : -1;
            ASSERT_EQ(file.dataReadAt(static_cast<long>(pos), buffer.data(), size), result);
            ASSERT_EQ(buffer.substr(0, there.size()), there);
        }
        // Beyond the budget there is at most what is held, and a copy of it.
        ASSERT_LE(cache.cacheSize(), budget / block * block + 2 * block);
    }
    for (auto& file : files)
        ASSERT_EQ(file->fileClose(), 0);
    EXPECT_EQ(nxFileContent("model.bin"), model);
    EXPECT_EQ(heldBy(held), heldText);
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
    std::tuple<char const*, File::OpenMode> const table[] = {
        {"open.txt", File::modeRead},
        {"open.txt", File::modeWrite},
        {"open.txt", File::modeReadWrite | File::modeExclusive},
        {"open.txt", File::modeReadDenyWrite},
        {"missing.txt", File::modeRead},
        {"opendir", File::modeRead},
        {"nodir/x", File::modeWrite | File::modeCreate}};
    for (auto const& [name, mode] : table) {
        SCOPED_TRACE(std::string(name) + " " + std::to_string(mode));
        // Each step on a plain and on a cached file: result, error number, details.
        auto const steps = [&](auto& file) {
            char buffer[16] = {};
            std::string told;
            auto const tell = [&](long result) {
                told += std::to_string(result) + "/" + std::to_string(NxErrorNum()) + "/" +
                        std::to_string(file.errorNum()) + "/" +
                        (NxErrorNum() != 0 ? NxErrorBuf().dataPConst() : "") + "\n";
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
        auto plainFile = std::make_unique<File>(name, mode);
        std::string const plain = steps(*plainFile);
        plainFile.reset();
        NX_FileData file(name, mode);
        EXPECT_EQ(steps(file), plain);
        NX_FileDataPtr held;
        EXPECT_EQ(file.dataHoldAt(0, held), -1);
    }
}

TEST(FileData, SharesByFileAndForgetsOnDemand) {
    constexpr unsigned int end = 2 * block;
    nxFileMake("share.bin", text(end, 1));
    std::filesystem::create_directory("sharedir");
    NX_FileData one("share.bin", File::modeReadWrite);
    NX_FileData two("sharedir/../share.bin", File::modeRead);
    NX_Cache other;
    NX_FileData apart("share.bin", File::modeRead, &other);
    std::string const before = readAt(apart, 10, 3);
    EXPECT_EQ(writeAt(one, 10, "new"), 0);
    EXPECT_EQ(readAt(two, 10, 3), "new");
    EXPECT_EQ(nxFileContent("share.bin").substr(10, 3), before);
    EXPECT_EQ(one.fileClose(), 0);
    EXPECT_EQ(nxFileContent("share.bin").substr(10, 3), "new");
    EXPECT_EQ(readAt(apart, 10, 3), before); // another cache
    NX_FileDataPtr held;
    EXPECT_GT(apart.dataHoldAt(10, held), 0);
    apart.dataForget();
    EXPECT_EQ(readAt(apart, 10, 3), "new");
    EXPECT_EQ(heldBy(held).substr(0, 3), before);

    // What others append is seen at the end; what they cut off as well.
    EXPECT_EQ(readAt(two, end - 2, 8).size(), 2u);
    EXPECT_EQ(writeAt(File("share.bin", File::modeWrite), end, "tail"), 0);
    EXPECT_EQ(readAt(two, end - 2, 8).substr(2), "tail");
    EXPECT_EQ(writeAt(File("share.bin", File::modeWrite), end + 4, "more"), 0);
    EXPECT_EQ(two.fileSize(), end + 8);
    char buffer[7] = {};
    EXPECT_EQ(two.dataReadAt(end + 2, buffer, 6), 0);
    EXPECT_STREQ(buffer, "ilmore");
    std::filesystem::resize_file("share.bin", 100);
    EXPECT_EQ(two.fileSize(), 100u);
    EXPECT_EQ(readAt(two, 98, 8).size(), 2u);
    nxFileMake("share.bin", std::string(end, '2'));
    EXPECT_EQ(readAt(two, end - 2, 2), "22"); // nothing of the time before

    // A block that has been changed outlives the cutting off of its end.
    NX_FileData writer("share.bin", File::modeReadWrite, &other);
    writer.dataForget();
    EXPECT_EQ(writeAt(writer, 10, "x"), 0);
    std::filesystem::resize_file("share.bin", 12);
    EXPECT_EQ(writer.fileSize(), 12u);
    EXPECT_EQ(writeAt(writer, 14, "y"), 0);
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
        EXPECT_EQ(writeAt(file, pos, "WXYZ"), 0);
        expected.replace(pos, 4, "WXYZ");
    }
    EXPECT_EQ(file.fileClose(), 0);
    EXPECT_EQ(nxFileContent("grown.bin"), expected);
}

TEST(FileData, EmptyingDropsWhatIsNotWritten) {
    nxFileMake("trunc.bin", text(3 * block, 2));
    std::string const left = std::string(5, '\0') + "x";
    NX_FileData one("trunc.bin", File::modeReadWrite);
    EXPECT_EQ(writeAt(one, block, "unwritten"), 0);
    {
        NX_FileData two("trunc.bin", File::modeWrite | File::modeTrunc);
        EXPECT_EQ(one.fileSize(), 0u);
        EXPECT_EQ(writeAt(two, 5, "x"), 0);
        EXPECT_EQ(readAt(one, 0, 8), left);
    }
    EXPECT_EQ(one.fileClose(), 0);
    EXPECT_EQ(nxFileContent("trunc.bin"), left);
}

TEST(FileData, FarPositionsTakeLittleRoom) {
    nxFileMake("far.bin", "");
    {
        NX_Cache cache(4 * block);
        NX_FileData file("far.bin", File::modeReadWrite, &cache);
        EXPECT_EQ(writeAt(file, 0x7FFFFFFC, "edge"), 0);
        EXPECT_EQ(writeAt(file, 0x7FFFFFFE, "over"), 0); // goes on past the last position
        EXPECT_EQ(file.fileSize(), 0x80000002u);
        EXPECT_EQ(readAt(file, 0x7FFFFFFC, 6), "edover");
        EXPECT_EQ(readAt(file, 0x7FFFFFFF, 8), "ver");
        EXPECT_EQ(readAt(file, 0x40000000, 8), std::string(8, '\0'));
        EXPECT_EQ(file.fileFlush(), 0);
    }
    EXPECT_EQ(std::filesystem::file_size("far.bin"), 0x80000002u);
    std::filesystem::remove("far.bin");
}

TEST(FileData, HeldBytesOutliveEverything) {
    std::string const content = text(3 * block, 3);
    std::string const changed = "changed by a writer";
    nxFileMake("held.bin", content);
    NX_FileDataPtr held;
    NX_FileDataPtr copy;
    {
        NX_Cache cache(block);
        NX_FileData file("held.bin", File::modeReadWrite, &cache);
        EXPECT_EQ(file.dataHoldAt(100, held), static_cast<int>(block) - 100);
        copy = held;
        EXPECT_EQ(writeAt(file, 90, changed), 0);
        for (unsigned int const pos : {2 * block, block, 90u})
            EXPECT_EQ(readAt(file, pos, 19), pos == 90 ? changed : content.substr(pos, 19));
        NX_FileDataPtr late;
        EXPECT_EQ(file.dataHoldAt(90, late), static_cast<int>(block) - 90);
        EXPECT_EQ(heldBy(late).substr(0, 19), changed);
        EXPECT_EQ(file.dataHoldAt(3 * block, late), 0);
        EXPECT_EQ(late.dataPConst(), nullptr);
        EXPECT_EQ(file.fileClose(), 0);
        EXPECT_GE(cache.cacheSize(), block);
    }
    // Also when others cut the file short and it grows again, dirty or not.
    for (bool const dirty : {true, false}) {
        nxFileMake("held.bin", content);
        NX_FileData file("held.bin", File::modeReadWrite);
        EXPECT_EQ(dirty ? writeAt(file, 0, content.substr(0, 5)) : 0, 0);
        EXPECT_EQ(file.dataHoldAt(0, held), static_cast<int>(block));
        std::filesystem::resize_file("held.bin", 3);
        EXPECT_GE(file.fileSize(), 3u);
        EXPECT_EQ(writeAt(file, 2 * block, "far"), 0);
        EXPECT_EQ(heldBy(held), content.substr(0, block));
    }
    held = NX_FileDataPtr();
    EXPECT_EQ(heldBy(copy), content.substr(100, block - 100));
    copy.dataDrop();
    EXPECT_EQ(NX_CacheManager::cacheManagerP()->cacheSize(), 0u);
}
