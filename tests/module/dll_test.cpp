// Modules: opening, sharing, unloading, and looking functions up.
#include "general/error/errorman.h"
#include "general/module/modfunc.h"
#include "general/platform/platform.h"
#include "tests/support/support.h"

#include <cstring>
#include <filesystem>
#include <type_traits>

namespace {

struct Function : NX_ModFunc {
    template <class Module, class Key>
    Function(Module module, Key key) : NX_ModFunc(module, key) {}
    int call() const { return funcP()(); }
};

NX_StringA programDir() {
    return NX_ResLib::resLibNameSys(nullptr).nameOfDir();
}

int isLoaded() {
    return GetModuleHandleA("testmodule.dll") != nullptr;
}

NX_StringA details() {
    return NxErrorBuf();
}

bool has(NX_StringA const& text, char const* part) {
    return text.strStrFirst(part) != NX_NO_INDEX;
}

TEST(Dll, OneModuleForAllHoldersUntilTheLast) {
    ASSERT_EQ(isLoaded(), 0);
    NX_Dll first;
    EXPECT_EQ(first.dllIsOpen(), 0);
    EXPECT_EQ(first.dllOpen("testmodule.dll"), 1);
    EXPECT_EQ(first.dllOpen("testmodule.dll"), 1) << "open already";
    {
        NX_Dll second;
        EXPECT_EQ(second.dllOpen("testmodule.dll", programDir()), 1) << "the same file by another name";
        EXPECT_EQ(second.dllHand(), first.dllHand());
        NX_Dll third(second);
        second.dllClose();
        EXPECT_TRUE(third.dllIsOpen() == 1 && second.dllHand() == nullptr);
    }
    EXPECT_EQ(isLoaded(), 1);
    NX_Dll const kept = first;
    first.dllClose();
    EXPECT_EQ(isLoaded(), 1) << "a copy still holds it";
    first = NX_Dll();
    const_cast<NX_Dll&>(kept).dllClose();
    EXPECT_EQ(isLoaded(), 0);
}

TEST(Dll, FailuresNameTheLibraryAndLoseNothing) {
    nxFileMake("damaged.dll", std::string(5000, 'x'));
    std::filesystem::create_directory("sub");
    NxErrorOk();
    NX_Dll dll;
    EXPECT_EQ(dll.dllOpen(""), 0);
    EXPECT_EQ(NxErrorIsOK(), 1) << "an empty name records nothing";
    EXPECT_EQ(dll.dllOpen("missing.dll"), -1);
    EXPECT_TRUE(NxErrorNum() == errorNumResLibNotFound && has(details(), "F=missing.dll"));
    NX_StringA here;
    here.nameFull(".");
    EXPECT_EQ(dll.dllOpen("damaged.dll", here), -1);
    EXPECT_TRUE(NxErrorNum() == errorNumImage && has(details(), "damaged.dll"));
    EXPECT_EQ(dll.dllOpen("testmodule.dll", here + "/sub"), -1)
        << "looked for in the directory and nowhere else";

    ASSERT_EQ(dll.dllOpen("testmodule.dll"), 1);
    EXPECT_EQ(dll.dllOpen("missing.dll"), -1);
    EXPECT_EQ(dll.dllIsOpen(), 1) << "still the module that was open";
    NxErrorOk();
}

TEST(Dll, TextsOfAModule) {
    NX_Dll dll;
    char text[64] = "unchanged";
    EXPECT_EQ(dll.resTextLoad(text, sizeof text, 100), 0);
    EXPECT_STREQ(text, "unchanged");
    ASSERT_EQ(dll.dllOpen("testmodule.dll"), 1);
    EXPECT_EQ(dll.resTextLoad(text, 5, 100), 4);
    EXPECT_STREQ(text, "text");
    EXPECT_EQ(dll.resTextLoad(text, sizeof text, 101), 0);
    EXPECT_EQ(dll.resTextLoad(text, 0, 100), 0);
}

TEST(ModFunc, ByNameAndWithoutModule) {
    NX_Dll dll;
    NxErrorOk();
    EXPECT_EQ(Function(dll, "moduleAnswer").funcP(), nullptr);
    EXPECT_EQ(NxErrorNum(), errorNumFuncUsage) << "no module is a fault of usage, not a missing function";

    ASSERT_EQ(dll.dllOpen("testmodule.dll"), 1);
    Function const found(dll, "moduleAnswer");
    ASSERT_NE(found.funcP(), nullptr);
    EXPECT_EQ(found.call(), 42);

    Function const missing(dll.dllHand(), "moduleQuestion");
    EXPECT_TRUE(missing.funcP() == nullptr && NxErrorNum() == errorNumFuncNotFound);
    NX_StringA const words = details();
    EXPECT_TRUE(has(words, "testmodule") && has(words, " T=moduleQuestion S=127")) << words.dataPConst();
    NxErrorOk();
}

TEST(ModFunc, ByOrdinal) {
    NX_Dll dll;
    ASSERT_EQ(dll.dllOpen("testmodule.dll"), 1);
    // Only modules of the first system number their functions; elsewhere every ordinal is missing.
    Function const seventh(dll, static_cast<short>(7));
    EXPECT_TRUE(seventh.funcP() == nullptr || seventh.call() == 42);
    NxErrorOk();
    Function const missing(dll.dllHand(), static_cast<short>(-3));
    EXPECT_TRUE(missing.funcP() == nullptr && NxErrorNum() == errorNumFuncNotFound);
    EXPECT_FALSE(has(details(), " T=")) << "an ordinal has no name to record";
    NxErrorOk();
}

} // namespace
