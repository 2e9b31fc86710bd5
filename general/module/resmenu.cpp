#include "general/module/resmenu.h"

#include <vector>

#include "general/platform/platform.h"

namespace {

void menuRelease(void* hand) {
    DestroyMenu(static_cast<HMENU>(hand));
}

void accelRelease(void* hand) {
    DestroyAcceleratorTable(static_cast<HACCEL>(hand));
}

} // namespace

NX_ResMenu::NX_ResMenu(NX_ResLib const& lib, NX_ResKey const& key) : NX_ResObject(lib, resTypeMenu, key) {
    if (resIsOk() != 0)
        resDecoded(items_.menuRead(resData().dataP(), resData().dataSize()));
}

HMENU NX_ResMenu::resHand() const {
    auto const make = [](void const* object) {
        auto const& self = *static_cast<NX_ResMenu const*>(object);
        HINSTANCE const module = self.sysModule(); // null would mean the program's own
        return NXS_ResHand::Made{module != nullptr ? LoadMenuA(module, self.sysName()) : nullptr,
                                 menuRelease};
    };
    return static_cast<HMENU>(resHandP(make));
}

NX_ResAccel::NX_ResAccel(NX_ResLib const& lib, NX_ResKey const& key) : NX_ResObject(lib, resTypeAccel, key) {
    if (resIsOk() != 0)
        resDecoded(entries_.accelRead(resData().dataP(), resData().dataSize()));
}

HACCEL NX_ResAccel::resHand() const {
    auto const make = [](void const* object) {
        auto const& self = *static_cast<NX_ResAccel const*>(object);
        std::vector<ACCEL> table;
        for (unsigned int n = 0; n < self.entries_.itemQty(); ++n) {
            NX_AccelEntry const& entry = self.entries_[n];
            table.push_back({static_cast<BYTE>(entry.flags), entry.key, entry.id});
        }
        return NXS_ResHand::Made{CreateAcceleratorTableA(table.data(), static_cast<int>(table.size())),
                                 accelRelease};
    };
    return static_cast<HACCEL>(resHandP(make));
}
