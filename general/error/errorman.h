// general/error/errorman.h - the recorder of errors: a failing operation records a number and details here
// and returns -1; a caller turns them into a message, a log entry, another try or the end of the process.
//
// Details are words letter=value, separated by blanks, in a bounded buffer: the newest stay, the oldest are
// forgotten first. Managers form a stack per thread: NxERROR and NxErrorBuf... address the calling thread's
// innermost one. A scope that constructs its own manager hands what it recorded to the enclosing one at its
// end. Managers of one thread are destroyed in reverse order of construction.
// Threads: all may use the process-wide manager at once; any other belongs to its own thread.
// Failure: a manager reports no failures of its own. Recording members return -1.
#pragma once

#include <cstdint>
#include <iosfwd>

#include "general/error/errorbuf.h"
#include "general/error/errornum.h"

class NX_App;
class NX_Thread;
class NX_Timer;

// Tells the constructor to forget the last system code of earlier failures, as operations on files do at
// their start.
enum NX_ErrorManScope : int { NX_ErrorManSysReset = 0 };

class NX_EXPORT NX_ErrorMan {
public:
    NX_ErrorMan();                               // becomes the calling thread's innermost manager
    explicit NX_ErrorMan(unsigned int capacity); // the same with room for `capacity` characters of details
    explicit NX_ErrorMan(NX_ErrorManScope);      // as NX_ErrorMan(), then the last system code is 0
    NX_ErrorMan(NX_ErrorMan const&) = delete;
    NX_ErrorMan& operator=(NX_ErrorMan const&) = delete;
    ~NX_ErrorMan(); // merges when it has an error; then the enclosing manager is innermost again

    // Hands the buffer's words, as one block, and the number to the enclosing manager and empties the buffer.
    // The number is kept. Does nothing without an enclosing manager or an error.
    void errorMerge();

    NX_ErrorMan* errorParentP() const { return parent; } // null for the process-wide manager
    NX_Thread* errorThreadP() const; // the owner, else the calling thread's object; may be null
    NX_ErrorNum errorNum() const { return error.errorNum(); } // its own; 0 when it recorded nothing

    // Forgets this manager's own number, so that its end merges nothing: for a scope that succeeded after
    // all. The thread's current error stays. Returns 0.
    int errorOk() { return error.errorOk(); }

    // Recording. A null text records nothing. Values are 32 bits wide; only radix 10 shows a sign.
    int errorBufErrorNum(int num);           // this manager's and the thread's error; E = code of the number
    int errorBufErrorNum(int num, long sys); // also S
    int errorBufC(char const* file, unsigned int line); // c = file,line; a null file counts as empty
    int errorBufFileName(char const* name);             // F
    int errorBufFileName(NX_StringA const& name);
    int errorBufLibName(char const* name);                          // L
    int errorBufText(char const* text);                             // T
    int errorBufVal(long value);                                    // V
    int errorBufPos(long pos);                                      // P
    int errorBufSys(long sys);                                      // S
    int errorBufHex(long value);                                    // H, hexadecimal
    int errorBufX(unsigned long const* values, unsigned int count); // X, hexadecimal, joined by ","
    int errorBuf(char letter, long value);                          // letter 0: a word without letter
    int errorBuf(char letter, long value, int radix);               // radix 2 to 36
    int errorBuf(char letter, unsigned long const* values, unsigned int count, int radix);
    int errorBuf(char letter, char const* text);
    int errorBuf(char letter, NX_StringA const& text);
    int errorBuf(char letter, char const* text, unsigned int length);

    // The details of the last error (from the last "E=" on) when `maxLength` is NX_NO_INDEX. Otherwise the
    // newest words that fit into `maxLength` characters, or the last characters when a single word is longer.
    NX_StringA errorBuf(unsigned int maxLength) const;

    // The message of the calling thread's current error: the application's template, filled from this buffer.
    NX_StringA errorString() const;

    // Writes message, details and, when given, a note and a source position to the log.
    void errorLog(char const* note) const;
    void errorLog(char const* note, char const* file, unsigned int line) const;

    // Writes the message and an end of line to the stream, standard output by default. Returns -1.
    int errorOut() const;
    int errorOut(std::ostream& os) const;

    // Whether to try again: 0 without a timer or with a disabled one. With an enabled timer that is not
    // expired and an error of type errorTypeRetry: waits and returns the number of waits so far. The last
    // argument has no effect.
    int errorRetry(int);
    int errorRetry(NX_Timer const& timer, int);
    int
    errorRetryDelay(); // sleeps 5 ms at first, a second from the tenth time on; returns the number of waits

