// What only the layer itself can show: code page choice, message boxes, failing system calls, module names.
#include "general/platform/platform.h"
#include "general/platform/posix/codepage.h"
#include "general/platform/posix/seam.h"
#include "tests/support/support.h"

#include <errno.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <string>
#include <tuple>

namespace {

#define EXPECT_REFUSED(call, error) EXPECT_TRUE(!(call) && GetLastError() == (error)) << GetLastError()

unsigned int pageUnder(char const* variable, char const* locale) {
    ::setenv("VX7_CODE_PAGE", variable, 1);
    ::setenv("LC_ALL", locale, 1);
    nxPlatformCodePageSet(0);
    ::unsetenv("VX7_CODE_PAGE");
    ::unsetenv("LC_ALL");
    return GetACP();
}

TEST(PosixLocale, pageFollowsVariableThenLocale) {
    std::tuple<char const*, unsigned int> const rows[] = {
        {"C", 1252},         {"ja_JP.UTF-8", 932}, {"ja", 932},     {"zh_CN", 936},
        {"zh_TW.Big5", 950}, {"ko_KR@x", 949},     {"ru_RU", 1251}, {"jam_XX", 1252}};
    for (auto const& [locale, page] : rows)
        EXPECT_EQ(pageUnder("", locale), page) << locale;
    EXPECT_EQ(pageUnder("949", "ja_JP"), 949u);
    for (char const* unusable : {"65001", "77", "nonsense"})
        EXPECT_EQ(pageUnder(unusable, "ja_JP"), 932u);
    EXPECT_FALSE(nxPlatformCodePageSet(65001) || nxPlatformCodePageSet(12345));
    EXPECT_TRUE(IsDBCSLeadByte(0x81) && IsDBCSLeadByte(0xFC) && !IsDBCSLeadByte(0xA0));
    nxPlatformCodePageSet(0);
}

// Another list starts anew, and a listed reply is a whole word.
TEST(PosixMessageBox, listsOfReplies) {
    std::pair<char const*, int> const rows[] = {{"cancel", IDCANCEL}, {"retry", IDRETRY}, {"r", IDCANCEL}};
    testing::internal::CaptureStderr();
    for (auto const& [list, reply] : rows) {
        ::setenv("VX7_MESSAGE_REPLY", list, 1);
        EXPECT_EQ(MessageBoxA(nullptr, "", nullptr, MB_RETRYCANCEL), reply) << list;
    }
    testing::internal::GetCapturedStderr();
    ::unsetenv("VX7_MESSAGE_REPLY");
}

char const* typed; // what the person at the terminal types

TEST(PosixMessageBox, terminalIsAsked) {
    NXS_SeamScope const scope;
    nxSeam.isTerminal = [](int) { return 1; };
    nxSeam.read = [](int, void* buffer, std::size_t) -> ssize_t {
        std::memcpy(buffer, typed, 1);
        errno = EINTR; // '!': a signal arrives
        return *typed == '\0' ? 0 : *typed++ == '!' ? -1 : 1;
    };
    struct {
        char const* typed;
        UINT type;
        int reply;
    } const rows[] = {{"r\n", MB_RETRYCANCEL, IDRETRY},
                      {"what\n!c!ancel\n", MB_RETRYCANCEL, IDCANCEL},
                      {" YES \n", MB_YESNO, IDYES},
                      {"\n", MB_YESNO | MB_DEFBUTTON2, IDNO},
                      {"", MB_YESNO, IDNO},
                      {"yesyesyesyesyesyes\nn\n", MB_YESNOCANCEL, IDNO}};
    for (auto const& row : rows) {
        typed = row.typed;
        testing::internal::CaptureStderr();
        EXPECT_EQ(MessageBoxA(nullptr, "text", "caption", row.type), row.reply) << row.typed;
        testing::internal::GetCapturedStderr();
    }
    EXPECT_REFUSED(MessageBoxA(nullptr, "", nullptr, 7), 1438);
}

int interruptions;

unsigned int NX_STDCALL idle(void*) {
    return 0;
}

TEST(PosixSeam, failingCalls) {
    NXS_SeamScope const scope;
    nxSeam.allocate = [](std::size_t) -> void* { return nullptr; };
    EXPECT_REFUSED(GlobalAlloc(GMEM_MOVEABLE, 10), 8);
    nxSeam.threadStart = [](pthread_t*, pthread_attr_t const*, void* (*)(void*), void*) { return EAGAIN; };
    errno = 0;
    EXPECT_REFUSED(_beginthreadex(nullptr, 0, idle, nullptr, 0, nullptr), 8);
    EXPECT_EQ(errno, EAGAIN);
    EXPECT_REFUSED(_beginthreadex(nullptr, 0, idle, nullptr, 4, nullptr), 50); // suspended
    nxSeam.sleep = [](timespec const* howLong, timespec* left) {
        *left = {0, howLong->tv_nsec - 1000000};
        errno = EINTR;
        return ++interruptions < 4 ? -1 : 0;
    };
    Sleep(100);
    EXPECT_EQ(interruptions, 4);
}

TEST(PosixModule, dllNamesMeanSharedObjects) {
    HMODULE const original = LoadLibraryA("nxtest.so");
    char name[1024];
    ASSERT_GT(GetModuleFileNameA(original, name, sizeof name), 0u);
    std::string content = nxFileContent(name);
    EXPECT_TRUE(GetModuleFileNameA(original, name, 5) == 5 && std::strlen(name) == 4); // cut, but terminated
    nxFileMake("mapped.so", content);
    HMODULE const mapped = LoadLibraryA(".\\mapped.DLL");
    ASSERT_TRUE(mapped != nullptr && mapped != original);
    EXPECT_TRUE(LoadLibraryA("mapped") == mapped && GetModuleHandleA("mapped.dll") == mapped);
    for (HMODULE module : {mapped, mapped, original})
        EXPECT_TRUE(FreeLibrary(module));
    ++content[18]; // for another processor
    nxFileMake("foreign.so", content);
    EXPECT_REFUSED(LoadLibraryA("foreign"), 193);
    EXPECT_REFUSED(LoadLibraryExA("nxtest.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE), 50);
    EXPECT_REFUSED(LoadLibraryExA("nxtest.dll", INVALID_HANDLE_VALUE, 0), 87);
    HMODULE const system = LoadLibraryA("libm.so.6"); // through the loader's path
    EXPECT_NE(GetProcAddress(system, "ldexp"), nullptr);
    EXPECT_REFUSED(GetProcAddress(system, "strlen"), 127); // of what it needs
    EXPECT_REFUSED(GetProcAddress(system, MAKEINTRESOURCEA(1)), 182);
    EXPECT_TRUE(FreeLibrary(system));
}

TEST(PosixThread, identifierAfterFork) {
    DWORD const own = GetCurrentThreadId();
    pid_t const child = ::fork();
    if (child == 0)
        ::_exit(GetCurrentThreadId() == static_cast<DWORD>(::getpid()) ? 0 : 1);
    int status = -1;
    EXPECT_TRUE(::waitpid(child, &status, 0) == child && status == 0);
    EXPECT_EQ(GetCurrentThreadId(), own);
}

} // namespace
