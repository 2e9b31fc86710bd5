// general/module/reslibdesc.cpp - what a resource library holds: lists, searches, bytes and texts.
#include "general/error/errorman.h"
#include "general/module/resdata.h"
#include "general/module/resdesc.h"
#include "general/module/reslibrep.h"
#include "general/platform/platform.h"
#include "general/process/sem.h"

#include <charconv>

namespace {

char const sourceFile[] = "general/module/reslibdesc";

} // namespace

// What is looked for: a number, or a name when that is not empty.
struct NX_ResLib::Key {
    Key(int givenNumber) : number(givenNumber) {}
    Key(NX_StringA const& givenName) : name(givenName) {}
    Key(int givenNumber, NX_StringA const& givenName) : number(givenNumber), name(givenName) {}

    // A number out of range is no resource's. "#12" is another way to write 12; what is not all digits is a
    // name.
    NXS_ResImage::Key image() const {
        if (name.strLen() > 1 && name[0] == '#') {
            char const* const end = name.dataPConst() + name.strLen();
            std::uint32_t value = 0;
            auto const [p, error] = std::from_chars(name.dataPConst() + 1, end, value);
            if (p == end && error == std::errc())
                return {value, {}};
        }
        return {static_cast<std::uint32_t>(number), name};
    }

    int number = -1;
    NX_StringA name;
};

// Of a module loaded for its code the file is read now. Two threads may do so at once.
NXS_ResImage const* NX_ResLib::imageP() const {
    if (resLibIsOpen() == 0) {
        nxResLibERR(errorNumResLibNotFound, resLibName(), sourceFile, __LINE__);
        return nullptr;
    }
    NX_ResLibRep& own = *rep();
    {
        NX_SyncThreadOfProcess guard(&NX_ResLibRep::registryLock(), 1);
        if (own.image != nullptr)
            return own.image;
    }
    NXS_ResImage* image = new NXS_ResImage;
    NXS_ResFile file(resLibNameSys(own.module));
    if (file.imageRead(*image, resLibTypeModule, 1) != 0) {
        delete image;
        nxResLibERR(file.errorNum(), resLibName(), sourceFile, __LINE__);
        return nullptr;
    }
    NX_SyncThreadOfProcess guard(&NX_ResLibRep::registryLock(), 1);
    if (own.image == nullptr)
        own.image = image;
    else
        delete image;
    return own.image;
}

// Describes entry `n`. Where it has the names of `last`, which `desc` describes, these are shared.
void NX_ResLib::descSet(NX_ResDesc& desc, NXS_ResImage const& image, unsigned int n,
                        NXS_ResEntry const* last) {
    NXS_ResEntry const& entry = image.entries().dataPConst()[n];
    if (last == nullptr || last->type != entry.type)
        desc.typeName_ = image.text(entry.type);
    if (last == nullptr || last->id != entry.id)
        desc.name_ = image.text(entry.id);
    desc.type_ = static_cast<std::int32_t>(entry.type.number);
    desc.id_ = static_cast<std::int32_t>(entry.id.number);
    desc.lang_ = static_cast<std::int32_t>(entry.lang);
    desc.size_ = entry.size;
    desc.index_ = n;
}

int NX_ResLib::resDescs(NX_ResDescVec& list, int type) const {
    list.collDefault();
    NXS_ResImage const* const image = imageP();
    if (image == nullptr)
        return -1;
    NXS_ResEntryVec const& entries = image->entries();
    NXS_ResName const wanted = {static_cast<std::uint32_t>(type), 0};
    NX_ResDesc desc;
    NXS_ResEntry const* last = nullptr;
    for (unsigned int n = 0; n < entries.itemQty(); ++n) {
        if (type != 0 && entries[n].type != wanted)
            continue;
        descSet(desc, *image, n, last);
        last = &entries[n];
        list += desc;
    }
    return 0;
}

int NX_ResLib::descFind(NX_ResDesc& found, Key const& type, Key const& id, int lang, bool isLangOnly) const {
    NXS_ResImage const* const image = imageP();
    if (image == nullptr)
        return -1;
    unsigned int const n = image->find(type.image(), id.image(), lang, isLangOnly);
    if (n != NX_NO_INDEX) {
        descSet(found, *image, n, nullptr);
        return 0;
    }
    nxResLibERR(errorNumResLibNotFound, resLibName(), sourceFile, __LINE__);
    return id.name.itemQty() != 0 ? NxErrorBufText(id.name.dataPConst()) : NxErrorBufValue(id.number);
}

int NX_ResLib::resDescFind(NX_ResDesc& found, int type, int id, int lang) const {
    return descFind(found, type, id, lang);
}

int NX_ResLib::resDescFind(NX_ResDesc& found, int type, NX_StringA const& name, int lang) const {
    return descFind(found, type, name, lang);
}

int NX_ResLib::resDescFind(NX_ResDesc& found, NX_StringA const& type, int id, int lang) const {
    return descFind(found, type, id, lang);
}

int NX_ResLib::resDescFind(NX_ResDesc& found, NX_StringA const& type, NX_StringA const& name,
                           int lang) const {
    return descFind(found, type, name, lang);
}

int NX_ResLib::resDescFindNear(NX_ResDesc& found, int type, int id, int lang) const {
    return descFind(found, type, id, lang, false);
}

int NX_ResLib::resDescFind(NX_ResDesc& found, NX_ResDesc const& desc) const {
    NXS_ResImage const* const image = imageP();
    if (image == nullptr)
        return -1;
    if (desc.index_ < image->entries().itemQty()) {
        NX_ResDesc own;
        descSet(own, *image, desc.index_, nullptr);
        if (own.isSame(desc)) {
            found = own;
            return 0;
        }
    }
    return descFind(found, {desc.type_, desc.typeName_}, {desc.id_, desc.name_}, desc.lang_);
}

int NX_ResLib::resDataLoad(NX_ResData& data, NX_ResDesc const& desc) const {
    NX_ResDesc own;
    if (resDescFind(own, desc) != 0)
        return -1;
    NXS_ResImage const* const image = imageP();
    NXS_ResEntry const& entry = image->entries()[own.index_];
    data.lib_ = *this;
    data.data_ = image->dataP(entry);
    data.size_ = entry.size;
    return 0;
}

int NX_ResLib::resTextLoad(char* buffer, int size, int id) const {
    if (resLibIsOpen() == 0 || size < 2)
        return 0;
    if (rep()->module != nullptr) {
        int const length = LoadStringA(rep()->module, static_cast<UINT>(id), buffer, size);
        return length > 0 ? length : 0;
    }
    unsigned int const length = rep()->image->textLoad(buffer, static_cast<unsigned int>(size) - 1,
                                                       static_cast<unsigned int>(id) & 0xFFFF);
    if (length > 0)
        buffer[length] = 0;
    return static_cast<int>(length);
}
