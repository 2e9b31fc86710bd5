// general/module/reslib.h - resource libraries: files with resources, shared by reference.
//
// A resource library names a file and, once opened, holds it. There are two uses. A module (a dynamic
// library) is loaded for its code; its resources come with it. Any file with resources (a module, a bitmap,
// an icon or a cursor) is opened as data: its bytes are read and checked, and nothing of it is run. Loose
// files hold their resources in the same shapes as a module does: a bitmap file one bitmap with id 1; an icon
// or cursor file its images 1, 2, ... and one group with id 1; language 0.
// All libraries opened on the same file for the same use share one representation, whatever the names; it
// goes with the last of them. A file that is replaced on the disk while open is another file.
// Ownership: values that count references; copies share. Threads: different objects may be used from
// different threads, also on one file; one object may not. Failure: -1 through the error manager, as each
// operation says.
#pragma once

#include "general/collm/refcount.h"
#include "general/text/stringa.h"

// What kind of file a library is made of, and for what use. All but resLibTypeDll are data: no
// code is run.
enum NX_ResLibType : int {
    resLibTypeNone = 0,   // no library
    resLibTypeFile = 1,   // whatever the content says: one of the last three
    resLibTypeDll = 2,    // a module, loaded for its code
    resLibTypeModule = 3, // a module of any processor, 32 or 64 bits (.dll, .win, .exe)
    resLibTypeBmp = 4,    // a bitmap (.bmp)
    resLibTypeIco = 5,    // an icon or a cursor (.ico, .cur)
};

class NX_ResData;
class NX_ResDesc;
class NX_ResDescVec;
class NX_ResLibRep;
class NXS_ResImage;
struct NXS_ResEntry;
struct NXS_ResFileKey;

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

    // Opens the file `name` and shares it with every other holder of it. 1: open (also when it was open
    // before); 0: the name is empty, nothing is changed; -1: not opened, the library stays as it was, with
    // the name recorded as F: 10440 locked, 12489 access refused, 14498 not found, 22749 not a valid file of
    // this type or damaged, 21060 anything else.
    // A module for its code: a name without extension gets the system's.
    // Data: a name without extension is looked for with those of the type (resLibTypeFile: all of them, in
    // the order dll win exe bmp ico cur; small letters, then capitals), then as it stands. A name without a
    // directory is looked for in the program's directory, in the current one, and where NX_StringA::nameFind
    // looks. The whole directory of resources is checked before the file counts as open. A module without
    // resources opens. Only files are read whose part up to the last section is below 512 MiB.
    int resLibOpen(NX_StringA const& name, NX_ResLibType type);
    int resLibOpen(NX_StringA const& name, NX_StringA const& directory, NX_ResLibType type);

    // Opens the library under the name it was given at construction.
    int resLibOpen();

    // Attaches the program's own module, which is loaded as long as the program runs. 0, always.
    int resLibAppInit();

    // Lets go of the module. 0, always.
    int resLibClose();

    int resLibIsOpen() const;

    // The loaded module's handle; null when the library is not open or was opened as data. It stays valid
    // while the library is open.
    HINSTANCE resLibHand() const;

    // A handle for the system's own calls that load resources. Of a module opened as data it is made at the
    // first call, and the system runs no code for it. Null for a loose file, when the library is not open,
    // and when the system refuses: GetLastError then tells why (6 nothing to make it of, 2 the file is no
    // longer there or is another one, 50 off Windows). It stays valid while the library is open. Records
    // nothing.
    HINSTANCE resLibHandSys() const;

    // What is open: resLibTypeDll, or for data what the file turned out to be. resLibTypeNone when not open.
    NX_ResLibType resLibType() const;

    // The name that its first opener gave, with its directory; empty without a library.
    NX_StringA resLibName() const;

    // The file name of a loaded module as the system reports it; null means the program. Empty on failure.
    static NX_StringA resLibNameSys(HINSTANCE module);

    // Loads the string resource `id` into `buffer` of `size` characters, cut and terminated. Returns the
    // number of characters without the terminator; 0 when there is no such string (an empty text counts as
    // none), when the library is not open, or when `size` is less than 2. Records nothing.
    // In data the language is chosen as in resDescFind. A text's 16-bit characters become 8-bit ones of the
    // code page 1252 where that is the system's and has them; under another code page ASCII only; all others
    // become '?'.
    int resTextLoad(char* buffer, int size, int id) const;

    // The resources, all of them or those of the type with a number. A library opened for its code is read
    // from its file at the first call; where its format has no such directory (off Windows) the list is
    // empty, and so are searches. 0; -1 with the list emptied: 14498 not open, else as resLibOpen.
    int resDescs(NX_ResDescVec& list, int type = 0) const;

    // Looks one resource up by numbers or names. Names are compared without regard to the case of ASCII
    // letters; a name "#12" means the number 12. `lang` -1: the neutral language's (0), else that of US
    // English (0x409), else the first in the directory; otherwise that language and no other. 0; -1 with
    // `found` unchanged: 14498 with F (the library's name) and T (the name) or V (the number), else as
    // resDescs.
    int resDescFind(NX_ResDesc& found, int type, int id, int lang = -1) const;
    int resDescFind(NX_ResDesc& found, int type, NX_StringA const& name, int lang = -1) const;
    int resDescFind(NX_ResDesc& found, NX_StringA const& type, int id, int lang = -1) const;
    int resDescFind(NX_ResDesc& found, NX_StringA const& type, NX_StringA const& name, int lang = -1) const;

    // The same by numbers; `lang` is only preferred: without a resource in it, the one is found that -1
    // finds.
    int resDescFindNear(NX_ResDesc& found, int type, int id, int lang) const;

    // The resource described, also when its name is one that cannot be told from another's or from none. A
    // description from another library stands for the resource of the same type, id and language here.
    int resDescFind(NX_ResDesc& found, NX_ResDesc const& desc) const;

    // The bytes of a resource, which is found as above. 0; -1 with `data` unchanged, as resDescFind.
    int resDataLoad(NX_ResData& data, NX_ResDesc const& desc) const;

private:
    struct Key;

    NX_ResLibRep* rep() const;
    void adopt(NX_ResLibRep* newRep);
    int openModule(NX_StringA const& path);
    int openData(NX_StringA const& path, int here, NX_ResLibType type);
    int adoptData(NXS_ResFileKey const& key, NX_ResLibType type);
    NXS_ResImage const* imageP() const;
    static void descSet(NX_ResDesc& desc, NXS_ResImage const& image, unsigned int n,
                        NXS_ResEntry const* last);
    int descFind(NX_ResDesc& found, Key const& type, Key const& id, int lang, bool isLangOnly = true) const;
};
