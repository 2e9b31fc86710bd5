// Damaged files of resources: told as such, in bounded time and memory, whatever stands in them.
#include "tests/fuzz/peread.h"
#include "tests/module/restest.h"
#include "tests/support/support.h"

#include <filesystem>

namespace {

unsigned int sum;

long touch(std::string const& bytes) {
    return nxResTouch(nxBytes(bytes), bytes.size(), sum);
}

// Writes `value` as `width` bytes, lowest first.
void put(std::string& bytes, std::size_t at, unsigned int width, std::uint32_t value) {
    for (; width != 0; --width, value >>= 8)
        bytes[at++] = static_cast<char>(value);
}

// The seeds `narrow` and `wide` are modules with one resource: header at 64, its optional part at 88, section
// at 512 with the directories of types, ids and languages at 0, 24 and 48, the leaf at 72, the name at 96 and
// the bytes from 112 to 116, the section's end at 128; addresses from 0x1000 on.
TEST(ResDamage, EveryFieldThatSaysWhere) {
    struct Row {
        char const* file;
        std::size_t at;
        unsigned int width;
        std::uint32_t value;
        long qty;
    };
    constexpr std::size_t rsrc = 512;
    constexpr std::uint32_t sub = 0x80000000;
    static constexpr Row rows[] = {
        {"narrow", 60, 4, 0xFFFFFFF0, -1},     // the header behind the end
        {"narrow", 70, 2, 97, -1},             // more sections than a loader takes
        {"narrow", 70, 2, 0, -1},              // resources in no section
        {"narrow", 84, 2, 0xFFFF, -1},         // optional header past the end
        {"narrow", 84, 2, 0, -1},              // none at all
        {"narrow", 88, 2, 0x107, -1},          // neither narrow nor wide
        {"narrow", 88 + 92, 4, 2, 0},          // too few pairs to name resources
        {"narrow", 88 + 112, 4, 0, 0},         // none
        {"narrow", 88 + 112, 4, 0x107F, -1},   // a directory cut off by the section's end
        {"wide", 88 + 128, 4, 0xFFFFFFFF, -1}, // outside all sections
        {"wide", 328 + 16, 4, 0xFFFFFFFF, 1},  // a section longer than the file, but what counts is there
        {"wide", 328 + 20, 4, 0xFFFFFFF0, -1}, // one that begins behind it
        {"wide", 328 + 12, 4, 0xFFFFFFF0, -1}, // its address at the end of all addresses
        {"narrow", rsrc + 14, 2, 0xFFFF, -1},  // entries past the end
        {"narrow", rsrc + 12, 2, 1, -1},       // the directory of ids taken for an entry
        {"narrow", rsrc + 16, 4, 0x10000, -1}, // a number of 17 bits
        {"narrow", rsrc + 20, 4, sub | 0, -1}, // types within types
        {"narrow", rsrc + 20, 4, 72, -1},      // a leaf among the types
        {"narrow", rsrc + 20, 4, sub | 0x7FFFFFFF, -1},
        {"narrow", rsrc + 24 + 16, 4, sub | 127, -1}, // a name cut off
        {"narrow", rsrc + 48 + 16, 4, sub | 96, -1},  // a language with a name
        {"narrow", rsrc + 48 + 20, 4, sub | 72, -1},  // no leaf among the languages
        {"narrow", rsrc + 48 + 20, 4, 113, -1},       // a leaf cut off
        {"narrow", rsrc + 48 + 20, 4, 16, -1},        // one that is something else
        {"narrow", rsrc + 72, 4, 0xFFFFFFFE, -1},     // bytes that would wrap around
        {"narrow", rsrc + 72, 4, 0xFFF, -1},          // in front of the section
        {"narrow", rsrc + 76, 4, 16, 1},              // up to its end
        {"narrow", rsrc + 76, 4, 17, -1},
        {"narrow", rsrc + 76, 4, 0xFFFFFFFF, -1},
        {"narrow", rsrc + 96, 2, 15, 1}, // a name up to the end
        {"narrow", rsrc + 96, 2, 16, -1},
        {"two.ico", 4, 2, 0, -1},
        {"two.ico", 4, 2, 0xFFFF, -1},
        {"two.ico", 6 + 8, 4, 0, -1},
        {"two.ico", 6 + 8, 4, 169, -1}, // one byte of it is in the next image
        {"two.ico", 6 + 12, 4, 37, -1}, // begins in the list
        {"two.ico", 22 + 12, 4, 207, -1},
        {"spot.cur", 6 + 8, 4, 0xFFFFFFFF, -1},
        {"spot.cur", 6 + 12, 4, 0xFFFFFFFF, -1},
        {"gap.bmp", 10, 4, 133, -1}, // pixels behind the end
        {"gap.bmp", 10, 4, 132, 1},
        {"gap.bmp", 10, 4, 117, -1}, // inside the colours
        {"gap.bmp", 10, 4, 0, -1},
        {"gap.bmp", 14, 4, 0xFFFFFFFF, -1}, // header
        {"gap.bmp", 14, 4, 11, -1},
        {"gap.bmp", 46, 4, 17, -1}, // more colours than four bits tell apart
        {"gap.bmp", 46, 4, 0x40000001, -1},
    };
    for (Row const& row : rows) {
        std::string bytes =
            nxFileContent(nxResTestPath((std::string("corpus/pe/") + row.file).c_str()).c_str());
        ASSERT_GT(touch(bytes), 0) << row.file;
        put(bytes, row.at, row.width, row.value);
        EXPECT_EQ(touch(bytes), row.qty) << row.file << ' ' << row.at << ' ' << row.value;
    }
}

// Entries that share a directory, and names that lie in each other, would make a few bytes a long list.
TEST(ResDamage, NoListOutgrowsItsFile) {
    constexpr std::uint32_t qty = 0x4000;
    constexpr std::uint32_t size = 16 + 8 * qty;
    constexpr std::uint32_t sub = 0x80000000;
    std::string bytes = nxFileContent(nxResTestPath("corpus/pe/wide").c_str()).substr(0, 512);
    put(bytes, 328 + 16, 4, 4 * size);
    bytes.resize(512 + 4 * size);
    for (std::uint32_t level = 0; level < 3; ++level) {
        std::size_t const directory = 512 + level * size;
        put(bytes, directory + 14, 2, qty);
        for (std::uint32_t n = 0; n < qty; ++n) {
            put(bytes, directory + 16 + 8 * n, 4, n);
            put(bytes, directory + 20 + 8 * n, 4, level == 2 ? 3 * size : sub | (level + 1) * size);
        }
    }
    EXPECT_EQ(touch(bytes), -1) << "one directory for all entries of the level above";

    // One type; each id has a name that begins two bytes behind the one before; one language for all.
    put(bytes, 512 + 14, 2, 1);
    put(bytes, 512 + 2 * size + 14, 2, 1);
    for (std::uint32_t n = 0; n < qty; ++n) {
        put(bytes, 512 + size + 16 + 8 * n, 4, sub | (3 * size + 16 + 2 * n));
        put(bytes, 512 + 3 * size + 16 + 2 * n, 2, 16);
    }
    EXPECT_EQ(touch(bytes), qty) << "names may share their bytes";
    for (std::uint32_t n = 0; n < qty; ++n)
        put(bytes, 512 + 3 * size + 16 + 2 * n, 2, 0x1000);
    EXPECT_EQ(touch(bytes), -1) << "within limits";
}

// Also what the fuzzer has found.
TEST(ResDamage, EveryCutAndEveryChangedByte) {
    std::vector<std::string> files = {nxResTestPath("resources.dll")};
    for (auto const& file : std::filesystem::directory_iterator(nxResTestPath("corpus/pe")))
        files.push_back(file.path().string());
    ASSERT_GT(files.size(), 6u);
    for (std::string const& file : files) {
        std::string const whole = nxFileContent(file.c_str());
        long const most = 2 * std::abs(touch(whole)) + 2;
        nxDamageEach(whole, [&](std::string const& bytes, std::size_t at) {
            long const qty = touch(bytes);
            ASSERT_TRUE(qty >= -1 && qty <= most) << file << ' ' << at << ' ' << qty;
        });
    }
}

} // namespace
