// general/error/connlog.h - the connection log: lines kept in memory until the connection ends.
//
// One object for the process, made on first use. It has no lock: one thread uses it. Each line ends in
// carriage return and line feed and starts with a message number of six digits and two
// blanks, unless it is given another prefix; the start line begins with "CONNLOG ". Errors come
// from the file alone; a string resource that does not exist gives an empty text.
#pragma once

#include "general/platform/fwd.h"
#include "general/text/stringa.h"

class NX_File;

// A date and time as connections tell it: plain numbers, nothing is checked.
struct _NCC_DATETIME {
    unsigned char hours;
    unsigned char minutes;
    unsigned char seconds;
    unsigned char unused;
    unsigned char dayMonth1; // day and month, in the order in which they are printed
    unsigned char dayMonth2;
    unsigned short year;
};

class NX_EXPORT NX_ConnLog {
public:
    NX_ConnLog(NX_ConnLog const&) = delete;
    NX_ConnLog& operator=(NX_ConnLog const&) = delete;
    static NX_ConnLog* connlogP(); // the process's object; never null

    NX_StringA connlogFileName() { return fileName; } // where connlogClose writes; empty at first
    void connlogFileName(NX_StringA name) { fileName = name; }
    int connlogIsStarted() { return started; } // 1 after connlogLogStartTime, else 0

    // Appends "CONNLOG " and the date and time as one line and sets the started flag.
    void connlogLogStartTime(_NCC_DATETIME dateTime);

    // Appends one line: `prefix`, or six zeros and two blanks when it is empty, then `format` with `argument`
    // as its only (text) argument.
    void connlogLogString(NX_StringA format, NX_StringA argument, NX_StringA prefix);

    // The same with the string resource `messageId` of the application as format and the number as prefix.
    // Number 0 appends nothing. The module is not consulted. Returns `messageId`.
    unsigned short connlogLog(HINSTANCE module, unsigned short messageId, NX_StringA argument);

    // Writes the collected text to the start of the named file, without shortening it. Text and started flag
    // are kept. Without a name nothing happens.
    void connlogClose();
    void connlogWrite(NX_File& file); // the same into an open file, at its position; no text writes nothing

private:
    NX_ConnLog() = default;

    NX_StringA fileName;
    int started = 0;
    NX_StringA text;
};
