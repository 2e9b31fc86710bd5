// examples/catalog/commands.h - the commands that read catalogues or files with resources.
#pragma once

#include "examples/catalog/options.h"

// Each returns 0 done, 1 differences found, -1 with an error recorded; output goes to standard output.
int commandShow(Options const& options);
int commandFind(Options const& options);
int commandDiff(Options const& options);
int commandResources(Options const& options);
