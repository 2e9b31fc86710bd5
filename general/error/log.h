// general/error/log.h - the log file: "quorix.log" in the current directory, one time-stamped entry a call.
//
// An entry is a header line with the application's full name ("?" without an application) and the local time,
// and the text below it; an empty line stands before each. The file is opened, appended to and closed for
// every entry: nothing is kept open. Any thread may log at any time, from static constructors to the end of
// the process; entries never interleave. A file that cannot be opened loses the entry silently.
// Dumps of bytes are in general/error/hexdump.h.
#pragma once

#include "general/collm/assert.h"
#include "general/platform/fwd.h"

// Appends one entry holding `text`.
NX_EXPORT void NxLogPrint(char const* text);

// The same with the C run-time's formatting. An entry holds 1027 characters; the rest of a longer one is
// lost.
NX_EXPORT void NxLogPrintF(char const* format, ...);
