// general/module/resicon.h - icons and cursors: groups of images, the best of them, pixels, handles, files.
//
// An icon is a group of images of one picture in several sizes and depths; so is a cursor, whose images also
// have a hot spot. Ownership, threads and failure: see general/module/resobject.h; what is decoded and how:
// general/module/iconimage.h.
#pragma once

#include "general/module/iconimage.h"
#include "general/module/resbitmap.h"

// One image of a group; keeps its library open.
class NX_EXPORT NX_ResIconImage : public NX_IconImage {
public:
    NX_ResData const& resData() const { return data_; } // the bytes of the image's own resource

    // Decodes as NX_IconImage::imagePixels does. 0; -1 with `image` unchanged and V the image's id.
    int imagePixels(NX_Image& image) const;

private:
    friend class NX_ResIconGroup;

    int imageRaise(int error, unsigned int line) const;

    NX_ResData data_;
    int id_ = 0;
};

class NX_EXPORT NX_ResIconGroup : public NX_ResObject {
public:
    NX_IconEntryVec const& iconEntries() const { return entries_; }

    // The entry that suits best, by the rule of NX_IconEntryVec::iconBest. Size 0: the size in which the
    // system shows icons or cursors. NX_NO_INDEX when the object is not good.
    unsigned int iconBest(unsigned int width = 0, unsigned int height = 0, unsigned int depth = 32) const;

    // Loads the image of an entry, in the group's own language if there is one, as the same id may be
    // another picture in another language. 0; -1 with `image` unchanged and V the image's id: 14498, 22749,
    // 21060. REQUIRES: entry < iconEntries().itemQty().
    int imageLoad(NX_ResIconImage& image, unsigned int entry) const;

    // The system's icon or cursor in its usual size. What the system loads from a module it keeps itself, and
    // that long the library must stay open; of a loose file the object keeps it. Null on failure.
    HICON resHand() const;

    // A handle of the image of one entry, which the system brings to its usual size. The caller releases it
    // with DestroyIcon. Null on failure. REQUIRES: as imageLoad.
    HICON imageHandSys(unsigned int entry) const;

    // The bytes of an icon or cursor file with all images, whose sizes are those of the images themselves. 0;
    // -1 with `file` unchanged: as imageLoad for an image that is missing or damaged, 22749 also for more
    // than 1024 images or 64 MiB of them.
    int fileData(NX_ByteVec& file) const;

protected:
    NX_ResIconGroup(NX_ResLib const& lib, NX_IconType type, NX_ResKey const& key);

private:
    HICON imageCreateSys(NX_ResIconImage const& image) const;

    NX_IconEntryVec entries_;
    NX_IconType type_;
};

class NX_EXPORT NX_ResIcon : public NX_ResIconGroup {
public:
    NX_ResIcon(NX_ResLib const& lib, NX_ResKey const& key) : NX_ResIconGroup(lib, iconTypeIcon, key) {}
};

class NX_EXPORT NX_ResCursor : public NX_ResIconGroup {
public:
    NX_ResCursor(NX_ResLib const& lib, NX_ResKey const& key) : NX_ResIconGroup(lib, iconTypeCursor, key) {}
};
