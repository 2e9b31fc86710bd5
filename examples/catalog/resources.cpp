// Lists the resources of a module or of a loose bitmap, icon or cursor file, and writes one out.
#include "examples/catalog/commands.h"
#include "examples/catalog/errors.h"
#include "examples/catalog/outfile.h"

#include <algorithm>
#include <iostream>
#include <iterator>

namespace {

constexpr unsigned int textsPerBlock = 16;
constexpr int textSummary = 122;
constexpr int textDamaged = 123;

NX_IconType iconType(NX_ResDesc const& desc) {
    bool const isIcon = desc.resType() == resTypeIcon || desc.resType() == resTypeIconGroup;
    return isIcon ? iconTypeIcon : iconTypeCursor;
}

NX_StringA measure(unsigned int width, unsigned int height, unsigned int depth) {
    NX_StringA text;
    text.strPrintF("%ux%ux%u", width, height, depth);
    return text;
}

// Width, height and bits a pixel of an image, or of each image of a group; empty for everything else. An
// image that is damaged is said to be so and does not end the list.
NX_StringA imageText(NX_ResDesc const& desc, NX_ResData const& data) {
    NX_Dib bitmap;
    NX_IconImage image;
    NX_IconEntryVec entries;
    NX_StringA text;
    int error = 0;
    switch (desc.resType()) {
    case resTypeBitmap:
        error = bitmap.dibOpen(data.dataP(), data.dataSize());
        text = measure(bitmap.imageWidth(), bitmap.imageHeight(), bitmap.imageDepth());
        break;
    case resTypeIcon:
    case resTypeCursor:
        error = image.imageOpen(data.dataP(), data.dataSize(), iconType(desc));
        text = measure(image.imageWidth(), image.imageHeight(), image.imageDepth());
        break;
    case resTypeIconGroup:
    case resTypeCursorGroup:
        error = entries.iconRead(data.dataP(), data.dataSize(), iconType(desc));
        for (unsigned int n = 0; n < entries.itemQty(); ++n) {
            NX_IconEntry const& entry = *entries.itemPConst(n);
            text += (n != 0 ? " " : "") + measure(entry.width, entry.height, entry.depth);
        }
        break;
    default:
        break;
    }
    if (error != 0)
        text.strLoad(textDamaged);
    return text;
}

int list(NX_ResLib const& lib, NX_ResDescVec const& descs) {
    unsigned long long bytes = 0;
    NX_StringA line;
    for (NX_ResDescVecPtrConst desc(descs); desc.itemIsAvail() != 0; ++desc) {
        NX_ResData data;
        if (lib.resDataLoad(data, *desc) == -1)
            return -1;
        line.strPrintF("%-12s  %-24s  0x%04x  %10u  %s", desc->resTypeText().dataPConst(),
                       desc->resIdText().dataPConst(), static_cast<unsigned int>(desc->resLang()),
                       data.dataSize(), imageText(*desc, data).dataPConst());
        std::cout << line.strStrip(NX_StripTrail) << '\n';
        bytes += data.dataSize();
    }
    NX_StringA format;
    format.strLoad(textSummary);
    line.strPrintF(format.dataPConst(), descs.itemQty(), bytes);
    std::cout << line << '\n';
    return 0;
}

// What is meant where several resources have the id: the one with the least rank. Types come first that are
// files by themselves, languages that everybody has.
unsigned int rank(NX_ResDesc const& desc) {
    static constexpr int types[] = {resTypeIconGroup, resTypeCursorGroup, resTypeBitmap};
    static constexpr int langs[] = {0, 0x409};
    auto const place = [](auto const& list, int value) {
        return static_cast<unsigned int>(std::find(std::begin(list), std::end(list), value) - list);
    };
    return 4 * place(types, desc.resType()) + place(langs, desc.resLang());
}

// The resource of this id, which is written as in the list, alone or behind its type and a slash.
NX_ResDesc const* select(NX_ResDescVec const& descs, NX_StringA const& id) {
    NX_ResDesc const* best = nullptr;
    for (unsigned int n = 0; n < descs.itemQty(); ++n) {
        NX_ResDesc const& desc = *descs.itemPConst(n);
        NX_StringA const own = desc.resIdText();
        if ((own.strCompare(id, NX_CompareFold) == 0 ||
             (desc.resTypeText() + "/" + own).strCompare(id, NX_CompareFold) == 0) &&
            (best == nullptr || rank(desc) < rank(*best)))
            best = &desc;
    }
    return best;
}

// An icon or cursor file with one image.
int imageFile(NX_ResDesc const& desc, NX_ResData const& data, NX_ByteVec& file) {
    NX_IconImage image;
    int const error = image.imageOpen(data.dataP(), data.dataSize(), iconType(desc));
    if (error != 0)
        return fileFail(error, data.resLib().resLibName());
    file = image.fileData();
    return 0;
}

// The texts of a block, one on a line behind its id.
int textFile(NX_ResLib const& lib, NX_ResDesc const& desc, NX_ByteVec& file) {
    char text[0x10000];
    NX_StringA line;
    int const first = (desc.resId() - 1) * static_cast<int>(textsPerBlock);
    for (int id = first; id < first + static_cast<int>(textsPerBlock); ++id) {
        if (lib.resTextLoad(text, sizeof text, id) == 0)
            continue;
        line.strPrintF("%d\t%s\n", id, text);
        file.dataAppend(reinterpret_cast<unsigned char const*>(line.dataPConst()), line.strLen());
    }
    return 0;
}

// The bytes of a file that programs for this kind of thing open; of other things the bytes as they are.
int fileMake(NX_ResLib const& lib, NX_ResDesc const& desc, NX_ByteVec& file) {
    NX_ResData data;
    switch (desc.resType()) {
    case resTypeBitmap:
        return NX_ResBitmap(lib, desc).fileData(file);
    case resTypeIconGroup:
        return NX_ResIcon(lib, desc).fileData(file);
    case resTypeCursorGroup:
        return NX_ResCursor(lib, desc).fileData(file);
    case resTypeString:
        return textFile(lib, desc, file);
    default:
        break;
    }
    if (lib.resDataLoad(data, desc) == -1)
        return -1;
    if (desc.resType() == resTypeIcon || desc.resType() == resTypeCursor)
        return imageFile(desc, data, file);
    file.dataAppend(data.dataP(), data.dataSize());
    return 0;
}

int extract(NX_ResLib const& lib, NX_ResDescVec const& descs, Options const& options) {
    NX_ResDesc const* const desc = select(descs, options.extract);
    if (desc == nullptr) {
        fileFail(errorResource, options.first);
        return NxErrorBufText(options.extract.dataPConst());
    }
    NX_ByteVec file;
    if (fileMake(lib, *desc, file) == -1)
        return -1;
    return fileReplace(options.second, [&file](NX_StringA const& temporary) {
        NX_File out(temporary, NX_File::modeWrite | NX_File::modeTrunc);
        return out.fileIsOpen() != 0 ? file.dataWrite(out) : -1;
    });
}

} // namespace

int commandResources(Options const& options) {
    NX_ResLib lib;
    NX_ResDescVec descs;
    if (lib.resLibOpen(options.first, resLibTypeFile) != 1 || lib.resDescs(descs) == -1)
        return -1;
    return options.extract.strLen() == 0 ? list(lib, descs) : extract(lib, descs, options);
}
