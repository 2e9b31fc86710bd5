// examples/catalog/catalogue.h - a directory tree in memory, with the choices it was read by, and its file.
//
// The file is a text persistence file: the word "catalogue", the pattern, the names left out (joined by '/'),
// the class of files and the order as numbers, then the tree. The last line is a checksum over all that
// stands before it, so that also a changed digit is told.
#pragma once

#include "examples/catalog/options.h"

#include <memory>

class Catalogue {
public:
    Catalogue() = default;
    explicit Catalogue(Choices const& choices) : choices_(choices) {}

    // By which the tree is or was read: those given, or those of the file that was loaded.
    Choices const& choices() const { return choices_; }

    // Reads the tree of a directory. 0, or -1 with an error recorded: no directory, one that may not be read,
    // a name that the file's format cannot keep.
    int dirRead(NX_StringA const& dir);

    // Loads a catalogue's file. 0, or -1 with an error recorded; a damaged file gives the position.
    int fileLoad(NX_StringA const& file);

    // Loads a file or reads a directory, whichever `name` is.
    int read(NX_StringA const& name);

    // Writes the file: under a temporary name first, then moved into place, so that it is never half-written
    // and an existing one stays whole on failure. 0, or -1 with an error recorded.
    int fileSave(NX_StringA const& file) const;

    // The tree; only after one of the reading operations has returned 0.
    NX_DirInfo const& root() const { return *root_; }

private:
    int write(NX_StringA const& file) const;
    int dirCheck(NX_DirInfo const& dir) const;

    Choices choices_;
    std::unique_ptr<NX_DirInfo> root_;
};

// Whether the format keeps a name: it skips blanks in front of a text and ends one at a line feed.
bool nameKeeps(NX_StringA const& name);

// Whether a name stands for a directory, a bare drive included.
bool nameIsTree(NX_StringA const& name);

// How directories and files are put in order: null for Order::none.
using DirCompare = int(NX_FASTCALL*)(NX_DirInfo const*, NX_DirInfo const*);
using FileCompare = int(NX_FASTCALL*)(NX_FileInfo const*, NX_FileInfo const*);
DirCompare dirCompare(Order order);
FileCompare fileCompare(Order order);
