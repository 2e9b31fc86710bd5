// general/persist/persist.h - streams that save a graph of objects as text and load it back with sharing
// intact.
//
// Every object reached through a pointer and every shared vector block is written once, as a definition;
// later it is written as a number that refers to it. The file begins with S0. Values have no separators of
// their own: the save operator of a type writes the blanks and marks that its load operator needs. Numbers
// are 32 bits wide, also where `long` is wider. Lines end as the stream library ends them in the given mode.
// A type without operators of its own for these streams does not compile; nothing falls through to the stream
// library. An object is known by its address: what has been saved or loaded must stay as it is until the
// stream is gone. Ownership: objects that loading makes for null pointers belong to the caller. Threads: one
// stream may be used by one thread at a time. Failure: writing shows in the stream's state, at the latest at
// flush(). Loading records error 26850 (invalid text) or 28899 (another version) with the position and aborts
// the process, unless the stream has an error handler.
#pragma once

#include <fstream>
#include <type_traits>

#include "general/persist/persistp.h"
#include "general/text/stringa.h"

class NXS_PersistIn;
class NXS_PersistOut;

class NX_EXPORT NX_PersistTextSave : private std::ofstream {
public:
    // Opens the file for writing, in the modes of the stream library besides (std::ios::binary and so on;
    // `protection` has no effect), and writes the header.
    NX_PersistTextSave(char const* fileName, int openMode, int protection);
    NX_PersistTextSave(NX_StringA const& fileName, int openMode, int protection);
    NX_PersistTextSave(NX_PersistTextSave const&) = delete;
    NX_PersistTextSave& operator=(NX_PersistTextSave const&) = delete;
    ~NX_PersistTextSave() override; // writes what is left and closes

    // The stream's state, as the stream library defines it.
    using std::ofstream::bad;
    using std::ofstream::eof;
    using std::ofstream::fail;
    using std::ofstream::good;
    int rdstate() const { return static_cast<int>(std::ofstream::rdstate()); }
    void clear(int state = 0) { std::ofstream::clear(static_cast<std::ios_base::iostate>(state)); }
    // Hands everything written so far to the system; then bad() tells whether all of it arrived.
    NX_PersistTextSave& flush();

    // The character itself; a number in decimal, nothing around it; floating values with six significant
    // digits; a text up to its zero, as it stands.
    NX_PersistTextSave& operator<<(char ch);
    NX_PersistTextSave& operator<<(signed char ch) { return *this << static_cast<char>(ch); }
    NX_PersistTextSave& operator<<(unsigned char ch) { return *this << static_cast<char>(ch); }
    NX_PersistTextSave& operator<<(short value) { return *this << static_cast<int>(value); }
    NX_PersistTextSave& operator<<(unsigned short value) { return *this << static_cast<unsigned int>(value); }
    NX_PersistTextSave& operator<<(int value);
    NX_PersistTextSave& operator<<(unsigned int value);
    NX_PersistTextSave& operator<<(long value) { return *this << static_cast<int>(value); }
    NX_PersistTextSave& operator<<(unsigned long value) { return *this << static_cast<unsigned int>(value); }
    NX_PersistTextSave& operator<<(float value) { return *this << static_cast<double>(value); }
    NX_PersistTextSave& operator<<(double value);
    NX_PersistTextSave& operator<<(char const* text);
    template <class T>
    requires(std::is_arithmetic_v<T> || std::is_enum_v<T>) NX_PersistTextSave& operator<<(T value) = delete;

    // A blank, then exactly `n` bytes.
    NX_PersistTextSave& dataSave(char const* p, unsigned int n);

    // Writes the reference to an object of `size` bytes. 1: the object is null or was written before, nothing
    // more is to be written. 0: the caller writes its contents now. The form for vectors also settles the
    // shared block, and returns 0 only when both are new.
    int pIsSaved(void const* p, unsigned int size);
    int pIsSaved(NX_VecM const* p, unsigned int size);

private:
    void saveInit(char const* fileName, int openMode);
    NX_PersistTextSave& textSave(char const* p, std::streamsize n);

    NX_PersistPVec table_;
    NXS_PersistOut* out_;
};

