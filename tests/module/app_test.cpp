// The application object: names, order of events, texts, temporary names, version check.
#include "general/error/errorman.h"
#include "general/error/log.h"
#include "general/module/app.h"
#include "general/platform/platform.h"
#include "general/process/thread.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

namespace {

NX_MainInfo infoOf(char const* program, NX_App** app = nullptr) {
    static char* arguments[2];
    arguments[0] = const_cast<char*>(program);
    return {app, 1, arguments, nullptr, nullptr};
}

struct Program : NX_App {
    explicit Program(char const* name = "testapp") : NX_App(infoOf(name)) {}
    int appInit() override {
        events += 'i';
        return NX_App::appInit();
    }
    int appMain() override {
        events += 'm';
        return 5;
    }
    void appUninit() override {
        events += 'u';
        NX_App::appUninit();
    }
    std::string events;
};

TEST(App, NamesAndRegistration) {
    NX_App* stored = nullptr;
    {
        NX_AppNull app(infoOf("C:\\dir\\tool.exe", &stored));
        EXPECT_TRUE(stored == &app && NxAppPDll() == &app);
        EXPECT_STREQ(app.appNameFull().dataPConst(), "C:\\dir\\tool.exe");
        EXPECT_STREQ(app.appResName().dataPConst(), "toolR");
        EXPECT_STREQ(app.appTitle().dataPConst(), "tool");
        EXPECT_EQ(app.appBegin(), 0);
        EXPECT_TRUE(NxThreadP() == app.appThreadP() && app.appThread().threadIsPrimary() == 1);
        app.appThreadP()->threadQuit(3);
        EXPECT_EQ(app.appThread().threadIsAlive(), 1) << "the primary thread does not quit";
    }
    EXPECT_TRUE(NxAppPDll() == nullptr && NxThreadP() == nullptr);
}

TEST(App, RunsInOrderAndSkipsMainWithoutItsLanguage) {
    Program app;
    EXPECT_EQ(app.appBegin(), 5);
    EXPECT_EQ(NxThreadP(), nullptr) << "appUninit took the primary thread out";
    EXPECT_EQ(app.appResLang("nolanguage.dll"), -1);
    EXPECT_EQ(app.appBegin(), -1);
    EXPECT_EQ(app.events, "imuiu");
    NxErrorOk();
}

TEST(App, BaseProgramIsAnAssertion) {
    EXPECT_ASSERTION(Program().NX_App::appMain(), "0", "general/module/app 210");
    EXPECT_ASSERTION(Program().appRun(), "0", "general/module/app 218");
}

TEST(App, TextsComeFromModuleLanguageAndProgram) {
    NX_StringA s("old");
    EXPECT_TRUE(s.strLoad(100) == -1 && s.strLen() == 0) << "no application";
    Program app;
    EXPECT_EQ(s.strLoad(100), 19);
    EXPECT_STREQ(s.dataPConst(), "text of the program");
    EXPECT_EQ(app.appResLang("testmodule.dll"), 1);
    EXPECT_EQ(s.strLoad(100), 18) << "the language module comes before the program";
    EXPECT_EQ(s.strLoad(101), 12) << "what it lacks the program has";
    EXPECT_TRUE(s.strLoad(NX_Dll(), 100) == 0 && s.strLen() == 0);

    NxErrorOk();
    EXPECT_EQ(s.strLoad(25100), -1);
    EXPECT_EQ(NxErrorIsOK(), 1) << "the message range records nothing";
    EXPECT_TRUE(s.strLoad(30000) == -1 && NxErrorNum() == errorNumStringNotFound);
    EXPECT_NE(NxErrorBuf().strStrFirst(" V=30000"), NX_NO_INDEX);

    static std::tuple<int, char const*> const rows[] = {
        {errorNumFileNotFound, "%(F): no such file, says the module"},
        {0x4801, "%(F): nothing left, says the program"},
        {errorNumDiskFull, "Disk full: try deleting unneeded files"},
        {0x4001, "%(E): Unknown error"},
        {0x8800, "%(E): Unknown error"},
    };
    for (auto const& [num, text] : rows)
        EXPECT_STREQ(app.appErrorString(num).dataPConst(), text) << num;
    NxERROR(errorNumFileNotFound);
    NxErrorBufFileName("a.txt");
    EXPECT_STREQ(NxErrorManP()->errorString().dataPConst(), "a.txt: no such file, says the module");
    NxErrorOk();
}

TEST(App, TheLibraryWorksBeforeAndAfter) {
    nxLogErase();
    NxLogPrint("no program yet");
    EXPECT_EQ(nxFileContent("quorix.log").find('?'), nxFileContent("quorix.log").find_first_not_of("\r\n"));
    { Program const app; }
    NxERROR(errorNumFileNotFound);
    NxErrorBufFileName("late.txt");
    EXPECT_STREQ(NxErrorManP()->errorString().dataPConst(), "late.txt: Not found: try correct name");
    NxErrorOk();
}

struct Late {
    ~Late() {
        NxERROR(errorNumFileNotFound);
        NxErrorLog("from a late destructor");
    }
};

// The object is made before anything of the library, so its end comes after all of the library's own.
int exitLate(int, char**) {
    static Late const late;
    return Program().appBegin();
}

NXS_ChildEntry const entry("exit-late", exitLate);

TEST(App, DestructorsAfterTheEndMayStillRecordAndLog) {
    nxLogErase();
    EXPECT_EQ(nxRunSelf("exit-late"), 5);
    EXPECT_NE(nxFileContent("quorix.log").find("Note: from a late destructor"), std::string::npos);
}

TEST(App, TheVersionMustMatch) {
    NX_MainInfo const info = infoOf("testapp");
    NX_BaseVersion version = NX_BASE_VERSION;
    {
        Program const app;
        EXPECT_EQ(NxBaseDllValidate(&version, &info), 0);
        EXPECT_EQ(NxAppPDll(), nullptr);
    }
    version.minor++;
    EXPECT_ERROR_ABORT(NxBaseDllValidate(&version, &info), errorNumLibVersion);
    EXPECT_NE(nxFileContent("quorix.log").find("VX7BASE: Version incompatible: correct and retry"),
              std::string::npos);
    version = NX_BASE_VERSION;
    version.text[0] = 'v';
    EXPECT_ERROR_ABORT(NxBaseDllValidate(&version, &info), errorNumLibVersion);
}

TEST(App, ItsDirectoryIsSearched) {
    ASSERT_TRUE(CreateDirectoryA("appdir", nullptr));
    nxFileMake("appdir/app.dat", "x");
    NX_StringA s("app.dat");
    EXPECT_EQ(s.nameFind("", 0), 0);
    Program const app("appdir\\tool.exe");
    EXPECT_TRUE(s.nameFind("", 0) == 1 && s.nameIsAbs());
}

TEST(App, TemporaryNames) {
    ASSERT_TRUE(CreateDirectoryA("tmp", nullptr));
    Program const app("bin/tool.exe");
    SetEnvironmentVariableA("TMP", "tmp");
    NX_StringA first;
    NX_StringA second;
    EXPECT_EQ(first.nameTmp("tmp"), 0);
    nxFileMake(first.dataPConst(), "");
    EXPECT_EQ(second.nameTmp(), 0);
    EXPECT_NE(first.strCompare(second, NX_CompareExact), 0);
    for (NX_StringA const* name : {&first, &second})
        EXPECT_EQ(name->nameWildCompare("tmp?tool.???", NX_CompareExact), 0) << *name;
    for (int i = 0; i < 1000; ++i) {
        first.strPrintF("tmp/tool.%03d", i);
        nxFileMake(first.dataPConst(), "");
    }
    EXPECT_TRUE(first.nameTmp("tmp") == -1 && NxErrorNum() == errorNumFileExists);
    EXPECT_STREQ(first.dataPConst(), "tmp/tool.999");
    NxErrorOk();
}

} // namespace
