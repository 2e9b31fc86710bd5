// general/error/hexdump.h - hexadecimal dumps of bytes, all digits in lower case.
//
// They use only their arguments and the stack, allocate nothing and may run in several threads at once, on
// different targets. Write failures of a stream or file are left to its own state. `address` is what is shown
// for data[0].
#pragma once

#include <cstdio>
#include <iosfwd>

#include "general/platform/fwd.h"

// Two digits a byte, one blank between bytes, and a terminating zero. `out` has room for 3 * length
// characters, at least one. Returns the characters written without the zero; for no bytes 0, and only the
// zero is written.
NX_EXPORT unsigned int NxCharHex(char* out, void const* data, unsigned int length);

// Sixteen bytes a line, aligned to multiples of sixteen of `address`, as digits and as characters, below a
// ruler of column numbers. A run of equal lines after a full one is left out when it is longer than one line;
// the ruler repeated after it tells how many bytes were left out. No bytes: nothing.
NX_EXPORT void NxCharHexOut(std::ostream& os, char const* data, unsigned int length, long address);

// Up to sixteen bytes a line in four groups, each line with its address as 0x and eight digits. No bytes or
// null data: nothing.
NX_EXPORT void NxCharHexOut4(std::FILE* file, void const* data, unsigned int length, long address);
