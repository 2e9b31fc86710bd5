// The reader of resources beside the system's own calls, on the system that has them.
#include "tests/module/restest.h"

#include <windows.h>

#include <vector>

namespace {

struct Found {
    std::string type, id;
    WORD lang;
    std::string bytes;

    bool operator==(Found const&) const = default;
};

std::string nameOf(char const* name) {
    return IS_INTRESOURCE(name) ? "#" + std::to_string(LOWORD(name)) : name;
}

std::string bytesOf(HMODULE module, HRSRC resource) {
    auto const* const p = static_cast<char const*>(LockResource(LoadResource(module, resource)));
    return {p, p + SizeofResource(module, resource)};
}

BOOL CALLBACK langAdd(HMODULE module, char const* type, char const* name, WORD lang, LONG_PTR list) {
    reinterpret_cast<std::vector<Found>*>(list)->push_back(
        {nameOf(type), nameOf(name), lang, bytesOf(module, FindResourceExA(module, type, name, lang))});
    return TRUE;
}

BOOL CALLBACK nameAdd(HMODULE module, char const* type, char* name, LONG_PTR list) {
    return EnumResourceLanguagesA(module, type, name, langAdd, list);
}

BOOL CALLBACK typeAdd(HMODULE module, char* type, LONG_PTR list) {
    return EnumResourceNamesA(module, type, nameAdd, list);
}

std::string nameOf(NX_StringA const& name, int number) {
    return name.strLen() != 0 ? name.dataPConst() : "#" + std::to_string(number);
}

Found foundOf(NX_ResLib const& lib, NX_ResDesc const& desc) {
    NX_ResData data;
    EXPECT_EQ(lib.resDataLoad(data, desc), 0);
    return {nameOf(desc.resTypeName(), desc.resType()), nameOf(desc.resName(), desc.resId()),
            static_cast<WORD>(desc.resLang()), nxText(data)};
}

void expectSame(char const* name) {
    SCOPED_TRACE(name);
    NX_ResLib lib;
    ASSERT_EQ(lib.resLibOpen(name, resLibTypeModule), 1);
    HMODULE const module = lib.resLibHandSys();
    ASSERT_NE(module, nullptr);
    std::vector<Found> system;
    EXPECT_TRUE(EnumResourceTypesA(module, typeAdd, reinterpret_cast<LONG_PTR>(&system)));
    std::vector<Found> own;
    NX_ResDescVec list;
    EXPECT_EQ(lib.resDescs(list), 0);
    for (NX_ResDescVecPtrConst desc(list); desc.itemIsAvail(); ++desc) {
        own.push_back(foundOf(lib, *desc));
        NX_ResDesc chosen;
        std::string const& type = own.back().type;
        std::string const& id = own.back().id;
        // Without a language the system asks for that of its user before any other.
        bool const same =
            GetUserDefaultLangID() != 0x409 ||
            (lib.resDescFind(chosen, type.c_str(), id.c_str()) == 0 &&
             foundOf(lib, chosen).bytes == bytesOf(module, FindResourceA(module, id.c_str(), type.c_str())));
        EXPECT_TRUE(same) << type << ' ' << id;
    }
    EXPECT_EQ(own, system);
    EXPECT_GT(own.size(), 0u);
}

TEST(ResSystem, SameListAndSameBytes) {
    for (char const* name : {"resources.dll", "testmodule.dll", "user32.dll"})
        expectSame(name);
    expectSame(NX_ResLib::resLibNameSys(nullptr).dataPConst());
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

// What is loaded for its code is listed from its file.
TEST(ResSystem, ListOfALoadedModule) {
    Found found[2];
    for (NX_ResLibType const type : {resLibTypeDll, resLibTypeModule}) {
        NX_ResLib lib;
        NX_ResDescVec list;
        ASSERT_EQ(lib.resLibOpen("testmodule.dll", type), 1);
        ASSERT_TRUE(lib.resDescs(list) == 0 && list.itemQty() != 0);
        found[type == resLibTypeDll] = foundOf(lib, list[0]);
    }
    EXPECT_EQ(found[0], found[1]);
}

} // namespace
