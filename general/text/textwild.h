// general/text/textwild.h - makes a new file name from a name and a wildcard pattern.
#pragma once

#include "general/platform/fwd.h"
#include "general/text/textptr.h"

// Rewrites `name` in place by `pattern`, as a rename command does: `*` keeps the name up to the character
// after it in the pattern, `?` keeps one character, a dot goes to the name's next dot, others replace a
// character or are inserted before a dot. `nameLen` and `patLen` are lengths in units (bytes, or 16-bit
// units); `nameCap` is the buffer's size with room for the zero. `fold` makes the search after `*` ignore
// case. Returns the new length. The result is terminated unless `nameCap` is below 1; it is cut where the
// buffer ends. report.txt by *.bak gives report.bak, old.txt by new.* gives new.txt, abcdef by ??x* gives
// abxdef. 8-bit text is walked by the lead-byte table of NxDbcsInfoP(). Kept as it always was: a deleted node
// moves the rest of the name down but not the place of work (xyz.c by a.b gives a.cb), and the wide form
// moves only half of the units it should.
NX_EXPORT int NxTextWildMerge(NX_TextA1Ptr name, int nameLen, int nameCap, NX_TextA1PtrConst pattern,
                              int patLen, int fold);
NX_EXPORT int NxTextWildMerge(NX_TextW1Ptr name, int nameLen, int nameCap, NX_TextW1PtrConst pattern,
                              int patLen, int fold);
