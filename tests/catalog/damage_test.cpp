// Damaged catalogues: whatever one byte does, loading ends with a tree or with a told error.
#include "examples/catalog/catalogue.h"
#include "tests/support/support.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace {

std::string smallCatalogue() {
    fs::create_directories("small/d");
    nxFileMake("small/a.txt", "a");
    nxFileMake("small/d/b.txt", "b");
    Catalogue catalogue;
    EXPECT_EQ(catalogue.dirRead("small"), 0);
    EXPECT_EQ(catalogue.fileSave("small.cat"), 0);
    fs::remove_all("small");
    return nxFileContent("small.cat");
}

// Loads what is in the file and walks over it. True: loaded.
bool loads(std::string const& content) {
    nxFileMake("damaged.cat", content);
    NxErrorOk();
    Catalogue catalogue;
    if (catalogue.fileLoad("damaged.cat") == -1) {
        int const num = NxErrorNum();
        EXPECT_TRUE(num == errorNumPersistText || num == errorNumPersistVersion) << num;
        NX_StringA const details = NxErrorBuf();
        EXPECT_NE(details.strStrFirst("F=damaged.cat"), NX_NO_INDEX);
        EXPECT_NE(details.strStrFirst(" P="), NX_NO_INDEX);
        return false;
    }
    NX_DirInfo const copy(catalogue.root()); // visits every record
    EXPECT_EQ(copy.strLen(), catalogue.root().strLen());
    return true;
}

TEST(Damage, EveryTruncationAndEveryChangedByteIsTold) {
    std::string const whole = smallCatalogue();
    ASSERT_TRUE(loads(whole));
    for (std::size_t at = 0; at < whole.size(); ++at) {
        EXPECT_FALSE(loads(whole.substr(0, at))) << "cut at " << at;
        for (char const byte : {'\0', '\n', ' ', '(', '0', '9', 'D', 'P', 'x', '-', '\x7f', '\xff'}) {
            std::string changed = whole;
            changed[at] = byte;
            EXPECT_EQ(loads(changed), changed == whole) << "byte " << int(byte) << " at " << at;
        }
    }
    NxErrorOk();
}

} // namespace
