// The application object: names, order of events, texts, memory shortage, version check.
#include "general/error/errorman.h"
#include "general/error/log.h"
#include "general/module/app.h"
#include "general/process/thread.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

#include <string>
#include <tuple>

namespace {

char programName[] = "C:\\dir\\tool.exe";
char testName[] = "testapp";
char* programArgs[] = {programName, nullptr};
char* testArgs[] = {testName, nullptr};

NX_MainInfo infoOf(char** args, NX_App** app = nullptr) {
    return {app, 1, args, nullptr, nullptr};
}

struct Recorder : NX_App {
    explicit Recorder(char const* language = "") : NX_App(infoOf(testArgs)) {
        if (*language != 0)
            appResLang(language);
    }
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
        NX_AppNull app(infoOf(programArgs, &stored));
        EXPECT_TRUE(stored == &app && NxAppPDll() == &app);
        EXPECT_STREQ(app.appNameFull().dataPConst(), programName);
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
    {
        Recorder app;
        EXPECT_EQ(app.appBegin(), 5);
        EXPECT_EQ(app.events, "imu");
        EXPECT_EQ(NxThreadP(), nullptr) << "appUninit took the primary thread out";
    }
    {
        Recorder app("nolanguage.dll");
        NxErrorOk();
        EXPECT_EQ(app.appBegin(), -1);
        EXPECT_EQ(app.events, "iu");
    }
    NxErrorOk();
}

TEST(App, BaseProgramIsAnAssertion) {
    struct Bare : NX_App {
        Bare() : NX_App(infoOf(testArgs)) {}
    };
    EXPECT_ASSERTION(Bare().appMain(), "0", "general/module/app 210");
    EXPECT_ASSERTION(Bare().appRun(), "0", "general/module/app 218");
}

TEST(App, TextsComeFromModuleLanguageAndProgram) {
    Recorder app;
    char text[64];
    EXPECT_EQ(app.resTextLoad(text, sizeof text, 100), 19);
    EXPECT_STREQ(text, "text of the program");
    EXPECT_EQ(app.appResLang("testmodule.dll"), 1);
    EXPECT_EQ(app.resTextLoad(text, sizeof text, 100), 18) << "the language module comes before the program";
    EXPECT_EQ(app.resTextLoad(text, sizeof text, 101), 12) << "what it lacks the program has";

    NxErrorOk();
    EXPECT_EQ(app.resTextLoad(text, sizeof text, 25100), -1);
    EXPECT_EQ(NxErrorIsOK(), 1) << "the message range records nothing";
    EXPECT_TRUE(app.resTextLoad(text, sizeof text, 30000) == -1 && NxErrorNum() == errorNumStringNotFound);
    EXPECT_NE(NxErrorBuf().strStrFirst(" V=30000"), NX_NO_INDEX);
    NxErrorOk();
}

TEST(App, MessageTemplatesInOrder) {
    Recorder app;
    app.appResLang("testmodule.dll");
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
    { NX_AppNull const app(infoOf(programArgs)); }
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
    return NX_AppNull(infoOf(testArgs)).appBegin();
}

NXS_ChildEntry const entry("exit-late", exitLate);

TEST(App, DestructorsAfterTheEndMayStillRecordAndLog) {
    nxLogErase();
    EXPECT_EQ(nxRunSelf("exit-late"), 0);
    EXPECT_NE(nxFileContent("quorix.log").find("Note: from a late destructor"), std::string::npos);
}

TEST(Validate, MatchAndMismatch) {
    NX_MainInfo const info = infoOf(testArgs);
    NX_BaseVersion version = NX_BASE_VERSION;
    {
        NX_AppNull const app(info);
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

} // namespace
