// The version check, which programs call before anything else.
#include "general/error/errorman.h"
#include "general/error/msgbox.h"
#include "general/module/app.h"
#include "general/text/textcompare.h"

namespace {

// Tells the user about the wrong library; never returns from its appMain.
class MismatchBox : public NX_AppBox {
public:
    explicit MismatchBox(NX_MainInfo const& info) : NX_AppBox(info) {}

    int appMain() override {
        NxERROR(errorNumLibVersion);
        NxErrorBufFileName("VX7BASE");
        NX_WinMessageBoxError const box(NxErrorManP());
        NxErrorAbort(nullptr);
        return -1;
    }
};

} // namespace

int NxBaseDllValidate(NX_BaseVersion const* version, NX_MainInfo const* info) {
    NxAppPUninitDll();
    NX_BaseVersion const& own = NX_BASE_VERSION;
    int const textSize = static_cast<int>(sizeof own.text);
    if (version->major == own.major && version->minor == own.minor &&
        NxTextCompare(version->text, NxTextLen(version->text, textSize), own.text,
                      NxTextLen(own.text, textSize), NX_CompareExact) == 0)
        return 0;
    return MismatchBox(*info).appBegin();
}
