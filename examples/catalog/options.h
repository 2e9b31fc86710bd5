// examples/catalog/options.h - the command line.
#pragma once

#include "vx7base.h"

enum class Command { help, scan, show, find, diff, resources };
enum class Order : int { none, name, age, size };

// What decides which files of a directory are read, and how they are shown.
struct Choices {
    NX_StringA pattern = "*.*";
    NX_StringVecA leaveOut;
    NX_FileFindType find = NX_FileFindNoDir; // files of every class
    Order order = Order::none;
};

struct Options {
    Command command = Command::help;
    NX_StringA first;   // DIR, FILE or OLD
    NX_StringA second;  // FILE, PATTERN, NEW or OUT
    NX_StringA extract; // ID
    Choices choices;
    bool contents = false;
};

// The environment variable that names the directory of catalogues, for those named without a directory.
inline constexpr char catalogDirVariable[] = "CATALOG_DIR";

// The values of --sort and of --files-of, with '|' between.
NX_StringA optionOrders();
NX_StringA optionClasses();

// Reads the arguments behind the program's name. The name of a catalogue that has no directory and is not
// found in the current one is taken in CATALOG_DIR. 0, or -1 with an error recorded.
int optionsRead(int argc, char** argv, Options& options);
