// general/error/errornum.h - error numbers: their layout, types, severities and the library's own numbers.
//
// A number has 32 bits: bits 11 to 15 are the type, bits 0 to 10 the code within the type; 0 is no error.
// Callers make further numbers as type | code. The message of a number is a template, chosen by the
// application object and filled by the error manager. Nothing here fails; a number nobody knows still has a
// severity and a message.
#pragma once

#include "general/platform/fwd.h"
#include "general/process/sharedword.h"

typedef int NX_ErrorNum;

// What kind of failure a number tells: num & 0xF800.
enum NX_ErrorType : int {
    errorTypeOk = 0x0000,
    errorTypeInfo = 0x0800,
    errorTypeWarning = 0x1000,
    errorTypeUserInput = 0x1800,
    errorTypeExists = 0x2000,
    errorTypeRetry = 0x2800, // locked by someone: the only type for which a retry can help
    errorTypeAccess = 0x3000,
    errorTypeNotFound = 0x3800,
    errorTypeFull = 0x4000, // space or memory exhausted
    errorTypeResources = 0x4800,
    errorTypeSystem = 0x5000,
    errorTypeData = 0x5800,
    errorTypeVersion = 0x6000,
    errorTypeText = 0x6800,
    errorTypeVersionValue = 0x7000,
    errorTypeUsage = 0x7800,
    errorTypeAbort = 0x8000
};

enum NX_ErrorSeverity : int {
    errorSeverityNone = 0,
    errorSeverityNote = 1,
    errorSeverityTemporary = 2,
    errorSeveritySystem = 3,
    errorSeverityPermanent = 4, // this and above cannot be mended by trying again
    errorSeverityFatal = 5
};

// The numbers that the library raises itself. Those without a code (8192, 10240, 14336, 32768) tell only a
// type.
inline constexpr NX_ErrorNum errorNumExists = 8192;
inline constexpr NX_ErrorNum errorNumFileExists = 8402;
inline constexpr NX_ErrorNum errorNumRetry = 10240;
inline constexpr NX_ErrorNum errorNumFileShared = 10440; // sharing or lock violation
inline constexpr NX_ErrorNum errorNumFileLocked = 10445; // a byte range is locked by someone else
inline constexpr NX_ErrorNum errorNumFileAccess = 12489;
inline constexpr NX_ErrorNum errorNumNotFound = 14336;
inline constexpr NX_ErrorNum errorNumFuncNotFound = 14497;
inline constexpr NX_ErrorNum errorNumResLibNotFound = 14498;
inline constexpr NX_ErrorNum errorNumFileNotFound = 14547;
inline constexpr NX_ErrorNum errorNumStringNotFound = 14856; // string resource; its id is recorded as V
inline constexpr NX_ErrorNum errorNumDiskFull = 16625;
inline constexpr NX_ErrorNum errorNumMemFull = 16884;
inline constexpr NX_ErrorNum errorNumSystem = 21060; // any other system failure; its code is recorded as S
inline constexpr NX_ErrorNum errorNumThreadCreate = 21100;
inline constexpr NX_ErrorNum errorNumDataOrder = 22528; // a vector is not in order
inline constexpr NX_ErrorNum errorNumFileShort = 22748; // fewer bytes in a file than asked for
inline constexpr NX_ErrorNum errorNumImage = 22749;     // not a module, or one that cannot be loaded
inline constexpr NX_ErrorNum errorNumLibVersion = 24739;
inline constexpr NX_ErrorNum errorNumStringRead = 26849;
inline constexpr NX_ErrorNum errorNumPersistText = 26850;
inline constexpr NX_ErrorNum errorNumPersistVersion = 28899; // text persistence of another version
inline constexpr NX_ErrorNum errorNumAbort = 32768;
inline constexpr NX_ErrorNum errorNumAbortUsage = 32769;
inline constexpr NX_ErrorNum errorNumLockMode = 32869; // invalid mode of a file lock
inline constexpr NX_ErrorNum errorNumFuncUsage = 32870;

// 0 to 5; 5 for a type index of 17 or more.
NX_EXPORT NX_ErrorSeverity NxErrorSeverity(int num);

// 1 when the severity of `num` is permanent or fatal, else 0.
NX_EXPORT int NxErrorIsPerm(int num);

// The type for a code from GetLastError; errorTypeSystem for one that is not known. Remembers the code as the
// process-wide last system code, which the generic system error records.
NX_EXPORT NX_ErrorType NxErrorTypeOfSys(long sys);

// One error number: a thread's current error, or an object's last one. May be read and set by any thread.
class NX_EXPORT NX_Error {
public:
    NX_Error(NX_ErrorNum errorNum) : num(errorNum) {}

    NX_ErrorNum errorNum() const { return num; }
    int errorNum(NX_ErrorNum errorNum) { // returns -1
        num = errorNum;
        return -1;
    }
    // Sets the number and records it in the calling thread's error manager. Returns -1.
    int errorERROR(NX_ErrorNum errorNum);

    NX_ErrorType errorType() const { return static_cast<NX_ErrorType>(num & 0xF800); }
    int errorTypeNormal() const { return (num & 0xF800) >> 11; }   // the type's index, 0 to 31
    int errorNumNormal() const { return num & 0x7FF; }             // the code within the type
    int errorNumResId() const { return errorNumNormal() + 25000; } // id of the message's string resource
    NX_ErrorSeverity errorSeverity() const { return NxErrorSeverity(num); }

    int errorIsError() const { return num != 0; } // questions: 1 or 0
    int errorIsOK() const { return num == 0; }
    int errorIsAbort() const { return errorType() == errorTypeAbort; }
    int errorIsNotFound() const { return errorType() == errorTypeNotFound; }
    int errorIsRetry() const { return errorType() == errorTypeRetry; }
    int errorOk() { // forgets the error; returns 0
        num = 0;
        return 0;
    }
    int errorOrOK() const { return num != 0 ? -1 : 0; }

private:
    NXS_Shared<NX_ErrorNum> num;
};
