#include "examples/catalog/outfile.h"

#include "examples/catalog/errors.h"

#include <filesystem>

namespace {

// Where a file named `file` really lies: behind a link the file that it leads to. 0, or -1 with an error
// recorded: a device or the like, a link to nowhere, a file that may not be written or that others use.
int targetFind(NX_StringA& file) {
    std::error_code code;
    if (std::filesystem::is_symlink(file.dataPConst(), code)) {
        std::filesystem::path const real = std::filesystem::canonical(file.dataPConst(), code);
        if (code)
            return fileFail(errorNumFileNotFound, file);
        file = real.string().c_str();
    }
    if (file.nameType() == NX_FileNameMissing)
        return 0;
    if (file.nameType() == NX_FileNameDevice || std::filesystem::is_other(file.dataPConst(), code))
        return fileFail(errorNotFile, file);
    NX_File const target(file, NX_File::modeReadWrite | NX_File::modeExclusive);
    return target.fileIsOpen() != 0 ? 0 : -1;
}

} // namespace

int fileFail(NX_ErrorNum num, NX_StringA const& file) {
    NxERROR(num);
    return NxErrorBufFileName(file);
}

int fileReplace(NX_StringA const& name, std::function<int(NX_StringA const& temporary)> const& write) {
    NX_StringA file(name);
    if (targetFind(file) == -1)
        return -1;
    NX_StringA temporary;
    NX_StringA const dir = file.nameOfDir();
    if (temporary.nameTmp(dir.strLen() != 0 ? dir : NX_StringA(".")) == -1)
        return -1;
    {
        // The file system's own words for a directory that is missing or may not be written to.
        NX_File const made(temporary, NX_File::modeWrite | NX_File::modeCreate);
        if (made.fileIsOpen() == 0)
            return -1;
    }
    if (write(temporary) == -1) {
        NX_ErrorMan attempt;
        NX_File::fileErase(temporary);
        attempt.errorOk();
        return -1;
    }
    std::error_code code;
    std::filesystem::rename(temporary.dataPConst(), file.dataPConst(), code);
    if (code) {
        NX_File::fileErase(temporary);
        return fileFail(errorNumFileAccess, file);
    }
    return 0;
}
