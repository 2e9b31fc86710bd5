#include "examples/catalog/app.h"

#include "examples/catalog/catalogue.h"
#include "examples/catalog/commands.h"
#include "examples/catalog/options.h"

#include <iostream>

namespace {

constexpr int helpFirst = 100;
constexpr int helpLast = 109;

int help() {
    NX_StringA line;
    for (int id = helpFirst; id <= helpLast; ++id) {
        line.strLoad(id);
        std::cout << line.strVarReplace() << '\n';
    }
    return 0;
}

} // namespace

int CatalogApp::appInit() {
    NX_StringByName& dict = NxStrVarDict();
    dict.itemInsert("PROGRAM", appName(), nullptr);
    dict.itemInsert("ORDERS", optionOrders(), nullptr);
    dict.itemInsert("CLASSES", optionClasses(), nullptr);
    dict.itemInsert(catalogDirVariable, NxEnvOrDefault(catalogDirVariable, "not set"), nullptr);
    return NX_App::appInit();
}

NX_StringA CatalogApp::appErrorString(int num) {
    return NX_App::appErrorString(num).strVarReplace();
}

int CatalogApp::appMain() {
    Options options;
    int result = optionsRead(appArgC(), appArgV(), options);
    if (result == 0)
        result = run(options);
    std::cout.flush();
    if (result != -1 && !std::cout) {
        NxERROR(errorNumDiskFull);
        result = NxErrorBufFileName("stdout");
    }
    if (result == -1) {
        NxErrorManP()->errorOut(std::cerr);
        NxErrorLog(nullptr);
    }
    status_ = result == -1 ? 2 : result;
    return result;
}

int CatalogApp::run(Options const& options) {
    switch (options.command) {
    case Command::scan: {
        Catalogue catalogue(options.choices);
        return catalogue.dirRead(options.first) == -1 ? -1 : catalogue.fileSave(options.second);
    }
    case Command::show:
        return commandShow(options);
    case Command::find:
        return commandFind(options);
    case Command::diff:
        return commandDiff(options);
    case Command::resources:
        return commandResources(options);
    case Command::help:
        break;
    }
    return help();
}
