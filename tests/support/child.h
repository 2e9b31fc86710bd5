// tests/support/child.h - second processes: a test executable starts itself again with a named task.
#pragma once

#include <string>
#include <vector>

using NXS_ChildTask = int (*)(int argc, char** argv);

// Registers a task under a name: `static NXS_ChildEntry const entry("hold-lock", holdLock);` at file level.
// The task's result is the child's exit code.
struct NXS_ChildEntry {
    NXS_ChildEntry(char const* name, NXS_ChildTask task);
};

// A running child.
class NXS_Child {
public:
    // Starts this executable again to run the task `name`. Arguments must hold no blank and no quote.
    NXS_Child(char const* name, std::vector<std::string> const& arguments);
    NXS_Child(NXS_Child const&) = delete;
    NXS_Child& operator=(NXS_Child const&) = delete;
    ~NXS_Child(); // waits

    bool isRunning();
    int wait();  // Waits for the end; the exit code, or -1 when the child could not be started or was killed.
    void kill(); // Ends the child at once, without its destructors.

private:
    long long handle_;
    int result_ = -1;
};

// Runs a task to its end: its exit code.
int nxRunSelf(char const* name, std::vector<std::string> const& arguments = {});

// Waits until a file exists, for up to ten seconds: the usual way for a child to say that it is ready.
bool nxFileAwait(char const* name);

// The path of this executable.
std::string const& nxSelf();

// Whether memory can be made to end within reach: a sanitizer's address space has no end.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool nxMemoryEnds = false;
#else
inline constexpr bool nxMemoryEnds = true;
#endif

// Leaves this process so many bytes more than it has; false when that failed. On Windows the address space
// of a process is small anyway.
bool nxMemoryLimit(unsigned int more);

// For main.
void nxSelfSet(char const* program);
int nxChildRun(char const* name, int argc, char** argv);
unsigned int nxProcessId();
void nxEnvironmentSet(char const* name, char const* value);
