// examples/catalog/outfile.h - files that are replaced by complete ones only.
#pragma once

#include "vx7base.h"

#include <functional>

// Records `num` and the file's name. Returns -1.
int fileFail(NX_ErrorNum num, NX_StringA const& file);

// Lets `write` write a file of a temporary name, which returns 0, or -1 with an error recorded; then moves it
// into place, so that the file is never half-written and an existing one stays whole on failure. Behind a
// link the file that it leads to is replaced. 0, or -1 with an error recorded: also for a device or the like,
// and for a file that may not be written or that others use.
int fileReplace(NX_StringA const& name, std::function<int(NX_StringA const& temporary)> const& write);
