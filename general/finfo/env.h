// general/finfo/env.h - the program's surroundings: current directory and environment variables.
//
// Both classes are values. No error is reported for variables: one that is not set reads as empty.
// Threads: as for strings; the environment must not be changed while it is read.
#pragma once

#include "general/finfo/dirinfo.h"

// A directory record named with the full path of the directory that was current when it was made. The tree
// below it is not read.
class NX_EXPORT NX_DirCurrent : public NX_DirInfo {
public:
    NX_DirCurrent();
};

// A string that holds the value of an environment variable. Constructing from and assigning a text takes it
// as the name of a variable, not as a value; a name given as a part of a vector is cut to 255 characters.
class NX_EXPORT NX_EnvString : public NX_StringA {
public:
    NX_EnvString(char const* name);
    NX_EnvString(NX_StringA const& name);
    NX_EnvString(NX_CharASub const& name);
    NX_EnvString(NX_EnvString const& other) = default; // the value
    NX_EnvString& operator=(NX_EnvString const& other) = default;
    NX_EnvString& operator=(char const* name);
    NX_EnvString& operator=(NX_StringA const& name);
    NX_EnvString& operator=(NX_CharASub const& name);

private:
    void envStrSys(char const* name);
};

// The value of a variable, or `fallback` when it is not set. Nothing is copied: the value lives in the
// environment.
NX_EXPORT char const* NxEnvOrDefault(char const* name, char const* fallback);
