#include "examples/catalog/app.h"

int main(int argc, char** argv) {
    NX_MainInfo const info = {nullptr, argc, argv, nullptr, nullptr};
    CatalogApp app(info);
    return app.appBegin() < 0 ? 2 : app.status();
}
