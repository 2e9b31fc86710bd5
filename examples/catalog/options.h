// examples/catalog/options.h - the command line.
#pragma once

#include "vx7base.h"

enum class Command { help, scan, show, find, diff };
enum class Order : int { none, name, age, size };

struct Options {
    Command command = Command::help;
    NX_StringA first;  // DIR, FILE or OLD
    NX_StringA second; // FILE, PATTERN or NEW
    NX_StringA pattern = "*.*";
    NX_StringVecA leaveOut;
    Order order = Order::none;
    NX_FileFindType find = NX_FileFindNoDir; // files of every class
    bool contents = false;
};

// Reads the arguments behind the program's name. 0, or -1 with an error recorded.
int optionsRead(int argc, char** argv, Options& options);
