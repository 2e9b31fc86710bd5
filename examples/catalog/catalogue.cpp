#include "examples/catalog/catalogue.h"

#include "examples/catalog/errors.h"
#include "examples/catalog/outfile.h"
#include "examples/catalog/progress.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>

namespace {

// The longest path, with a pattern behind it, that a search takes.
constexpr unsigned int pathMost = 259;

char const magic[] = "catalogue";

// Loading a damaged file ends here first: the error has been recorded, and the stream delivers nothing more.
void loadFailed(void*, NX_PersistTextLoad&, int, long) {}

int damaged(NX_StringA const& file, unsigned long pos) {
    NxERROR(errorNumPersistText);
    NxErrorBufFileName(file);
    return NxErrorBufPos(static_cast<long>(pos));
}

// The last line of a catalogue's file: "E", the checksum as eight hexadecimal digits, a line feed. The
// checksum is the 32-bit FNV-1a hash (G. Fowler, L. C. Noll, K.-P. Vo) of all bytes before the line: any one
// byte changed there changes it.
class SumLine {
public:
    static constexpr unsigned int size = 10;

    explicit SumLine(NX_TextVecA const& content) {
        std::uint32_t sum = 2166136261u;
        char const* const bytes = content.dataPConst();
        for (unsigned int n = 0; n < content.itemQty(); ++n)
            sum = (sum ^ static_cast<unsigned char>(bytes[n])) * 16777619u;
        line_.strPrintF("E%08x\n", sum);
    }

    NX_StringA const& line() const { return line_; }

private:
    NX_StringA line_;
};

// Ends the file with the checksum of what it holds. 0, or -1 with an error recorded.
int sumAppend(NX_StringA const& file) {
    NX_File stored(file, NX_File::modeReadWrite | NX_File::modeExclusive);
    NX_TextVecA content;
    if (stored.fileIsOpen() == 0 || content.dataRead(stored) == -1)
        return -1;
    SumLine const sum(content);
    return stored.dataWrite(sum.line().dataPConst(), sum.line().strLen());
}

// 0 when the file ends with its checksum; -1 with an error recorded.
int sumCheck(NX_File& stored) {
    NX_TextVecA content;
    if (content.dataRead(stored) == -1)
        return -1;
    unsigned int const size = content.itemQty();
    if (size < SumLine::size)
        return damaged(stored.fileName(), size);
    NX_StringA const found(content.dataPConst() + (size - SumLine::size), SumLine::size);
    content.itemQty(size - SumLine::size);
    return found.strCompare(SumLine(content).line(), NX_CompareExact) == 0 ? 0
                                                                           : damaged(stored.fileName(), size);
}

template <class Info>
int NX_FASTCALL byName(Info const* a, Info const* b) {
    int const folded = NX_FileInfo::nameCompare(a, b);
    return folded != 0 ? folded : a->strCompare(*b, NX_CompareExact);
}

// The newest and the largest first, as one looks for them; equal ones by name.
template <class Info>
int NX_FASTCALL byAge(Info const* a, Info const* b) {
    int const age = b->fileAge().ageCompareExact(a->fileAge());
    return age != 0 ? age : byName(a, b);
}

template <class Info>
int NX_FASTCALL bySize(Info const* a, Info const* b) {
    int const size = NX_FileInfo::sizeCompare(b, a);
    return size != 0 ? size : byName(a, b);
}

template <class Info>
auto compareFor(Order order) {
    using Compare = int(NX_FASTCALL*)(Info const*, Info const*);
    switch (order) {
    case Order::name:
        return static_cast<Compare>(byName<Info>);
    case Order::age:
        return static_cast<Compare>(byAge<Info>);
    case Order::size:
        return static_cast<Compare>(bySize<Info>);
    case Order::none:
        break;
    }
    return static_cast<Compare>(nullptr);
}

} // namespace

bool nameKeeps(NX_StringA const& name) {
    return NxTextSpaceLen(name.dataPConst()) == 0 && name.strCharFirst('\n') == NX_NO_INDEX;
}

bool nameIsTree(NX_StringA const& name) {
    return name.nameType() == NX_FileNameDir || name.nameIsDrive() != 0;
}

DirCompare dirCompare(Order order) {
    return compareFor<NX_DirInfo>(order);
}

