// general/collm/assert.h - checks for programming errors that stay in every build.
#pragma once

#include "general/platform/fwd.h"

// Logs "Assert fail: file line : expression", shows it in a system-modal box and aborts the process.
// Declared on the lowest floor because every floor asserts.
[[noreturn]] NX_EXPORT void NxAssertFail(char const* file, unsigned int line, char const* expression);

// Ends the process when `condition` is false. `text` and `file` are what the message names; they are fixed
// texts, independent of how the condition is written and where the source lies.
#define NX_ASSERT(condition, text, file)        \
    do {                                        \
        if (!(condition)) [[unlikely]]          \
            NxAssertFail(file, __LINE__, text); \
    } while (false)
