// general/module/reslib.h - resource libraries: loaded modules shared by reference.
//
// A resource library names a module (a dynamic library) and, once opened, holds it loaded. All libraries
// opened on the same module share one representation; the module is unloaded when the last of them lets go.
// Ownership: values that count references; copies share. Threads: different objects may be used from
// different threads, also on one module; one object may not. Failure: -1 through the error manager, as each
// operation says.
#pragma once

#include "general/collm/refcount.h"
#include "general/text/stringa.h"

// What kind of file a library is made of.
enum NX_ResLibType : int {
    resLibTypeNone = 0, // no library
    resLibTypeDll = 2,  // a loadable module
};

class NX_ResLibRep;

class NX_EXPORT NX_ResLib : private NX_RefCountPtr {
public:
    NX_ResLib() = default;

    // Shares an existing representation; null: no library.
    explicit NX_ResLib(NX_ResLibRep* rep);

    // A library with a name, not yet opened. With a directory, the module is looked for there and nowhere
    // else; without one the system's order applies (the program's directory first).
    NX_ResLib(NX_StringA const& name, NX_ResLibType type);
    NX_ResLib(NX_StringA const& name, NX_StringA const& directory, NX_ResLibType type);

    NX_ResLib(NX_ResLib const& other);
    NX_ResLib& operator=(NX_ResLib const& other);
    ~NX_ResLib();

    // Opens the module `name` and shares it with every other holder of it. A name without extension gets the
    // system's. 1: open (also when it was open before); 0: the name is empty, nothing is changed; -1: not
    // opened, the library stays as it was, with the name recorded as F: 10440 locked, 12489 access refused,
    // 14498 not found, 22749 not a valid module, 21060 anything else.
    int resLibOpen(NX_StringA const& name, NX_ResLibType type);
    int resLibOpen(NX_StringA const& name, NX_StringA const& directory, NX_ResLibType type);

    // Opens the library under the name it was given at construction.
    int resLibOpen();

    // Attaches the program's own module, which is loaded as long as the program runs. 0, always.
    int resLibAppInit();

    // Lets go of the module. 0, always.
    int resLibClose();

    int resLibIsOpen() const;

    // The module's handle, or null. It stays valid while the library is open.
    HINSTANCE resLibHand() const;

    // The name as given, with its directory; empty without a library.
    NX_StringA resLibName() const;

    // The file name of a loaded module as the system reports it; null means the program. Empty on failure.
    static NX_StringA resLibNameSys(HINSTANCE module);

    // Loads the string resource `id` into `buffer` of `size` characters, cut and terminated. Returns the
    // number of characters without the terminator; 0 when there is no such string (an empty text counts as
    // none), when the library is not open, or when `size` is less than 2. Records nothing.
    int resTextLoad(char* buffer, int size, int id) const;

private:
    NX_ResLibRep* rep() const;
    void adopt(NX_ResLibRep* newRep);
};
