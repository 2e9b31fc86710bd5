// Private header. general/platform/posix/modulefile.h - which file a module's name means, and whether it is
// one.
#pragma once

#include <string>
#include <vector>

#include "general/platform/posix/types.h"

// The files that a module's name may stand for, in the order in which they are tried: the name itself, or
// with
// ".dll" when its last component has no dot; after a name ending in ".dll", the same with ".so".
struct NXS_ModuleNames {
    bool bare; // no directory part
    std::vector<std::string> candidates;
};
NXS_ModuleNames nxModuleNames(char const* name);

// The full name, lexically; empty when the name is no file's name.
std::string nxModuleFullName(std::string const& name);

bool nxModuleFileExists(std::string const& path);

// 0 when the file is a complete module for this processor; else the code that tells what it is instead:
// 5 a directory or not readable, 126 not there, 193 not a module.
DWORD nxModuleFileCheck(char const* path);

// The program's file, and the directory it lies in; empty when the system does not tell.
std::string nxModuleProgramPath();
std::string nxModuleProgramDirectory();
