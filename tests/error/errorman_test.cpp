// The stack of managers, raising, the writers' words, the log entries, retries and the abort.
#include <sstream>

#include "general/error/errorman.h"
#include "general/process/timer.h"
#include "tests/support/support.h"

namespace {

// The tests' main thread has no object: what its errors record goes to the process-wide manager.
class ErrorMan : public ::testing::Test {
protected:
    void SetUp() override {
        NxErrorOk();
        nxLogErase();
    }
    void TearDown() override { NxErrorOk(); }

    static bool endsWith(NX_StringA const& text, char const* end) {
        return std::string(text.dataPConst()).ends_with(end);
    }
};

TEST_F(ErrorMan, RaisingRecordsAndReturnsFailure) {
    NxErrorTypeOfSys(5);
    EXPECT_EQ(NxERROR(errorNumSystem), -1);
    EXPECT_STREQ(NxErrorBuf().dataPConst(), "E=580 S=5");
    EXPECT_EQ(NxERROR(errorNumSystem, "f.cpp", 9), -1);
    EXPECT_STREQ(NxErrorBuf().dataPConst(), "E=580 c=f.cpp,9 S=5");
    EXPECT_TRUE(NxErrorOrOK() == -1 && NxErrorOk() == 0 && NxErrorOrOK() == 0);
    EXPECT_EQ(nxFileContent("quorix.log"), "");
    { NX_ErrorMan const scope(NX_ErrorManSysReset); }
    NxERROR(errorNumSystem);
    EXPECT_STREQ(NxErrorBuf().dataPConst(), "E=580 S=0");
    NX_Error own(0);
    EXPECT_EQ(own.errorERROR(12489), -1);
    EXPECT_TRUE(own.errorNumResId() == 25201 && NxErrorNum() == 12489 && endsWith(NxErrorBuf(), "E=201"));
}

TEST_F(ErrorMan, WinErrorsAreLoggedAtOnceAndRepeatTheNumber) {
    EXPECT_EQ(NxWinERRORSys(14547, 2), -1);
    EXPECT_STREQ(NxErrorBuf().dataPConst(), "E=211 S=14547");
    EXPECT_NE(nxFileContent("quorix.log").find("E=211 S=14547"), std::string::npos);
    NxErrorTypeOfSys(5);
    NxWinERROR(21060);
    EXPECT_STREQ(NxErrorBuf().dataPConst(), "E=580"); // no system code here
    NxWinERRORSys(14547, 0, "f", 3);
    EXPECT_STREQ(NxErrorBuf().dataPConst(), "E=211 c=f,3");
}

TEST_F(ErrorMan, ScopesMergeWhatFailed) {
    NX_ErrorMan outer;
    {
        NX_ErrorMan inner; // without an object of the thread, all scopes lie on the process-wide manager
        EXPECT_EQ(inner.errorParentP(), NxErrorManP());
        inner.errorBufErrorNum(10440);
        inner.errorBufFileName("one");
        inner.errorOk(); // it succeeded after all
        NxErrorOk();
    }
    EXPECT_TRUE(NxErrorIsOK() == 1 && !endsWith(NxErrorManP()->errorBuf(100), "F=one"));
    {
        NX_ErrorMan inner;
        inner.errorBufErrorNum(12489);
        inner.errorBufFileName("two");
        NxErrorOk();
        inner.errorMerge(); // the number stays, the words have gone up
        EXPECT_TRUE(inner.errorNum() == 12489 && inner.errorBuf(100).strLen() == 0);
        EXPECT_TRUE(NxErrorManP()->errorNum() == 12489 && NxErrorNum() == 12489);
    }
    EXPECT_TRUE(endsWith(NxErrorManP()->errorBuf(100), "E=201 F=two"));
}

TEST_F(ErrorMan, LogEntries) {
    NX_ErrorMan man;
    man.errorBufErrorNum(8402);
    man.errorBufFileName("x");
    man.errorLog(nullptr);
    man.errorLog("a note");
    man.errorLog(nullptr, "f.cpp", 12);
    man.errorLog("a note", "f.cpp", 12);
    man.errorOk();
    std::string log = nxFileContent("quorix.log");
    std::erase(log, '\r');
    std::string const message = "Error: x: Already exists: try correct name\n", buf = "  Buf: E=210 F=x\n";
    std::string const expected[] = {message + buf, message + " Note: a note\n" + buf,
                                    message + buf + " File: f.cpp,12\n",
                                    message + " Note: a note\n" + buf + " File: f.cpp,12\n"};
    std::size_t at = 0;
    for (std::string const& entry : expected) {
        at = log.find("\n? ", at);
        ASSERT_NE(at, std::string::npos) << log;
        at += 3 + 25; // the date and its line feed
        EXPECT_EQ(log.substr(at, entry.size()), entry);
        at += entry.size() - 1;
    }
    std::ostringstream os;
    EXPECT_EQ(man.errorOut(os), -1);
    EXPECT_EQ(os.str(), "x: Already exists: try correct name\n");
}

TEST_F(ErrorMan, RetriesOnlyWhatIsLockedAndInTime) {
    NX_ErrorMan man;
    NX_Timer const running(60000, 1);
    EXPECT_EQ(man.errorRetry(running, 1), 0); // no error
    man.errorBufErrorNum(10440);
    for (int i = 1; i <= 9; ++i)
        EXPECT_EQ(man.errorRetry(running, 1), i);
    EXPECT_EQ(man.errorRetry(1), 0);
    EXPECT_EQ(man.errorRetry(NX_Timer(60000, 0), 1), 0);
    EXPECT_EQ(man.errorRetry(NX_Timer(0, 1), 1), 0);
    man.errorBufErrorNum(12489);
    EXPECT_EQ(man.errorRetry(running, 1), 0);
    man.errorOk();
}

TEST_F(ErrorMan, AbortLogsAndEnds) {
    NxErrorAbortIf("not yet");
    EXPECT_EQ(nxFileContent("quorix.log"), "");
    EXPECT_ERROR_ABORT((NxERROR(errorNumLockMode), NxErrorAbortIf("bad mode", "f.cpp", 3)), errorNumLockMode);
    EXPECT_NE(nxFileContent("quorix.log").find(" Note: bad mode"), std::string::npos);
    EXPECT_ERROR_ABORT((NxERROR(errorNumFileAccess), NxErrorAbort(nullptr)), errorNumFileAccess);
}

} // namespace
