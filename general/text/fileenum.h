// general/text/fileenum.h - small enumerations about files that strings and the file classes share.
// Plain values; any int may be cast to them.
#pragma once

// Which of a file's three times is meant. Any value other than 1 and 2 counts as ageWrite.
enum NX_FileAgeType : int {
    ageWrite = 0,  // last write
    ageCreate = 1, // creation
    ageAccess = 2, // last access
};

// Attribute classes of directory entries, a bit set: the low byte names the classes wanted (none: all
// entries), the second byte the classes refused. A refused bit is ignored when the wanted bit of its class is
// set.
enum NX_FileFindType : int {
    NX_FileFindAll = 0x0,
    NX_FileFindArchive = 0x1,
    NX_FileFindDir = 0x2,
    NX_FileFindHidden = 0x4,
    NX_FileFindReadOnly = 0x8,
    NX_FileFindSystem = 0x10,
    NX_FileFindNoArchive = 0x100,
    NX_FileFindNoDir = 0x200,
    NX_FileFindNoHidden = 0x400,
    NX_FileFindNoReadOnly = 0x800,
    NX_FileFindNoSystem = 0x1000,
    NX_FileFindSubDir = 0x1402, // directories, neither hidden nor system
};

// What a name stands for, as NX_StringA::nameType answers.
enum NX_FileNameType : int {
    NX_FileNameEmpty = 0,   // no text
    NX_FileNameMissing = 1, // nothing of this name exists
    NX_FileNameFile = 2,
    NX_FileNameDevice = 3, // a device, or a bare drive such as "C:"
    NX_FileNameDir = 4,
    NX_FileNameWild = 5, // a wildcard pattern
};

// What the constructor that joins a directory and a text makes of them.
enum NX_FileType : int {
    NX_FileTypeFile = 0, // directory, one separator, text
    NX_FileTypeDir = 1,  // the same as a directory name: it ends in a separator
};
