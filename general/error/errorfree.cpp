// general/error/errorfree.cpp - raising errors, and the free functions on the calling thread's error and
// manager.
#include <cstdint>

#include "general/error/errorintern.h"
#include "general/error/errorman.h"

int NxERROR(int num) {
    NX_ErrorMan* const manager = NxErrorManP();
    manager->errorBufErrorNum(num);
    return num == errorNumSystem ? manager->errorBufSys(nxErrorSysLast()) : -1;
}

int NxERROR(int num, char const* file, unsigned int line) {
    NX_ErrorMan* const manager = NxErrorManP();
    manager->errorBufErrorNum(num);
    manager->errorBufC(file, line);
    return num == errorNumSystem ? manager->errorBufSys(nxErrorSysLast()) : -1;
}

int NxWinERROR(int num) {
    return NxWinERRORSys(num, 0);
}

int NxWinERROR(int num, char const* file, unsigned int line) {
    return NxWinERRORSys(num, 0, file, line);
}

int NxWinERRORSys(int num, long sys) {
    NX_ErrorMan* const manager = NxErrorManP();
    manager->errorBufErrorNum(num);
    if (sys != 0)
        manager->errorBufSys(num); // the number, not the code: readers of logs rely on it
    manager->errorLog(nullptr);
    return -1;
}

int NxWinERRORSys(int num, long sys, char const* file, unsigned int line) {
    NX_ErrorMan* const manager = NxErrorManP();
    manager->errorBufErrorNum(num);
    manager->errorBufC(file, line);
    if (sys != 0)
        manager->errorBufSys(num);
    manager->errorLog(nullptr);
    return -1;
}

int NxErrorNum() {
    return NxErrorP()->errorNum();
}

NX_ErrorType NxErrorType() {
    return NxErrorP()->errorType();
}

NX_ErrorSeverity NxErrorSeverity() {
    return NxErrorP()->errorSeverity();
}

int NxErrorIsError() {
    return NxErrorP()->errorIsError();
}

int NxErrorIsOK() {
    return NxErrorP()->errorIsOK();
}

int NxErrorIsAbort() {
    return NxErrorP()->errorIsAbort();
}

int NxErrorIsRetry() {
    return NxErrorP()->errorIsRetry();
}

int NxErrorOk() {
    return NxErrorP()->errorOk();
}

int NxErrorOrOK() {
    return NxErrorP()->errorOrOK();
}

int NxErrorBufErrorNum(int num) {
    return NxErrorManP()->errorBufErrorNum(num);
}

int NxErrorBufErrorNum(int num, long sys) {
    return NxErrorManP()->errorBufErrorNum(num, sys);
}

int NxErrorBufC(char const* file, unsigned int line) {
    return NxErrorManP()->errorBufC(file, line);
}

int NxErrorBufFileName(char const* name) {
    return NxErrorManP()->errorBufFileName(name);
}

int NxErrorBufFileName(NX_StringA const& name) {
    return NxErrorManP()->errorBufFileName(name);
}

int NxErrorBufLibName(char const* name) {
    return NxErrorManP()->errorBufLibName(name);
}

int NxErrorBufText(char const* text) {
    return NxErrorManP()->errorBufText(text);
}

int NxErrorBufValue(long value) {
    return NxErrorManP()->errorBufVal(value);
}

int NxErrorBufPos(long pos) {
    return NxErrorManP()->errorBufPos(pos);
}

int NxErrorBufSys(long sys) {
    return NxErrorManP()->errorBufSys(sys);
}

int NxErrorBufHex(long value) {
    return NxErrorManP()->errorBufHex(value);
}

int NxErrorBufX(unsigned long const* values, unsigned int count) {
    return NxErrorManP()->errorBufX(values, count);
}

int NxErrorBuf(char letter, long value) {
    return NxErrorManP()->errorBuf(letter, value);
}

int NxErrorBuf(char letter, long value, int radix) {
    return NxErrorManP()->errorBuf(letter, value, radix);
}

int NxErrorBuf(char letter, unsigned long const* values, unsigned int count, int radix) {
    return NxErrorManP()->errorBuf(letter, values, count, radix);
}

int NxErrorBuf(char letter, char const* text) {
    return NxErrorManP()->errorBuf(letter, text);
}

int NxErrorBuf(char letter, NX_StringA const& text) {
    return NxErrorManP()->errorBuf(letter, text);
}

int NxErrorBuf(char letter, char const* text, unsigned int length) {
    return NxErrorManP()->errorBuf(letter, text, length);
}

NX_StringA NxErrorBuf() {
    return NxErrorManP()->errorBuf(NX_NO_INDEX);
}

NX_StringA NxErrorString() {
    return NxErrorManP()->errorString();
}

void NxErrorLog(char const* note) {
    NxErrorManP()->errorLog(note);
}

void NxErrorLog(char const* note, char const* file, unsigned int line) {
    NxErrorManP()->errorLog(note, file, line);
}

int NxErrorOut() {
    return NxErrorManP()->errorOut();
}

int NxErrorOut(std::ostream& os) {
    return NxErrorManP()->errorOut(os);
}

int NxErrorRetry(int flag) {
    return NxErrorManP()->errorRetry(flag);
}

int NxErrorRetry(NX_Timer const& timer, int flag) {
    return NxErrorManP()->errorRetry(timer, flag);
}

void NxErrorAbort(char const* note) {
    NxErrorManP()->errorAbort(note);
}

void NxErrorAbort(char const* note, char const* file, unsigned int line) {
    NxErrorManP()->errorAbort(note, file, line);
}

void NxErrorAbortIf(char const* note) {
    NxErrorManP()->errorAbortIf(note);
}

void NxErrorAbortIf(char const* note, char const* file, unsigned int line) {
    NxErrorManP()->errorAbortIf(note, file, line);
}
