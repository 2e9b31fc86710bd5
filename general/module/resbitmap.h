// general/module/resbitmap.h - bitmap resources: their pixels, the system's handle, a bitmap file of them.
//
//     NX_ResLib lib;
//     lib.resLibOpen("shell.dll", resLibTypeFile);
//     NX_ResBitmap const logo(lib, "LOGO"); // or a number
//     NX_Image image;
//     if (logo.resIsOk() && logo.imagePixels(image) == 0)
//         paint(image);
//
// Ownership, threads and failure: see general/module/resobject.h; pixels and their limits:
// general/module/dib.h.
#pragma once

#include "general/module/bytevec.h"
#include "general/module/dib.h"
#include "general/module/resobject.h"

class NX_EXPORT NX_ResBitmap : public NX_ResObject {
public:
    NX_ResBitmap(NX_ResLib const& lib, NX_ResKey const& key);

    unsigned int imageWidth() const { return dib_.imageWidth(); }   // pixels
    unsigned int imageHeight() const { return dib_.imageHeight(); } // pixels
    unsigned int imageDepth() const { return dib_.imageDepth(); }   // bits a pixel
    NX_ColorVec imageColors() const { return dib_.imageColors(); }  // the colour table
    NX_Dib const& imageDib() const { return dib_; }                 // valid as long as this object

    // Decodes. 0; -1 with `image` unchanged.
    int imagePixels(NX_Image& image) const;

    // The system's bitmap for the screen, with the screen's depth; the object keeps it. Null on failure.
    HBITMAP resHand() const;

    // The bytes of a bitmap file with this bitmap. 0; -1 with `file` unchanged.
    int fileData(NX_ByteVec& file) const;

private:
    NX_Dib dib_;
};