    // Logs as errorLog, then aborts the process; the ...If forms only when the error is of type
    // errorTypeAbort.
    [[noreturn]] void errorAbort(char const* note) const;
    [[noreturn]] void errorAbort(char const* note, char const* file, unsigned int line) const;
    void errorAbortIf(char const* note) const;
    void errorAbortIf(char const* note, char const* file, unsigned int line) const;

private:
    friend NX_ErrorMan* nxErrorManOfProcess();

    NX_ErrorMan(unsigned int capacity, int); // the process-wide manager
    void errorInit();
    void errorNumSet(int num);
    int errorIsShared() const;

    NX_Error error;
    NX_ErrorMan* parent;
    NXS_Shared<std::uint32_t> retryCount;
    NXS_ErrorBuf buffer;
    NX_Thread* thread;     // owner; null for the process-wide manager
    NX_Thread* lastWriter; // compared only, never followed
};

// The process-wide manager lives from first use to the end of the process. Init makes it; Uninit does
// nothing.
NX_EXPORT void NxErrorManInit(NX_App* app);
NX_EXPORT void NxErrorManUninit();

NX_EXPORT NX_ErrorMan*
NxErrorManP(); // the calling thread's innermost manager, else the process-wide one; never null
NX_EXPORT NX_Error* NxErrorP(); // the calling thread's current error, else the process-wide one; never null

// Raising: all record `num` with NxErrorManP() and return -1. errorNumSystem also records the last system
// code as S.
NX_EXPORT int NxERROR(int num);
NX_EXPORT int NxERROR(int num, char const* file, unsigned int line);
// The same without the system code, and written to the log at once.
NX_EXPORT int NxWinERROR(int num);
NX_EXPORT int NxWinERROR(int num, char const* file, unsigned int line);
// As NxWinERROR; when `sys` is not 0, the number itself is repeated as S, as readers of logs expect.
NX_EXPORT int NxWinERRORSys(int num, long sys);
NX_EXPORT int NxWinERRORSys(int num, long sys, char const* file, unsigned int line);

// The calling thread's current error.
NX_EXPORT int NxErrorNum();
NX_EXPORT NX_ErrorType NxErrorType();
NX_EXPORT NX_ErrorSeverity NxErrorSeverity();
NX_EXPORT int NxErrorIsError(); // 1 or 0
NX_EXPORT int NxErrorIsOK();
NX_EXPORT int NxErrorIsAbort();
NX_EXPORT int NxErrorIsRetry();
NX_EXPORT int NxErrorOk();   // forgets it; returns 0
NX_EXPORT int NxErrorOrOK(); // -1 when there is one, else 0

// The members of the same names on NxErrorManP().
NX_EXPORT int NxErrorBufErrorNum(int num);
NX_EXPORT int NxErrorBufErrorNum(int num, long sys);
NX_EXPORT int NxErrorBufC(char const* file, unsigned int line);
NX_EXPORT int NxErrorBufFileName(char const* name);
NX_EXPORT int NxErrorBufFileName(NX_StringA const& name);
NX_EXPORT int NxErrorBufLibName(char const* name);
NX_EXPORT int NxErrorBufText(char const* text);
NX_EXPORT int NxErrorBufValue(long value);
NX_EXPORT int NxErrorBufPos(long pos);
NX_EXPORT int NxErrorBufSys(long sys);
NX_EXPORT int NxErrorBufHex(long value);
NX_EXPORT int NxErrorBufX(unsigned long const* values, unsigned int count);
NX_EXPORT int NxErrorBuf(char letter, long value);
NX_EXPORT int NxErrorBuf(char letter, long value, int radix);
NX_EXPORT int NxErrorBuf(char letter, unsigned long const* values, unsigned int count, int radix);
NX_EXPORT int NxErrorBuf(char letter, char const* text);
NX_EXPORT int NxErrorBuf(char letter, NX_StringA const& text);
NX_EXPORT int NxErrorBuf(char letter, char const* text, unsigned int length);
NX_EXPORT NX_StringA NxErrorBuf(); // the details of the last error
NX_EXPORT NX_StringA NxErrorString();
NX_EXPORT void NxErrorLog(char const* note);
NX_EXPORT void NxErrorLog(char const* note, char const* file, unsigned int line);
NX_EXPORT int NxErrorOut();
NX_EXPORT int NxErrorOut(std::ostream& os);
NX_EXPORT int NxErrorRetry(int);
NX_EXPORT int NxErrorRetry(NX_Timer const& timer, int);
[[noreturn]] NX_EXPORT void NxErrorAbort(char const* note);
[[noreturn]] NX_EXPORT void NxErrorAbort(char const* note, char const* file, unsigned int line);
NX_EXPORT void NxErrorAbortIf(char const* note);
NX_EXPORT void NxErrorAbortIf(char const* note, char const* file, unsigned int line);
