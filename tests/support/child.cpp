#include "tests/support/child.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>

#if defined(_WIN32)
#include <process.h>
#include <windows.h>
#else
#include <csignal>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
extern char** environ;
#endif

namespace {

std::map<std::string, NXS_ChildTask>& tasks() {
    static std::map<std::string, NXS_ChildTask> map;
    return map;
}

std::string& self() {
    static std::string path;
    return path;
}

} // namespace

NXS_ChildEntry::NXS_ChildEntry(char const* name, NXS_ChildTask task) {
    tasks()[name] = task;
}

int nxChildRun(char const* name, int argc, char** argv) {
    auto const found = tasks().find(name);
    if (found == tasks().end()) {
        std::fprintf(stderr, "no child task %s\n", name);
        return 125;
    }
    return found->second(argc, argv);
}

std::string const& nxSelf() {
    return self();
}

void nxSelfSet(char const* program) {
    self() = std::filesystem::absolute(program).string();
}

#if defined(_WIN32)

unsigned int nxProcessId() {
    return GetCurrentProcessId();
}

void nxEnvironmentSet(char const* name, char const* value) {
    SetEnvironmentVariableA(name, value);
    _putenv((std::string(name) + "=" + value).c_str());
}

NXS_Child::NXS_Child(char const* name, std::vector<std::string> const& arguments) : handle_(0) {
    std::vector<char const*> argv = {self().c_str(), "--child", name};
    for (std::string const& argument : arguments)
        argv.push_back(argument.c_str());
    argv.push_back(nullptr);
    handle_ = _spawnv(_P_NOWAIT, self().c_str(), argv.data());
}

bool NXS_Child::isRunning() {
    return handle_ > 0 &&
           WaitForSingleObject(reinterpret_cast<HANDLE>(static_cast<intptr_t>(handle_)), 0) != 0;
}

int NXS_Child::wait() {
    if (handle_ > 0) {
        int status = -1;
        _cwait(&status, static_cast<intptr_t>(handle_), 0);
        handle_ = 0;
        result_ = status;
    }
    return result_;
}

void NXS_Child::kill() {
    if (handle_ > 0)
        TerminateProcess(reinterpret_cast<HANDLE>(static_cast<intptr_t>(handle_)), 99);
}

bool nxMemoryLimit(unsigned int) {
    return true;
}

#else

unsigned int nxProcessId() {
    return static_cast<unsigned int>(getpid());
}

void nxEnvironmentSet(char const* name, char const* value) {
    setenv(name, value, 1);
}

NXS_Child::NXS_Child(char const* name, std::vector<std::string> const& arguments) : handle_(0) {
    std::vector<std::string> texts = {self(), "--child", name};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& text : texts)
        argv.push_back(text.data());
    argv.push_back(nullptr);
    pid_t pid = 0;
    if (posix_spawn(&pid, self().c_str(), nullptr, nullptr, argv.data(), environ) == 0)
        handle_ = pid;
}

bool NXS_Child::isRunning() {
    siginfo_t ended = {};
    return handle_ > 0 &&
           waitid(P_PID, static_cast<id_t>(handle_), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           ended.si_pid == 0;
}

int NXS_Child::wait() {
    if (handle_ > 0) {
        int status = 0;
        waitpid(static_cast<pid_t>(handle_), &status, 0);
        handle_ = 0;
        result_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    return result_;
}

void NXS_Child::kill() {
    if (handle_ > 0)
        ::kill(static_cast<pid_t>(handle_), SIGKILL);
}

bool nxMemoryLimit(unsigned int more) {
    unsigned long pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    rlim_t const most = pages * static_cast<unsigned long>(sysconf(_SC_PAGESIZE)) + more;
    rlimit const limit = {most, most};
    return setrlimit(RLIMIT_AS, &limit) == 0;
}

#endif

NXS_Child::~NXS_Child() {
    wait();
}

int nxRunSelf(char const* name, std::vector<std::string> const& arguments) {
    return NXS_Child(name, arguments).wait();
}

bool nxFileAwait(char const* name) {
    for (int n = 0; n < 1000; ++n) {
        if (std::filesystem::exists(name))
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}
