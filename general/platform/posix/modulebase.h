// Private header. general/platform/posix/modulebase.h - module handles.
//
// The handle of a module is the address at which its image begins: the address itself is never followed.
#pragma once

// The base of the module that holds `address`; null when none does.
void* nxModuleBaseOf(void const* address);

// The base of the program.
void* nxModuleBaseOfProgram();
