#include "general/module/resfile.h"

#include <algorithm>

#include "general/error/errorman.h"
#include "general/finfo/file.h"
#include "general/platform/platform.h"
#include "general/text/stringvec.h"

namespace {

constexpr std::uint32_t headSize = 4096;

struct TypeExtension {
    NX_ResLibType type;
    char const* lower;
    char const* upper;
};

constexpr TypeExtension typeExtensions[] = {
    {resLibTypeModule, ".dll", ".DLL"}, {resLibTypeModule, ".win", ".WIN"},
    {resLibTypeModule, ".exe", ".EXE"}, {resLibTypeBmp, ".bmp", ".BMP"},
    {resLibTypeIco, ".ico", ".ICO"},    {resLibTypeIco, ".cur", ".CUR"},
};

// The names that a name may stand for, in the order in which they are tried.
NX_StringVecA candidatesOf(NX_StringA const& name, NX_ResLibType type) {
    NX_StringVecA names;
    if (name.nameExtOff() == name.strLen()) {
        for (TypeExtension const& each : typeExtensions) {
            if (type == resLibTypeFile || type == each.type) {
                names += name + each.lower;
                names += name + each.upper;
            }
        }
    }
    names += name;
    return names;
}

int errorNumOf(NX_File const& file) {
    return file.errorNum() == errorNumFileNotFound ? errorNumResLibNotFound : file.errorNum();
}

std::uint64_t joined(DWORD high, DWORD low) {
    return std::uint64_t{high} << 32 | low;
}

} // namespace

NX_StringA nxResFileFind(NX_StringA const& name, int here, NX_ResLibType type) {
    NX_StringVecA const names = candidatesOf(name, type);
    bool const search = here == 0 && name.nameDir().itemQty() == 0;
    NX_StringA const program = NX_ResLib::resLibNameSys(nullptr).nameOfDir();
    for (int place = search ? 0 : 1; place < (search ? 3 : 2); ++place) {
        for (unsigned int n = 0; n < names.itemQty(); ++n) {
            NX_StringA found = names[n];
            if (place == 0)
                found = NX_StringA(program, found.dataPConst(), found.strLen(), NX_FileTypeFile);
            if (place == 2 ? found.nameFind(NX_StringA(), 0) != 0 : found.nameFind() != 0)
                return found;
        }
    }
    return name;
}

NXS_ResFile::NXS_ResFile(NX_StringA const& name) {
    NX_ErrorMan scope(NX_ErrorManSysReset);
    file_ = new NX_File(name, NX_File::modeRead | NX_File::modeRetry);
    BY_HANDLE_FILE_INFORMATION info = {};
    if (!file_->fileIsOpen()) {
        errorNum_ = errorNumOf(*file_);
    } else if (!GetFileInformationByHandle(file_->fileHand(), &info)) {
        NxErrorTypeOfSys(static_cast<long>(GetLastError()));
        errorNum_ = errorNumSystem;
    }
    key_ = {info.dwVolumeSerialNumber, joined(info.nFileIndexHigh, info.nFileIndexLow),
            joined(info.nFileSizeHigh, info.nFileSizeLow),
            joined(info.ftLastWriteTime.dwHighDateTime, info.ftLastWriteTime.dwLowDateTime)};
    scope.errorOk();
}

NXS_ResFile::~NXS_ResFile() {
    NX_ErrorMan scope;
    delete file_;
    scope.errorOk();
}

int NXS_ResFile::read(void* to, std::uint32_t at, std::uint32_t qty) {
    NX_ErrorMan scope(NX_ErrorManSysReset);
    int const result = file_->dataReadAt(static_cast<long>(at), to, qty);
    if (result != 0) // a file that has become shorter meanwhile is no good either
        errorNum_ = file_->errorNum() == errorNumFileShort ? errorNumImage : errorNumOf(*file_);
    scope.errorOk();
    return result;
}

int NXS_ResFile::imageRead(NXS_ResImage& image, NX_ResLibType wanted, int lax) {
    if (errorNum_ != 0)
        return -1;
    unsigned char head[headSize];
    auto const headQty = static_cast<std::uint32_t>(std::min<std::uint64_t>(headSize, key_.size));
    if (headQty != 0 && read(head, 0, headQty) != 0)
        return -1;
    if (lax != 0 && (headQty < 2 || head[0] != 'M' || head[1] != 'Z'))
        return 0;
    std::uint64_t const size = NXS_ResImage::sizeNeeded({head, headQty}, key_.size);
    if (size == 0 || size > NXS_ResImage::sizeMax) {
        errorNum_ = errorNumImage;
        return -1;
    }
    auto const qty = static_cast<std::uint32_t>(size);
    if (read(image.bytesNew(qty), 0, qty) != 0)
        return -1;
    if (image.imageRead(wanted) != 0) {
        errorNum_ = errorNumImage;
        return -1;
    }
    return 0;
}
