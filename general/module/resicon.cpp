#include "general/module/resicon.h"

#include <vector>

#include "general/error/errorman.h"
#include "general/module/iconfile.h"
#include "general/module/reslibrep.h"
#include "general/platform/platform.h"

namespace {

char const sourceFile[] = "general/module/resicon";

constexpr std::uint64_t fileSizeMax = 64u << 20;
constexpr unsigned int fileImagesMax = 1024; // each is looked for
constexpr DWORD iconVersion = 0x00030000;

void iconRelease(void* hand) {
    DestroyIcon(static_cast<HICON>(hand));
}

unsigned int sizeSys(unsigned int wanted, int metric) {
    return wanted != 0 ? wanted : static_cast<unsigned int>(GetSystemMetrics(metric));
}

} // namespace

int NX_ResIconImage::imagePixels(NX_Image& image) const {
    int const error = NX_IconImage::imagePixels(image);
    return error != 0 ? imageRaise(error, __LINE__) : 0;
}

int NX_ResIconImage::imageRaise(int error, unsigned int line) const {
    nxResLibERR(error, ERROR_NOT_SUPPORTED, data_.resLib().resLibName(), sourceFile, line);
    return NxErrorBufValue(id_);
}

NX_ResIconGroup::NX_ResIconGroup(NX_ResLib const& lib, NX_IconType type, NX_ResKey const& key)
    : NX_ResObject(lib, type == iconTypeIcon ? resTypeIconGroup : resTypeCursorGroup, key), type_(type) {
    if (resIsOk() != 0)
        resDecoded(entries_.iconRead(resData().dataP(), resData().dataSize(), type));
}

unsigned int NX_ResIconGroup::iconBest(unsigned int width, unsigned int height, unsigned int depth) const {
    bool const isIcon = type_ == iconTypeIcon;
    return entries_.iconBest(sizeSys(width, isIcon ? SM_CXICON : SM_CXCURSOR),
                             sizeSys(height, isIcon ? SM_CYICON : SM_CYCURSOR), depth);
}

int NX_ResIconGroup::imageLoad(NX_ResIconImage& image, unsigned int entry) const {
    NX_ResDesc desc;
    NX_ResIconImage made;
    made.id_ = entries_[entry].id;
    if (resLib().resDescFindNear(desc, type_ == iconTypeIcon ? resTypeIcon : resTypeCursor, made.id_,
                                 resDesc().resLang()) != 0 ||
        resLib().resDataLoad(made.data_, desc) != 0)
        return -1;
    int const error = made.imageOpen(made.data_.dataP(), made.data_.dataSize(), type_);
    if (error != 0)
        return made.imageRaise(error, __LINE__);
    image = made;
    return 0;
}

// The call does not write to the bytes, though it asks for them writable.
HICON NX_ResIconGroup::imageCreateSys(NX_ResIconImage const& image) const {
    return CreateIconFromResource(const_cast<BYTE*>(image.resData().dataP()), image.resData().dataSize(),
                                  type_ == iconTypeIcon, iconVersion);
}

HICON NX_ResIconGroup::resHand() const {
    auto const make = [](void const* object) {
        auto const& self = *static_cast<NX_ResIconGroup const*>(object);
        if (HINSTANCE const module = self.sysModule(); module != nullptr) {
            HICON const hand = self.type_ == iconTypeIcon ? LoadIconA(module, self.sysName())
                                                          : LoadCursorA(module, self.sysName());
            return NXS_ResHand::Made{hand, nullptr};
        }
        NX_ResIconImage image;
        if (self.imageLoad(image, self.iconBest()) != 0)
            return NXS_ResHand::Made{nullptr, nullptr, true};
        return NXS_ResHand::Made{self.imageCreateSys(image), iconRelease};
    };
    return static_cast<HICON>(resHandP(make));
}

HICON NX_ResIconGroup::imageHandSys(unsigned int entry) const {
    NX_ResIconImage image;
    if (imageLoad(image, entry) != 0)
        return nullptr;
    SetLastError(0);
    HICON const hand = imageCreateSys(image);
    if (hand == nullptr)
        resRaise(errorNumSystem, GetLastError(), sourceFile, __LINE__);
    return hand;
}

int NX_ResIconGroup::fileData(NX_ByteVec& file) const {
    if (resIsOk() == 0)
        return resResult(errorNum());
    unsigned int const qty = entries_.itemQty();
    if (qty > fileImagesMax)
        return resResult(errorNumImage);
    std::vector<NX_ResIconImage> images(qty);
    std::uint64_t size = 0; // of the images
    for (unsigned int n = 0; n < qty; ++n) {
        if (imageLoad(images[n], n) != 0)
            return -1;
        size += images[n].dataSize();
        if (size > fileSizeMax)
            return resResult(errorNumImage);
    }
    file = nxIconFile(type_, images.data(), entries_.dataPConst(), qty);
    return 0;
}
