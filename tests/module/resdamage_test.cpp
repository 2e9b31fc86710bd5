// Damaged files of resources: told as such, in bounded time and memory, whatever stands in them.
#include "tests/fuzz/peread.h"
#include "tests/module/restest.h"
#include "tests/support/support.h"

#include <filesystem>

namespace {

unsigned int sum;

long touch(std::string const& bytes) {
    return nxResTouch(reinterpret_cast<unsigned char const*>(bytes.data()), bytes.size(), sum);
}

TEST(ResDamage, EveryCutAndEveryChangedByte) {
    for (char const* name : {"resources.dll", "two.ico", "spot.cur", "gap.bmp"}) {
        std::string const whole = nxFileContent(nxResTestPath(name).c_str());
        long const qty = touch(whole);
        ASSERT_GT(qty, 0) << name;
        for (std::size_t size = 0; size < whole.size(); ++size)
            ASSERT_GE(touch(whole.substr(0, size)), -1) << name << size;
        std::string bytes = whole;
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            for (int const change : {0x01, 0x80, 0xFF}) {
                bytes[at] = static_cast<char>(whole[at] ^ change);
                ASSERT_LE(touch(bytes), 2 * qty) << name << at;
            }
            bytes[at] = whole[at];
        }
    }
}

TEST(ResDamage, InputsThatOnceWereHard) {
    int files = 0;
    for (auto const& file : std::filesystem::directory_iterator(nxResTestPath("corpus/pe"))) {
        EXPECT_GE(touch(nxFileContent(file.path().string().c_str())), -1) << file.path().string();
        ++files;
    }
    EXPECT_GT(files, 0);
}

} // namespace
