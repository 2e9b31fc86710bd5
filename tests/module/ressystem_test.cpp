// The reader of resources beside the system's own calls, on the system that has them.
#include "general/module/dll.h"
#include "tests/module/restest.h"

#include <windows.h>

namespace {

std::string bytesOf(HMODULE module, HRSRC resource) {
    auto const* const p = static_cast<char const*>(LockResource(LoadResource(module, resource)));
    return {p, p + SizeofResource(module, resource)};
}

// The bytes of all resources that the system finds in a module, by type, name and language.
using Found = std::vector<std::tuple<std::string, std::string, int, std::string>>;

std::string nameOf(char const* name) {
    return IS_INTRESOURCE(name) ? "#" + std::to_string(LOWORD(name)) : name;
}

std::string nameOf(NX_StringA const& name, int number) {
    return name.strLen() != 0 ? name.dataPConst() : "#" + std::to_string(number);
}

BOOL CALLBACK langAdd(HMODULE module, char const* type, char const* name, WORD lang, LONG_PTR list) {
    std::string const bytes = bytesOf(module, FindResourceExA(module, type, name, lang));
    reinterpret_cast<Found*>(list)->emplace_back(nameOf(type), nameOf(name), lang, bytes);
    return TRUE;
}

BOOL CALLBACK nameAdd(HMODULE module, char const* type, char* name, LONG_PTR list) {
    return EnumResourceLanguagesA(module, type, name, langAdd, list);
}

BOOL CALLBACK typeAdd(HMODULE module, char* type, LONG_PTR list) {
    return EnumResourceNamesA(module, type, nameAdd, list);
}

void expectSame(NX_ResLib const& lib, HMODULE module) {
    SCOPED_TRACE(lib.resLibName());
    ASSERT_NE(module, nullptr);
    Found own, system;
    NX_ResDescVec list;
    EXPECT_EQ(lib.resDescs(list), 0);
    for (NX_ResDescVecPtrConst desc(list); desc.itemIsAvail(); ++desc) {
        std::string const type = nameOf(desc->resTypeName(), desc->resType());
        std::string const id = nameOf(desc->resName(), desc->resId());
        NX_ResData data;
        EXPECT_EQ(lib.resDataLoad(data, *desc), 0);
        own.emplace_back(type, id, desc->resLang(), nxText(data));
        // Without a language the system asks for that of its user before any other.
        NX_ResDesc chosen;
        if (GetUserDefaultLangID() == 0x409) {
            EXPECT_EQ(lib.resDescFind(chosen, type.c_str(), id.c_str()), 0);
            EXPECT_EQ(lib.resDataLoad(data, chosen), 0);
            EXPECT_EQ(nxText(data), bytesOf(module, FindResourceA(module, id.c_str(), type.c_str())));
        }
    }
    EXPECT_TRUE(EnumResourceTypesA(module, typeAdd, reinterpret_cast<LONG_PTR>(&system)));
    EXPECT_TRUE(own == system && !own.empty());
}

// Also of a module that is loaded for its code: it is listed from its file.
TEST(ResSystem, SameListAndSameBytes) {
    for (char const* name : {"resources.dll", "testmodule.dll", "user32.dll", ""}) {
        NX_ResLib lib;
        NX_StringA const path = *name != 0 ? NX_StringA(name) : NX_ResLib::resLibNameSys(nullptr);
        ASSERT_EQ(lib.resLibOpen(path, resLibTypeModule), 1);
        expectSame(lib, lib.resLibHandSys());
    }
    NX_Dll code;
    ASSERT_EQ(code.dllOpen("testmodule.dll"), 1);
    expectSame(code, code.dllHand());
}

TEST(ResSystem, TextsAsTheSystemLoadsThem) {
    NX_ResLib lib;
    ASSERT_EQ(lib.resLibOpen("resources.dll", resLibTypeModule), 1);
    for (int const id : {0, 1, 2, 15, 16, 100, 200, 3000, 65535, 65537, -1}) {
        for (int const size : {2, 5, 64}) {
            char own[64] = {};
            char system[64] = {};
            EXPECT_EQ(lib.resTextLoad(own, size, id),
                      LoadStringA(lib.resLibHandSys(), static_cast<UINT>(id), system, size));
            EXPECT_STREQ(own, system) << id;
        }
    }
}

} // namespace
