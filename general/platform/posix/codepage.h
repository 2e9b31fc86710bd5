// Private header. general/platform/posix/codepage.h - the system's code page, as path handling and tests need
// it.
//
// The page is chosen on first use: by the variable VX7_CODE_PAGE when it names a page that the system may
// have (see nxPlatformCodePageSet), else by the language of the locale (LC_ALL, LC_CTYPE, LANG, the first
// that is set). Any thread may ask; changing the page is for tests, before other threads work with text.
#pragma once

#include <cstddef>

#include "general/platform/fwd.h"

// The system's code page: never 65001, which needs more room than callers of GetLocaleInfoA have.
NX_EXPORT unsigned int nxPlatformCodePage();

// Makes `codePage` the system's; 0 goes back to the choice by variable and locale, made afresh. Returns
// false, and changes nothing, for a page that is unknown or is not one or two bytes a character.
NX_EXPORT bool nxPlatformCodePageSet(unsigned int codePage);

// Whether `unit` begins a two-byte character in the system's code page.
NX_EXPORT bool nxPlatformIsLeadByte(unsigned char unit);

// The units of the character at `at`, which a zero ends somewhere: 2 for a lead byte and a byte that may
// follow one. Digits and separators of names never do, so a lead byte in front of them stands alone.
std::size_t nxPlatformUnitsAt(char const* at);
