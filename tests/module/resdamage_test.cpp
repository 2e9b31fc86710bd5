// Damaged files of resources: told as such, in bounded time and memory, whatever stands in them.
#include "tests/fuzz/peread.h"
#include "tests/module/restest.h"

#include <filesystem>
#include <sstream>

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
    // File, part of it and place there, bytes, value, how many resources there are then:
    // - the header behind the end; more sections than a loader takes, or none with resources; the optional
    //   part past the end, missing, neither narrow nor wide; too few pairs to name resources; none; a
    //   directory cut off by its section's end;
    // - a directory outside all sections; a section longer than the file, but what counts is there; one that
    //   begins behind it; its address at the end of all addresses;
    // - entries past the end; the directory of ids taken for one; a number of 17 bits; types within types; a
    //   leaf among the types; a directory far behind;
    // - a name cut off; a language with a name; no leaf among the languages, one cut off, one that is
    //   something else;
    // - bytes that would wrap around, in front of the section, up to its end, past it; so a name;
    // - no images, too many; none in the first, one byte of it in the next, its begin in the list; the second
    //   cut; two sizes that wrap;
    // - pixels behind the end, at it, inside the colours, at 0; a header too long, too short; more colours
    //   than four bits tell apart, and so many that they wrap.
    std::istringstream rows(R"(
        narrow 0 60 4 0xFFFFFFF0 -1      narrow 0 70 2 97 -1              narrow 0 70 2 0 -1
        narrow 0 84 2 0xFFFF -1          narrow 0 84 2 0 -1               narrow 0 88 2 0x107 -1
        narrow 88 92 4 2 0               narrow 88 112 4 0 0              narrow 88 112 4 0x107F -1
        wide 88 128 4 0xFFFFFFFF -1      wide 328 16 4 0xFFFFFFFF 1       wide 328 20 4 0xFFFFFFF0 -1
        wide 328 12 4 0xFFFFFFF0 -1
        narrow 512 14 2 0xFFFF -1        narrow 512 12 2 1 -1             narrow 512 16 4 0x10000 -1
        narrow 512 20 4 0x80000000 -1    narrow 512 20 4 72 -1            narrow 512 20 4 0xFFFFFFFF -1
        narrow 512 40 4 0x8000007F -1    narrow 512 64 4 0x80000060 -1    narrow 512 68 4 0x80000048 -1
        narrow 512 68 4 113 -1           narrow 512 68 4 16 -1
        narrow 512 72 4 0xFFFFFFFE -1    narrow 512 72 4 0xFFF -1         narrow 512 76 4 16 1
        narrow 512 76 4 17 -1            narrow 512 76 4 0xFFFFFFFF -1    narrow 512 96 2 15 1
        narrow 512 96 2 16 -1
        two.ico 0 4 2 0 -1               two.ico 0 4 2 0xFFFF -1          two.ico 6 8 4 0 -1
        two.ico 6 8 4 169 -1             two.ico 6 12 4 37 -1             two.ico 22 12 4 207 -1
        spot.cur 6 8 4 0xFFFFFFFF -1     spot.cur 6 12 4 0xFFFFFFFF -1
        gap.bmp 0 10 4 133 -1            gap.bmp 0 10 4 132 1             gap.bmp 0 10 4 117 -1
        gap.bmp 0 10 4 0 -1              gap.bmp 14 0 4 0xFFFFFFFF -1     gap.bmp 14 0 4 11 -1
        gap.bmp 14 32 4 17 -1            gap.bmp 14 32 4 0x40000001 -1 )");
    rows.unsetf(std::ios::basefield);
    int tried = 0;
    std::string file;
    std::uint32_t part = 0, at = 0, width = 0, value = 0;
    for (long qty = 0; rows >> file >> part >> at >> width >> value >> qty; ++tried) {
        std::string bytes = nxResTestFile(("corpus/pe/" + file).c_str());
        ASSERT_GT(touch(bytes), 0) << file;
        put(bytes, part + at, width, value);
        EXPECT_EQ(touch(bytes), qty) << file << ' ' << part << ' ' << at << ' ' << value;
    }
    EXPECT_EQ(tried, 47);
}

// Entries that share a directory, and names that lie in each other, would make a few bytes a long list.
TEST(ResDamage, NoListOutgrowsItsFile) {
    constexpr std::uint32_t qty = 0x4000, size = 16 + 8 * qty, rsrc = 512, sub = 0x80000000;
    std::string bytes = nxResTestFile("corpus/pe/wide").substr(0, rsrc);
    put(bytes, 328 + 16, 4, 4 * size);
    bytes.resize(rsrc + 4 * size);
    for (std::uint32_t level = 0; level < 3; ++level) {
        std::uint32_t const directory = rsrc + level * size;
        put(bytes, directory + 14, 2, qty);
        for (std::uint32_t n = 0; n < qty; ++n) {
            put(bytes, directory + 16 + 8 * n, 4, n);
            put(bytes, directory + 20 + 8 * n, 4, level == 2 ? 3 * size : sub | (level + 1) * size);
        }
    }
    EXPECT_EQ(touch(bytes), -1) << "one directory for all entries of the level above";

    // One type; each id has a name that begins two bytes behind the one before; one language for all.
    for (std::uint32_t const directory : {rsrc, rsrc + 2 * size})
        put(bytes, directory + 14, 2, 1);
    for (std::uint32_t const length : {16u, 0x1000u}) {
        for (std::uint32_t n = 0; n < qty; ++n) {
            put(bytes, rsrc + size + 16 + 8 * n, 4, sub | (3 * size + 16 + 2 * n));
            put(bytes, rsrc + 3 * size + 16 + 2 * n, 2, length);
        }
        EXPECT_EQ(touch(bytes), length == 16 ? long{qty} : -1) << "names may share bytes, within limits";
    }
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
