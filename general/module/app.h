// general/module/app.h - the application object and the version check.
//
// A program constructs exactly one NX_App, or one of its two ready-made variants, in its entry point and
// calls appBegin(). The constructor registers the object as the library's application, starts the heap layer
// and the error manager, creates the primary thread's object and takes the program's names from its first
// argument. Before it exists and after it is gone the library works with defaults. Threads: constructed, run
// and destroyed on one thread, the primary one. Its accessors may be called from any.
#pragma once

#include "general/module/dll.h"
#include "general/text/stringa.h"

class NX_App;
class NX_Mem;
class NX_Thread;
class NX_TraceImp;
class NX_TraceTimeTotal;

// What the program's entry point knows. An aggregate; nothing is owned, all of it outlives the application.
struct NX_MainInfo {
    NX_App** app;     // where the application object stores its own address; may be null
    int argC;         // number of arguments
    char** argV;      // the arguments; the first is the program's name
    char* env;        // environment block
    HINSTANCE anchor; // the program's module
};

class NX_EXPORT NX_App {
public:
    NX_App(NX_App const&) = delete;
    NX_App& operator=(NX_App const&) = delete;
    virtual ~NX_App();

    // Runs the program: appInit, then appMain unless appInit gave -1, then appUninit in any case. Returns the
    // last result of the first two.
    virtual int appBegin();

    // Opens the program's resource module (its absence is no error) and the language module, and prepares the
    // memory-shortage box. 0 or 1; -1 when the language module does not open.
    virtual int appInit();

    // The program. Overridden by every program; the base version is an assertion failure.
    virtual int appMain();

    // For programs that drive a loop of their own; appBegin does not call it. The base version is an
    // assertion failure.
    virtual int appRun();

    // Takes the primary thread out of the thread registry.
    virtual void appUninit();

    // The message template for error `num`: the string resource 25000 plus code, else the one of 29500 plus
    // type index, else the built-in text.
    virtual NX_StringA appErrorString(int num);

    // Shows help; the base version does nothing.
    virtual void appHelp(int id);

    // Called when an allocation of `size` bytes has failed `failCount` times in a row: asks the user. 1: try
    // again; 0: give up.
    virtual int appMemUnavail(unsigned int size, int failCount);

    // Loads the string resource `id` from the program's resource module, the language module or the program
    // itself, in this order, cut to `size` characters with the terminator. Returns its length; -1 when there
    // is none, with error 14856 and V = id unless the id is in the error message range (25000 to 29999).
    virtual int resTextLoad(char* buffer, int size, int id);

    int appArgC() const { return argC_; }
    char** appArgV() const { return argV_; }
    char* appEnvP() const { return env_; }
    NX_StringA const& appName() const { return name_; } // the program's name without directory and extension
    NX_StringA const& appNameFull() const { return nameFull_; } // the first argument as given
    NX_StringA const& appDirInitial() const { return dirInitial_; }
    HINSTANCE appInstanceAnchor() const { return anchor_; }
    int appIsBox() const { return isBox_; } // 1 for the message-box variant
    int appMsgQueue() const { return msgQueue_; }
    HWND appWinMainHand() const { return winMain_; }

    NX_Mem* appMemP() const { return mem_; }
    void appMemP(NX_Mem* mem) { mem_ = mem; }

    NX_Thread& appThread() const { return *thread_; }
    NX_Thread* appThreadP() const { return thread_; }

    // The title; the program's name while none is set.
    NX_StringA const& appTitle() const;
    void appTitle(NX_StringA const& title) { title_ = title; }

    // Pointers kept for a tracing facility outside this library.
    NX_TraceImp* appTraceImpP() const { return traceImp_; }
    void appTraceImpP(NX_TraceImp* imp) { traceImp_ = imp; }
    NX_TraceTimeTotal* appTraceTimeListP() const { return traceTimeList_; }
    void appTraceTimeListP(NX_TraceTimeTotal* list) { traceTimeList_ = list; }

    // The name of the program's resource module.
    NX_StringA const& appResName() const { return resName_; }

    // Names and opens the language module; the previous one is released. 1 open, 0 the name is empty, -1 not
    // opened with the error recorded.
    int appResLang(NX_StringA const& name);

protected:
    explicit NX_App(NX_MainInfo const& info);

private:
    friend class NX_AppBox;

    NX_ResLib resLib_;
    int argC_;
    char** argV_;
    char* env_;
    NX_StringA name_;
    NX_StringA nameFull_;
    NX_Dll res_;
    NX_StringA resName_;
    NX_Dll lang_;
    NX_StringA langName_;
    NX_StringA dirInitial_;
    HINSTANCE anchor_;
    NX_Mem* mem_ = nullptr;
    int msgQueue_ = 0;
    NX_Thread* thread_ = nullptr;
    NX_StringA title_;
    NX_TraceImp* traceImp_ = nullptr;
    NX_TraceTimeTotal* traceTimeList_ = nullptr;
    HWND winMain_ = nullptr;
    int isBox_ = 0;
};

// The variant for programs that are only a message box or a dialog.
class NX_EXPORT NX_AppBox : public NX_App {
public:
    int appInit() override; // as the base, but 0 on success
    void appUninit() override;

protected:
    explicit NX_AppBox(NX_MainInfo const& info);
};

// The silent variant: registers names, errors and memory, and runs nothing.
class NX_EXPORT NX_AppNull : public NX_App {
public:
    explicit NX_AppNull(NX_MainInfo const& info);

    int appBegin() override { return 0; }
    int appInit() override { return 0; }
    int appMain() override { return 0; }
    int appRun() override { return 0; }
    void appUninit() override {}
};

// The registered application, or null.
NX_EXPORT NX_App* NxAppPDll();
NX_EXPORT void NxAppPInitDll(NX_App* app);
NX_EXPORT void NxAppPUninitDll();

// What a program was built against. An aggregate.
struct NX_BaseVersion {
    unsigned int major;
    unsigned int minor;
    char text[32]; // terminated build text
};

// The version these headers belong to.
inline constexpr NX_BaseVersion NX_BASE_VERSION = {41, 1, "VX7BASE"};

// Checks at program start that the loaded library is the one the program was built against. Unregisters the
// application. 0 when both numbers and the text are equal; otherwise shows error 24739 in a message box, logs
// it and ends the process. Exported under its plain name.
extern "C" NX_EXPORT int NxBaseDllValidate(NX_BaseVersion const* version, NX_MainInfo const* info);
