// examples/catalog/app.h - the program: reads the command line, runs a command, tells errors.
#pragma once

#include "vx7base.h"

struct Options;

class CatalogApp : public NX_App {
public:
    explicit CatalogApp(NX_MainInfo const& info) : NX_App(info) {}

    // 0 done, 1 differences found, -1 an error, which has been told.
    int appMain() override;

    // The exit status after appMain: its result, errors as 2.
    int status() const { return status_; }

private:
    int run(Options const& options);

    int status_ = 2;
};
