// tests/module/stringapp_test.cpp - what the string asks the application: resources, directory, temporary
// names.
#include "general/error/errorman.h"
#include "general/module/app.h"
#include "general/platform/platform.h"
#include "tests/support/support.h"

namespace {

struct Program {
    explicit Program(char const* name) : arguments{const_cast<char*>(name), nullptr} {}

    char* arguments[2];
    NX_AppNull app{NX_MainInfo{nullptr, 1, arguments, nullptr, nullptr}};
};

TEST(StringApp, resourceTexts) {
    NX_StringA s("old");
    EXPECT_EQ(-1, s.strLoad(100)); // without an application
    EXPECT_STREQ("", s.dataPConst());
    Program const program("tool");
    EXPECT_EQ(19, s.strLoad(100));
    EXPECT_STREQ("text of the program", s.dataPConst());
    NX_ResLib lib;
    EXPECT_EQ(1, lib.resLibOpen("testmodule.dll", resLibTypeDll));
    EXPECT_EQ(18, s.strLoad(lib, 100));
    EXPECT_STREQ("text of the module", s.dataPConst());
    EXPECT_TRUE(s.strLoad(lib, 1) == 0 && *s.dataPConst() == 0);
}

TEST(StringApp, applicationDirectoryIsSearched) {
    ASSERT_TRUE(CreateDirectoryA("appdir", nullptr));
    nxFileMake("appdir/app.dat", "x");
    NX_StringA s("app.dat");
    EXPECT_EQ(0, s.nameFind("", 0));
    Program const program("appdir\\tool.exe");
    EXPECT_EQ(1, s.nameFind("", 0));
    EXPECT_TRUE(s.nameIsAbs());
}

TEST(StringApp, temporaryNames) {
    ASSERT_TRUE(CreateDirectoryA("tmp", nullptr));
    Program const program("bin/tool.exe");
    SetEnvironmentVariableA("TMP", "tmp");
    NX_StringA first;
    NX_StringA second;
    EXPECT_EQ(0, first.nameTmp("tmp"));
    nxFileMake(first.dataPConst(), "");
    EXPECT_EQ(0, second.nameTmp());
    EXPECT_NE(0, first.strCompare(second, NX_CompareExact));
    for (NX_StringA const* name : {&first, &second})
        EXPECT_EQ(0, name->nameWildCompare("tmp?tool.???", NX_CompareExact)) << *name;
    for (int i = 0; i < 1000; ++i) {
        first.strPrintF("tmp/tool.%03d", i);
        nxFileMake(first.dataPConst(), "");
    }
    EXPECT_TRUE(first.nameTmp("tmp") == -1 && NxErrorNum() == errorNumFileExists);
    EXPECT_STREQ("tmp/tool.999", first.dataPConst());
    NxErrorOk();
}

} // namespace
