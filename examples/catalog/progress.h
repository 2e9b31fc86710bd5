// examples/catalog/progress.h - shows how far a scan is, on a terminal only.
#pragma once

#include "vx7base.h"

// From construction to destruction a line on standard error tells the number of entries found and the seconds
// passed. Nothing is shown when standard error is not a terminal.
class Progress : private NX_Thread {
public:
    Progress();
    ~Progress() override;

private:
    void threadRun() override;

    NX_StringA const format_;
    unsigned int const before_;
    NX_Timer const timer_;
};
