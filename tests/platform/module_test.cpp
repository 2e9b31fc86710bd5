// Loading modules, finding their functions and reading string resources; the same on every target.
#include "general/platform/platform.h"
#include "tests/support/support.h"

#include <atomic>
#include <cstring>
#include <utility>

#include "general/platform/strings.h"
NX_STRINGS_BEGIN
#include "tests/platform/program.str"
NX_STRINGS_END

namespace {

#define EXPECT_REFUSED(call, error) EXPECT_TRUE(!(call) && GetLastError() == (error)) << GetLastError()

std::string moduleFile(HMODULE module) {
    char name[1024];
    return std::string(name, GetModuleFileNameA(module, name, sizeof name));
}

// Makes sub/other.dll, a module, in the current directory, and files that look like modules.
class PlatformModule : public testing::Test {
protected:
    static void SetUpTestSuite() {
        HMODULE const original = LoadLibraryA("nxtest.dll"); // beside the program
        ASSERT_NE(original, nullptr);
        std::string const content = nxFileContent(moduleFile(original).c_str());
        EXPECT_TRUE(FreeLibrary(original));
        CreateDirectoryA("sub", nullptr);
        nxFileMake("sub/other.dll", content);
        nxFileMake("half.dll", content.substr(0, content.size() / 2));
        nxFileMake("start.dll", content.substr(0, 300));
        nxFileMake("text.dll", "not a module, but text");
        nxFileMake("empty.dll", "");
    }
};

TEST_F(PlatformModule, refusedNames) {
    std::tuple<DWORD, std::vector<char const*>> const rows[] = {
        {126, {"", "missing.dll", "nodir\\missing.dll", "mi?s.dll", "sub", "sub\\", "text.dll\\x"}},
        {5, {"sub.", "."}},
        {193, {"empty.dll", "text.dll", "half.dll", "start.dll", "text"}}};
    for (auto const& [error, names] : rows)
        for (char const* name : names) {
            EXPECT_REFUSED(LoadLibraryA(name), error) << ": " << name;
            EXPECT_REFUSED(LoadLibraryExA(name, nullptr, 0), error) << ": " << name;
        }
}

TEST_F(PlatformModule, oneModuleIsCountedUnderAllItsNames) {
    HMODULE const module = LoadLibraryExA("sub\\other.dll", nullptr, 0);
    ASSERT_NE(module, nullptr);
    char const* const names[] = {"sub/other.dll", ".\\sub\\..\\sub\\other", "other.dll", "other"};
    for (char const* name : names)
        EXPECT_TRUE(LoadLibraryA(name) == module && GetModuleHandleA(name) == module) << name;
    for (std::size_t i = 0; i < std::size(names); ++i)
        EXPECT_TRUE(FreeLibrary(module));
    EXPECT_NE(GetProcAddress(module, "nxTestAnswer"), nullptr); // one is left
    EXPECT_TRUE(FreeLibrary(module));
    char text[20];
    EXPECT_REFUSED(FreeLibrary(module), 126);
    EXPECT_REFUSED(GetProcAddress(module, "nxTestAnswer"), 126);
    EXPECT_REFUSED(GetModuleFileNameA(module, text, 20), 126);
    EXPECT_REFUSED(GetModuleHandleA("other.dll"), 126);
    EXPECT_REFUSED(FreeLibrary(nullptr), 6);
    EXPECT_TRUE(FreeLibrary(GetModuleHandleA(nullptr)) && FreeLibrary(GetModuleHandleA(nullptr))); // stays
}

std::atomic<int> ended, failures;

unsigned int NX_STDCALL loadAndFree(void*) {
    for (int i = 0; i < 200; ++i) {
        HMODULE const module = LoadLibraryA(i % 2 == 0 ? "sub/other.dll" : "nxtest");
        if (module == nullptr || GetProcAddress(module, "nxTestAnswer") == nullptr || !FreeLibrary(module))
            ++failures;
    }
    ++ended;
    return 0;
}

TEST_F(PlatformModule, threadsLoadAndFreeTheSameModules) {
    ended = failures = 0;
    for (int i = 0; i < 4; ++i)
        CloseHandle(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, loadAndFree, nullptr, 0, nullptr)));
    for (int i = 0; i < 20000 && ended < 4; ++i)
        Sleep(1);
    EXPECT_TRUE(ended == 4 && failures == 0) << ended << " " << failures;
    EXPECT_EQ(GetModuleHandleA("nxtest"), nullptr);
}

TEST_F(PlatformModule, functions) {
    HMODULE const module = LoadLibraryA("nxtest");
    auto* const sum = reinterpret_cast<void*>(GetProcAddress(module, "nxTestSum"));
    EXPECT_EQ(reinterpret_cast<int (*)(int, int)>(sum)(40, 2), 42);
    auto const inside = reinterpret_cast<HMODULE>(reinterpret_cast<char*>(module) + 16);
    for (char const* name : {"nxTestNone", "NXTESTSUM", "", "GetTickCount"})
        EXPECT_REFUSED(GetProcAddress(module, name), 127);
    EXPECT_REFUSED(GetProcAddress(nullptr, "nxTestSum"), 127);
    EXPECT_REFUSED(GetProcAddress(inside, "nxTestSum"), 126);
    EXPECT_REFUSED(GetProcAddress(inside, MAKEINTRESOURCEA(1)), 126);
    EXPECT_TRUE(FreeLibrary(module));
}

TEST_F(PlatformModule, fileNames) {
    std::string const full = moduleFile(nullptr);
    EXPECT_EQ(GetLastError(), 0u);
    EXPECT_NE(full.find("test_platform"), std::string::npos);
    char name[1024];
    DWORD const size = static_cast<DWORD>(full.size());
    EXPECT_TRUE(GetModuleFileNameA(nullptr, name, size) == size && GetLastError() == 122);
    EXPECT_EQ(std::strncmp(name, full.c_str(), size - 1), 0);
    EXPECT_EQ(GetModuleFileNameA(nullptr, name, size + 1), size);
}

// The result, the text and the last error (777: left alone) of LoadStringA.
std::string stringLoad(HMODULE module, unsigned int id, int size) {
    char buffer[32] = "xx";
    SetLastError(777);
    int const result = LoadStringA(module, id, buffer, size);
    return std::to_string(result) + ' ' + buffer + ' ' + std::to_string(GetLastError());
}

TEST_F(PlatformModule, strings) {
    // number and size of the buffer
    std::tuple<char const*, std::vector<std::pair<unsigned int, int>>> const rows[] = {
        {"7 hundred 777", {{100, 20}, {100, 8}, {0x10064, 20}}},
        {"6 hundre 777", {{100, 7}}},
        {"0  777", {{100, 1}, {102, 20}, {96, 20}, {111, 20}}},
        {"-1 xx 777", {{100, 0}}},
        {"0  1814", {{112, 20}, {95, 20}, {0, 20}}},
        {"4 last 777", {{65535, 20}}}};
    for (auto const& [loaded, calls] : rows)
        for (auto const& [id, size] : calls)
            EXPECT_EQ(stringLoad(nullptr, id, size), loaded) << id << " " << size;
    HMODULE const module = LoadLibraryA("nxtest");
    EXPECT_EQ(stringLoad(module, 100, 20), "15 from the module 777");
    EXPECT_EQ(stringLoad(module, 65535, 20), "0  1814");
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(stringLoad(module, 100, 20), "0  1812");
    EXPECT_EQ(stringLoad(module, 100, 0), "-1 xx 777");
}

} // namespace
