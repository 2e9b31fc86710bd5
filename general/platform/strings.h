// general/platform/strings.h - string resources, written once for every target.
//
// The texts of a module stand in one file of STR(id, "text") lines. The same three lines make them part of
// the module on every target, in its resource script (.rc) and in one of its C++ sources:
//
//     #include "general/platform/strings.h"
//     NX_STRINGS_BEGIN
//     #include "program.str"
//     NX_STRINGS_END
//
// On Windows the resource script carries the texts and the C++ source is empty; elsewhere the C++ source
// holds a table that registers itself for its module before main, or when the module is loaded, and is
// withdrawn when the module is unloaded. LoadStringA reads both. A program has at most one such source per
// file scope.
//
// The file of texts must not be named .h or .c (the resource compiler skips the text of such files); ids are
// 0..65535, texts are ASCII without double quotes, and an empty text counts as absent.
#pragma once

#if defined(RC_INVOKED)

#define STR(id, text) id text
#define NX_STRINGS_BEGIN STRINGTABLE BEGIN
#define NX_STRINGS_END END

#elif defined(_WIN32)

#define STR(id, text)
#define NX_STRINGS_BEGIN
#define NX_STRINGS_END

#else

#include <cstddef>

#include "general/platform/fwd.h"

struct NXS_StringEntry {
    unsigned int id;
    char const* text;
};

// Registers the entries for the module they lie in, from construction to destruction. The entries must
// outlive it. When an id occurs twice in a module the table that was registered first is taken.
class NX_EXPORT NXS_StringTable {
public:
    NXS_StringTable(NXS_StringEntry const* entries, std::size_t entryQty);
    NXS_StringTable(NXS_StringTable const&) = delete;
    NXS_StringTable& operator=(NXS_StringTable const&) = delete;
    ~NXS_StringTable();

private:
    friend struct NXS_StringRegistry;

    void* base_; // of the module that holds the entries
    NXS_StringEntry const* entries_;
    std::size_t entryQty_;
    NXS_StringTable* next_ = nullptr;
};

#define STR(id, text) {id, text},
#define NX_STRINGS_BEGIN \
    namespace {          \
    NXS_StringEntry const nxStrings_[] = {
#define NX_STRINGS_END                                                                          \
    }                                                                                           \
    ;                                                                                           \
    NXS_StringTable const nxStringTable_(nxStrings_, sizeof nxStrings_ / sizeof nxStrings_[0]); \
    }

#endif