class NX_EXPORT NX_PersistTextLoad : private std::ifstream {
public:
    // Called when loading meets invalid text or another version; the error is recorded with the file's name
    // and the position. It must return. From then on the stream has failed for good: every read yields zero,
    // an empty text or a null pointer.
    using ErrorHandler = void (*)(void* context, NX_PersistTextLoad& load, int errorNum, long pos);

    // Opens the file for reading and reads the header. A file that cannot be opened has an invalid header.
    // Without a handler every error ends the process. With a handler no text whatever can make the operators
    // of the library's own types go astray, and they also refuse what they otherwise let pass or assert:
    // marks and numbers that are missing, references to objects of other types, directories that would hold
    // themselves. REQUIRES of the program's own load operators, if it has a handler: what pIsLoaded returns
    // may be the address of an object of any type.
    NX_PersistTextLoad(char const* fileName, int openMode, int protection);
    NX_PersistTextLoad(NX_StringA const& fileName, int openMode, int protection);
    NX_PersistTextLoad(NX_StringA const& fileName, int openMode, int protection, ErrorHandler handler,
                       void* context);
    NX_PersistTextLoad(NX_PersistTextLoad const&) = delete;
    NX_PersistTextLoad& operator=(NX_PersistTextLoad const&) = delete;
    ~NX_PersistTextLoad() override;

    using std::ifstream::bad;
    using std::ifstream::eof;
    using std::ifstream::fail;
    using std::ifstream::good;
    int rdstate() const { return static_cast<int>(std::ifstream::rdstate()); }
    void clear(int state = 0) { std::ifstream::clear(static_cast<std::ios_base::iostate>(state)); }
    int errorNum() const { return errorNum_; }  // 0, or the error that ended the loading
    long errorPos() const { return errorPos_; } // its position
    long version() const { return version_; }   // of the format; -1 until the header has been read

    // Formatted extraction: leading white space is skipped.
    NX_PersistTextLoad& operator>>(char& ch);
    NX_PersistTextLoad& operator>>(signed char& ch);
    NX_PersistTextLoad& operator>>(unsigned char& ch);
    NX_PersistTextLoad& operator>>(short& value);
    NX_PersistTextLoad& operator>>(unsigned short& value);
    NX_PersistTextLoad& operator>>(int& value);
    NX_PersistTextLoad& operator>>(unsigned int& value);
    NX_PersistTextLoad& operator>>(long& value);
    NX_PersistTextLoad& operator>>(unsigned long& value);
    NX_PersistTextLoad& operator>>(float& value);
    NX_PersistTextLoad& operator>>(double& value);

    // At most n - 1 characters and a zero, stopping before a line feed.
    NX_PersistTextLoad& get(char* p, unsigned int n);
    // Skips white space, then reads at most `n` characters, stopping before a line feed; what is missing
    // becomes zero. With n 0 nothing is read.
    NX_PersistTextLoad& dataLoad(char* p, unsigned int n);
    // Skips `n` characters, or fewer up to and including `delimiter`.
    NX_PersistTextLoad& ignore(int n, int delimiter);

    // Reads an object reference. Null: a definition follows. Otherwise the address of the object referred to;
    // for the null pointer an address that pIsZero recognises.
    void* pIsLoaded();
    // The same for an object that the caller holds already, if `p` is not null: a definition is registered as
    // `p`, a reference must name `p` itself.
    void* pIsLoaded(void* p, unsigned int size);
    void pAppend(void* p, unsigned int size); // registers an object just made
    int pIsZero(void const* p) const { return p == this; }

private:
    friend class NXS_PersistLoader;

    void loadInit(char const* fileName, int openMode);
    void loadERR(int errorNum);
    int refLoad(unsigned int* number);
    static void refAssert(void const* p, void const* found);
    int sentry();
    template <class T>
    void numberLoad(T& value);
    template <class T>
    void floatLoad(T& value);

    long version_ = -1;
    NX_PersistPVec table_;
    NXS_PersistIn* in_;
    ErrorHandler handler_ = nullptr;
    void* handlerContext_ = nullptr;
    int errorNum_ = 0;
    long errorPos_ = -1;
};