FileCompare fileCompare(Order order) {
    return compareFor<NX_FileInfo>(order);
}

// Scanning takes a directory that may not be read, or whose path is too long for a search, for an empty one,
// and the file cannot keep every name.
int Catalogue::dirCheck(NX_DirInfo const& dir) const {
    if (!nameKeeps(dir))
        return fileFail(errorNameKept, dir);
    if (dir.strLen() + std::max(choices_.pattern.strLen(), 3u) > pathMost)
        return fileFail(errorPathLong, dir);
    if (dir.fileColl().itemQty() == 0 && dir.subColl().itemQty() == 0) {
        std::error_code code;
        std::filesystem::directory_iterator const entries(dir.dataPConst(), code);
        if (code)
            return fileFail(errorNumFileAccess, dir);
    }
    for (NX_FileInfoVecPtrConst file(dir.fileColl()); file.itemIsAvail() != 0; ++file)
        if (!nameKeeps(*file))
            return fileFail(errorNameKept, *file);
    for (NX_DirInfoVecPtrConst sub(dir.subColl()); sub.itemIsAvail() != 0; ++sub)
        if (dirCheck(*sub) == -1)
            return -1;
    return 0;
}

int Catalogue::dirRead(NX_StringA const& dir) {
    NX_StringA name(dir);
    if (name.nameType() == NX_FileNameMissing)
        return fileFail(errorNumFileNotFound, dir);
    if (!nameIsTree(name))
        return fileFail(errorNotDir, dir);
    name.nameDirSep();
    {
        Progress const progress;
        root_ = std::make_unique<NX_DirInfo>(name, dirCompare(choices_.order), choices_.leaveOut,
                                             choices_.find, nullptr, ageWrite, choices_.pattern.dataPConst());
    }
    return dirCheck(*root_);
}

int Catalogue::fileLoad(NX_StringA const& file) {
    // Tells a file that is missing, locked or a directory from one that is damaged, and keeps writers away.
    NX_File stored(file, NX_File::modeReadDenyWrite);
    if (stored.fileIsOpen() == 0)
        return -1;
    NX_PersistTextLoad load(file, static_cast<int>(std::ios::binary), 0, loadFailed, nullptr);
    NX_StringA word;
    NX_StringA leaveOut;
    int find = 0;
    int order = 0;
    load >> word;
    if (load.errorNum() == 0 && word.strCompare(magic, NX_CompareExact) == 0) {
        load >> choices_.pattern >> leaveOut >> find >> order;
        NX_DirInfo* loaded = nullptr;
        load >> loaded;
        root_.reset(loaded);
    }
    if (load.errorNum() != 0 || (root_ == nullptr ? damaged(file, 0) : sumCheck(stored)) == -1) {
        root_.reset();
        return -1;
    }
    choices_.find = static_cast<NX_FileFindType>(find);
    choices_.order = static_cast<Order>(order);
    choices_.leaveOut.collDefault();
    NX_TokenizerA names(leaveOut);
    for (;;) {
        NX_CharASub const name = names("/");
        if (name.itemQty() == 0)
            return 0;
        choices_.leaveOut += NX_StringA(name);
    }
}

int Catalogue::read(NX_StringA const& name) {
    return nameIsTree(name) ? dirRead(name) : fileLoad(name);
}

int Catalogue::write(NX_StringA const& file) const {
    NX_StringA leaveOut;
    for (NX_StringVecAPtrConst name(choices_.leaveOut); name.itemIsAvail() != 0; ++name) {
        if (leaveOut.strLen() != 0)
            leaveOut += '/';
        leaveOut += *name;
    }
    NX_PersistTextSave save(file, static_cast<int>(std::ios::binary), 0);
    save << NX_StringA(magic) << choices_.pattern << leaveOut << ' ' << static_cast<int>(choices_.find) << ' '
         << static_cast<int>(choices_.order) << root_.get();
    save << '\n';
    save.flush();
    return save.good() ? 0 : fileFail(errorNumDiskFull, file);
}

int Catalogue::fileSave(NX_StringA const& file) const {
    return fileReplace(file, [this](NX_StringA const& temporary) {
        return write(temporary) == -1 ? -1 : sumAppend(temporary);
    });
}
