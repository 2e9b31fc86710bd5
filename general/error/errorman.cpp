// general/error/errorman.cpp - the error manager: the stack of managers, recording, output, retry and abort.
#include "general/error/errorman.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include "general/error/appup.h"
#include "general/error/errorintern.h"
#include "general/error/errortemplate.h"
#include "general/error/log.h"
#include "general/platform/platform.h"
#include "general/process/sem.h"
#include "general/process/thread.h"
#include "general/process/timer.h"

namespace {

// Serialises the buffer of the process-wide manager.
NX_SemThreadOfProcess* errorLock() {
    static NX_SemThreadOfProcess& lock = *new NX_SemThreadOfProcess;
    return &lock;
}

// The current error of threads without object.
NX_Error& errorOfProcess() {
    static NX_Error& error = *new NX_Error(0);
    return error;
}

// A text of up to `capacity` characters, on the stack while it is short.
class Scratch {
public:
    explicit Scratch(std::uint64_t capacity) : memory(room) {
        if (capacity > sizeof room) {
            if (capacity > NX_NO_INDEX)
                nxMemExhausted();
            NxMemHeapAlloc(&heap, static_cast<unsigned int>(capacity));
            memory = static_cast<char*>(heap);
        }
    }
    Scratch(Scratch const&) = delete;
    Scratch& operator=(Scratch const&) = delete;
    ~Scratch() { NxMemHeapFree(&heap); }

    char* memory;

private:
    char room[256];
    void* heap = nullptr;
};

} // namespace

NX_ErrorMan* nxErrorManOfProcess() {
    static NX_ErrorMan& manager = *new NX_ErrorMan(512, 0);
    return &manager;
}

NX_ErrorMan::NX_ErrorMan() : error(0), parent(nullptr), retryCount(0), thread(nullptr), lastWriter(nullptr) {
    errorInit();
}

NX_ErrorMan::NX_ErrorMan(unsigned int capacity)
    : error(0), parent(nullptr), retryCount(0), buffer(capacity), thread(nullptr), lastWriter(nullptr) {
    errorInit();
}

NX_ErrorMan::NX_ErrorMan(NX_ErrorManScope) : NX_ErrorMan() {
    nxErrorSysLast(0);
}

NX_ErrorMan::NX_ErrorMan(unsigned int capacity, int)
    : error(0), parent(nullptr), retryCount(0), buffer(capacity), thread(nullptr), lastWriter(nullptr) {}

void NX_ErrorMan::errorInit() {
    thread = nxThreadLiveP();
    if (thread != nullptr) {
        parent = thread->errorMan;
        thread->errorMan = this;
    } else {
        parent = nxErrorManOfProcess();
    }
}

NX_ErrorMan::~NX_ErrorMan() {
    if (parent == nullptr)
        return;
    errorMerge();
    if (thread != nullptr)
        thread->errorMan = parent;
}

void NX_ErrorMan::errorMerge() {
    if (parent == nullptr || error.errorIsOK())
        return;
    parent->errorBuf('\0', buffer.wordsP(), buffer.wordsLen());
    parent->errorNumSet(error.errorNum());
    buffer.wordsForget();
}

NX_Thread* NX_ErrorMan::errorThreadP() const {
    return thread != nullptr ? thread : nxThreadLiveP();
}

int NX_ErrorMan::errorIsShared() const {
    return thread == nullptr && parent == nullptr;
}

// This manager's number and the current error of the thread it records for.
void NX_ErrorMan::errorNumSet(int num) {
    error.errorNum(num);
    NX_Thread* const owner = errorThreadP();
    (owner != nullptr ? *owner->threadErrorNumP() : errorOfProcess()).errorNum(num);
}

int NX_ErrorMan::errorBuf(char letter, char const* text, unsigned int length) {
    if (text == nullptr)
        return -1;
    NX_SyncThreadOfProcess const sync(errorLock(), errorIsShared());
    NX_Thread* const writer = errorThreadP();
    if (writer != lastWriter) {
        lastWriter = writer;
        char word[nxErrorDigitsMax + 4] = "(<";
        char* end = nxErrorDigits(
            word + 2, static_cast<long>(writer != nullptr ? writer->threadId() : GetCurrentThreadId()), 10);
        *end++ = '>';
        *end++ = ')';
        buffer.wordAppend('\0', word, static_cast<unsigned int>(end - word));
    }
    buffer.wordAppend(letter, text, length);
    return -1;
}

int NX_ErrorMan::errorBuf(char letter, char const* text) {
    return text != nullptr ? errorBuf(letter, text, static_cast<unsigned int>(std::strlen(text))) : -1;
}

int NX_ErrorMan::errorBuf(char letter, NX_StringA const& text) {
    return errorBuf(letter, text.dataPConst(), text.strLen());
}

int NX_ErrorMan::errorBuf(char letter, long value) {
    return errorBuf(letter, value, 10);
}

int NX_ErrorMan::errorBuf(char letter, long value, int radix) {
    char digits[nxErrorDigitsMax];
    char const* const end = nxErrorDigits(digits, value, radix);
    return errorBuf(letter, digits, static_cast<unsigned int>(end - digits));
}

int NX_ErrorMan::errorBuf(char letter, unsigned long const* values, unsigned int count, int radix) {
    if (values == nullptr)
        return -1;
    Scratch const text(std::uint64_t{count} * (nxErrorDigitsMax + 1));
    char* end = text.memory;
    for (unsigned int i = 0; i < count; ++i) {
        if (i != 0)
            *end++ = ',';
        end = nxErrorDigits(end, static_cast<long>(values[i]), radix);
    }
    return errorBuf(letter, text.memory, static_cast<unsigned int>(end - text.memory));
}

