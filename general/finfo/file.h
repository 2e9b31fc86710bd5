// general/finfo/file.h - the library's handle on one file of the operating system.
//
// A file is opened by the constructor and closed by the destructor; there is no reopening. Positions and
// sizes are in bytes and 32 bits wide; a position past 2^31 cannot be reached. Operations return 0 for
// success and -1 for failure; a failure is recorded with the error manager, together with the file's name
// where the description says so. An operation that fails leaves the file open. Threads: one file object may
// be used by one thread at a time. Locks and share modes hold between all handles of a file, in this process
// and in others.
#pragma once

#include "general/error/errornum.h"
#include "general/text/fileenum.h"
#include "general/text/stringa.h"

class NX_Age;

// Where a seek counts from; any other value counts as the start.
enum NX_FileSeekMode : int { NX_FileSeekStart = 0, NX_FileSeekCurrent = 1, NX_FileSeekEnd = 2 };

class NX_EXPORT NX_File {
public:
    // How to open: one of the first four (the low two bits), combined with any of the others by |.
    enum OpenMode : int {
        modeRead = 0x0,          // others may read and write meanwhile
        modeWrite = 0x1,         // likewise
        modeReadWrite = 0x2,     // likewise
        modeReadDenyWrite = 0x3, // reading; others may read only
        modeAppend = 0x10,       // positioned at the end once open
        modeCreate = 0x40,       // created when missing
        modeExclusive = 0x200,   // nobody else may open the file meanwhile
        modeTrunc = 0x800,       // an existing file is emptied; with modeCreate also created when missing
        modeRetry = 0x4000,      // handed to the error manager when opening fails
    };

    // What fileLockAt does: lockOff, or lockOn with any of the last three by |. 0x20 without 0x10 is refused.
    enum LockMode : int {
        lockOff = 0x0,
        lockExclusive = 0x1, // nobody else may lock; otherwise the lock is shared
        lockOn = 0x10,
        lockOnBoth = 0x30,  // the same as lockOn
        lockRetry = 0x4000, // handed to the error manager when locking fails
        lockWait = 0x8000,  // waits until the range is free
    };

    // Opens the file. On failure the object exists, is closed, and errorNum() tells why: 8402 exists already,
    // 10440 shared or locked by others, 12489 no access (directories too), 14547 not found, 21060 anything
    // else.
    NX_File(NX_StringA const& name, OpenMode mode);
    // The same for the file that name.nameFind(searchList, searchFlag) finds; the name as given when it finds
    // none.
    NX_File(NX_StringA const& searchList, int searchFlag, NX_StringA const& name, OpenMode mode);
    NX_File(NX_File const&) = delete;
    NX_File& operator=(NX_File const&) = delete;
    ~NX_File(); // closes

    int fileIsOpen() const; // questions: 1 or 0
    int fileIsOpenRead() const;
    int fileIsOpenWrite() const;
    int fileIsOpenTrunc() const; // open, and modeTrunc was asked for
    NX_StringA const& fileName();
    char const* fileNameP();                 // terminated; valid while the object lives
    void* fileHand() const { return hand_; } // all bits set while closed
    NX_ErrorNum errorNum() const {
        return error_.errorNum();
    } // of the last failure of this file; 0 after opening

    // Read exactly `size` bytes, at the current position or at `pos`. Fewer bytes are error 22748; the buffer
    // then holds what there was.
    int dataRead(void* buf, unsigned int size);
    int dataReadAt(long pos, void* buf, unsigned int size); // size 0: seeks only
    // Reads up to `size` bytes. Returns the number read, 0 at the end of the file, or -1.
    int dataReadEOF(void* buf, unsigned int size);
    // Write exactly `size` bytes. A write cut short is error 16625.
    int dataWrite(void const* buf, unsigned int size);             // size 0: does nothing
    int dataWriteAt(long pos, void const* buf, unsigned int size); // size 0: seeks only
    // Copies `size` bytes inside the file in pieces of at most 1024 bytes, lowest addresses first: where the
    // target overlaps the source from above, bytes repeat. Returns size, or NX_NO_INDEX after the first piece
    // that fails.
    unsigned long dataCopyAt(long to, long from, unsigned long size);
    // Writes `size` zero bytes at `pos`. Returns size, or NX_NO_INDEX. Size 0 seeks only.
    unsigned long dataZeroAt(long pos, unsigned long size);

    long fileSeek(long offset, NX_FileSeekMode how); // the new position, or -1
    long fileTell();
    unsigned long fileSize(); // NX_NO_INDEX on failure; the position is kept
    int fileFlush();          // to the disk; needs a file open for writing

    // Locks or unlocks bytes. The range starts at `pos`. Locking takes `size` bytes; unlocking takes the
    // range of `pos` bytes at `pos`, whatever the size, so that it undoes locks whose size equals their
    // position; every other lock lasts until the file is closed. Error 10445 when others hold a conflicting
    // lock, 32869 for a mode that is none; after a failure the position is recorded.
    int fileLockAt(long pos, LockMode mode, long size);

    int fileClose(); // 0 when closed already; the file is closed in any case

    // One of the file's three times. Reading: zero and error 21060 on failure. Setting leaves the other two.
    NX_Age fileAge(NX_FileAgeType type) const;
    int fileAge(NX_Age const& age, NX_FileAgeType type);

    // Record a failure of this file: its number, its name, and a place in a source when one is given. Return
    // -1.
    int fileERR(int errorNum);
    int fileERR(int errorNum, char const* file, unsigned int line);

    // By name. Copying replaces an existing target; moving refuses one. Errors as for opening; the target's
    // name is recorded for a copy, the file's for an erasure, none for a move.
    static int fileCopy(NX_StringA const& from, NX_StringA const& to);
    static int fileMove(NX_StringA const& from, NX_StringA const& to);
    static int fileErase(NX_StringA const& name);
    // Compares contents: 0 equal, 1 different, -1 when one cannot be opened or the first cannot be read. The
    // comparison goes by blocks of 4096 bytes and ends, equal, with the file that ends first at a block's
    // boundary: an empty file equals every other.
    static int fileCompare(NX_StringA const& a, NX_StringA const& b);

private:
    int fileOpen();
    int openSys();
    int readSys(void* buf, unsigned int size, unsigned int* done);
    int writeSys(void const* buf, unsigned int size, unsigned int* done);
    int seekSys(long offset, NX_FileSeekMode how, long* pos);
    int flushSys();
    int closeSys();
    int lockSys(long pos, LockMode mode, long size);
    int sysERR();

    NX_Error error_;
    void* hand_;
    NX_StringA name_;
    OpenMode mode_;
};

constexpr NX_File::OpenMode operator|(NX_File::OpenMode a, NX_File::OpenMode b) {
    return static_cast<NX_File::OpenMode>(static_cast<int>(a) | static_cast<int>(b));
}
constexpr NX_File::LockMode operator|(NX_File::LockMode a, NX_File::LockMode b) {
    return static_cast<NX_File::LockMode>(static_cast<int>(a) | static_cast<int>(b));
}
