// examples/catalog/app.h - the program: reads the command line, runs a command, tells errors.
#pragma once

#include "vx7base.h"

struct Options;

class CatalogApp : public NX_App {
public:
    explicit CatalogApp(NX_MainInfo const& info) : NX_App(info) {}

    // Fills the dictionary by which the program's texts name what is told in one place: %[PROGRAM] its name,
    // %[ORDERS] and %[CLASSES] the values of options, %[CATALOG_DIR] the variable's value.
    int appInit() override;

    NX_StringA appErrorString(int num) override;

    // 0 done, 1 differences found, -1 an error, which has been told.
    int appMain() override;

    // The exit status after appMain: its result, errors as 2.
    int status() const { return status_; }

private:
    int run(Options const& options);

    int status_ = 2;
};