int NX_ErrorMan::errorBufErrorNum(int num) {
    errorNumSet(num);
    return errorBuf('E', num & 0x7FF, 10);
}

int NX_ErrorMan::errorBufErrorNum(int num, long sys) {
    errorBufErrorNum(num);
    return errorBufSys(sys);
}

int NX_ErrorMan::errorBufC(char const* file, unsigned int line) {
    std::size_t const length = file != nullptr ? std::strlen(file) : 0;
    Scratch const text(length + 1 + nxErrorDigitsMax);
    if (length != 0)
        std::memcpy(text.memory, file, length);
    char* end = text.memory + length;
    *end++ = ',';
    if (line > 0x7FFFFFFFu) { // two parts, because one value shows a sign
        end = nxErrorDigits(end, static_cast<long>(line / 10), 10);
        line %= 10;
    }
    end = nxErrorDigits(end, static_cast<long>(line), 10);
    return errorBuf('c', text.memory, static_cast<unsigned int>(end - text.memory));
}

int NX_ErrorMan::errorBufFileName(char const* name) {
    return errorBuf('F', name);
}

int NX_ErrorMan::errorBufFileName(NX_StringA const& name) {
    return errorBuf('F', name);
}

int NX_ErrorMan::errorBufLibName(char const* name) {
    return errorBuf('L', name);
}

int NX_ErrorMan::errorBufText(char const* text) {
    return errorBuf('T', text);
}

int NX_ErrorMan::errorBufVal(long value) {
    return errorBuf('V', value, 10);
}

int NX_ErrorMan::errorBufPos(long pos) {
    return errorBuf('P', pos, 10);
}

int NX_ErrorMan::errorBufSys(long sys) {
    return errorBuf('S', sys, 10);
}

int NX_ErrorMan::errorBufHex(long value) {
    return errorBuf('H', value, 16);
}

int NX_ErrorMan::errorBufX(unsigned long const* values, unsigned int count) {
    return errorBuf('X', values, count, 16);
}

NX_StringA NX_ErrorMan::errorBuf(unsigned int maxLength) const {
    NX_SyncThreadOfProcess const sync(errorLock(), errorIsShared());
    return maxLength == NX_NO_INDEX ? buffer.wordsOfLastError() : buffer.wordsNewest(maxLength);
}

NX_StringA NX_ErrorMan::errorString() const {
    NX_StringA const text = nxAppErrorString(NxErrorNum());
    return nxErrorTemplateFill(text, errorBuf(NX_NO_INDEX));
}

void NX_ErrorMan::errorLog(char const* note) const {
    NX_StringA const message = errorString();
    NX_StringA const details = errorBuf(341);
    if (note == nullptr)
        NxLogPrintF("Error: %s\n  Buf: %s", message.dataPConst(), details.dataPConst());
    else
        NxLogPrintF("Error: %s\n Note: %s\n  Buf: %s", message.dataPConst(), note, details.dataPConst());
}

void NX_ErrorMan::errorLog(char const* note, char const* file, unsigned int line) const {
    NX_StringA const message = errorString();
    NX_StringA const details = errorBuf(341);
    if (file == nullptr)
        file = "";
    if (note == nullptr)
        NxLogPrintF("Error: %s\n  Buf: %s\n File: %s,%u", message.dataPConst(), details.dataPConst(), file,
                    line);
    else
        NxLogPrintF("Error: %s\n Note: %s\n  Buf: %s\n File: %s,%u", message.dataPConst(), note,
                    details.dataPConst(), file, line);
}

int NX_ErrorMan::errorOut() const {
    return errorOut(std::cout);
}

int NX_ErrorMan::errorOut(std::ostream& os) const {
    NX_StringA const message = errorString();
    os.write(message.dataPConst(), static_cast<std::streamsize>(message.strLen()));
    os << std::endl;
    return -1;
}

int NX_ErrorMan::errorRetry(int) {
    return 0;
}

int NX_ErrorMan::errorRetry(NX_Timer const& timer, int flag) {
    if (timer.timeIsEnabled() == 0)
        return errorRetry(flag);
    return timer.timeIsExpired() == 0 && error.errorIsRetry() ? errorRetryDelay() : 0;
}

int NX_ErrorMan::errorRetryDelay() {
    static constexpr unsigned long delays[] = {5, 7, 9, 11, 25, 27, 29, 31, 105, 1000}; // ms
    std::uint32_t const count = retryCount;
    NX_TimerSleep const sleep(delays[std::min<std::uint32_t>(count, 9)], 1);
    retryCount = count + 1;
    return static_cast<int>(count + 1);
}

void NX_ErrorMan::errorAbort(char const* note) const {
    errorLog(note);
    std::abort();
}

void NX_ErrorMan::errorAbort(char const* note, char const* file, unsigned int line) const {
    errorLog(note, file, line);
    std::abort();
}

void NX_ErrorMan::errorAbortIf(char const* note) const {
    if (error.errorIsAbort())
        errorAbort(note);
}

void NX_ErrorMan::errorAbortIf(char const* note, char const* file, unsigned int line) const {
    if (error.errorIsAbort())
        errorAbort(note, file, line);
}

void NxErrorManInit(NX_App*) {
    nxErrorManOfProcess();
}

// Errors can still be recorded while the process ends.
void NxErrorManUninit() {}

NX_ErrorMan* NxErrorManP() {
    NX_Thread const* const thread = nxThreadLiveP();
    NX_ErrorMan* const manager = thread != nullptr ? thread->threadErrorP() : nullptr;
    return manager != nullptr ? manager : nxErrorManOfProcess();
}

NX_Error* NxErrorP() {
    NX_Thread* const thread = nxThreadLiveP();
    return thread != nullptr ? thread->threadErrorNumP() : &errorOfProcess();
}
