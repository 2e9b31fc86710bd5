// Modules: opening, sharing, unloading, and looking functions up.
#include "general/module/modfunc.h"
#include "general/platform/platform.h"
#include "tests/module/restest.h"

#include <filesystem>

namespace {

struct Function : NX_ModFunc {
    template <class Module, class Key>
    Function(Module module, Key key) : NX_ModFunc(module, key) {}
    int call() const { return funcP()(); }
};

bool isLoaded() {
    return GetModuleHandleA("testmodule.dll") != nullptr;
}

TEST(Dll, OneModuleForAllHoldersUntilTheLast) {
    ASSERT_FALSE(isLoaded());
    NX_Dll first;
    EXPECT_EQ(first.dllIsOpen(), 0);
    EXPECT_TRUE(first.dllOpen("testmodule.dll") == 1 && first.dllOpen("testmodule.dll") == 1);
    {
        NX_Dll second;
        EXPECT_EQ(second.dllOpen("testmodule.dll", nxResTestPath("").c_str()), 1) << "by another name";
        EXPECT_EQ(second.dllHand(), first.dllHand());
        NX_Dll third(second);
        second.dllClose();
        EXPECT_TRUE(third.dllIsOpen() == 1 && second.dllHand() == nullptr);
    }
    EXPECT_TRUE(isLoaded());
    NX_Dll kept = first;
    first.dllClose();
    EXPECT_TRUE(isLoaded()) << "a copy still holds it";
    first = NX_Dll();
    kept.dllClose();
    EXPECT_FALSE(isLoaded());
}

TEST(Dll, FailuresNameTheLibraryAndLoseNothing) {
    nxFileMake("damaged.dll", std::string(5000, 'x'));
    std::filesystem::create_directory("sub");
    NX_StringA here;
    here.nameFull(".");
    NxErrorOk();
    NX_Dll dll;
    EXPECT_TRUE(dll.dllOpen("") == 0 && NxErrorIsOK()) << "an empty name records nothing";
    EXPECT_TRUE(dll.dllOpen("missing.dll") == -1 && nxErrorTells(errorNumResLibNotFound, "F=missing.dll"));
    EXPECT_TRUE(dll.dllOpen("damaged.dll", here) == -1 && nxErrorTells(errorNumImage, "damaged.dll"));
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
    EXPECT_TRUE(dll.resTextLoad(text, sizeof text, 101) == 0 && dll.resTextLoad(text, 0, 100) == 0);
}

TEST(ModFunc, ByNameAndByOrdinal) {
    NX_Dll dll;
    EXPECT_EQ(Function(dll, "moduleAnswer").funcP(), nullptr);
    EXPECT_EQ(NxErrorNum(), errorNumFuncUsage) << "no module is a fault of usage, not a missing function";

    ASSERT_EQ(dll.dllOpen("testmodule.dll"), 1);
    Function const found(dll, "moduleAnswer");
    EXPECT_TRUE(found.funcP() != nullptr && found.call() == 42);
    EXPECT_EQ(Function(dll.dllHand(), "moduleQuestion").funcP(), nullptr);
    EXPECT_TRUE(nxErrorTells(errorNumFuncNotFound, " T=moduleQuestion S=127") &&
                nxErrorTells(errorNumFuncNotFound, "testmodule"));

    // Only modules of the first system number their functions; elsewhere every ordinal is missing.
    Function const seventh(dll, static_cast<short>(7));
    EXPECT_TRUE(seventh.funcP() == nullptr || seventh.call() == 42);
    NxErrorOk();
    EXPECT_EQ(Function(dll.dllHand(), static_cast<short>(-3)).funcP(), nullptr);
    EXPECT_TRUE(NxErrorNum() == errorNumFuncNotFound && !nxErrorTells(errorNumFuncNotFound, " T="))
        << "an ordinal has no name to record";
    NxErrorOk();
}

} // namespace
