// Private header. general/module/resfile.h - finding and reading the file of a resource library.
#pragma once

#include <cstdint>

#include "general/module/resimage.h"

// Which file it is, and which state of it: equal keys stand for the same bytes.
struct NXS_ResFileKey {
    std::uint32_t volume = 0;
    std::uint64_t index = 0;
    std::uint64_t size = 0;
    std::uint64_t written = 0;

    friend bool operator==(NXS_ResFileKey const&, NXS_ResFileKey const&) = default;
};

// The full name of the file meant by `name`, as NX_ResLib::resLibOpen describes; the name itself when there
// is none. With `here` non-zero it is looked for where it stands and nowhere else.
NX_StringA nxResFileFind(NX_StringA const& name, int here, NX_ResLibType type);

// An open file of resources. Failures are kept, not recorded.
class NXS_ResFile {
public:
    explicit NXS_ResFile(NX_StringA const& name);
    NXS_ResFile(NXS_ResFile const&) = delete;
    NXS_ResFile& operator=(NXS_ResFile const&) = delete;
    ~NXS_ResFile();

    // 0, or the error number of resLibOpen that tells why the last step failed.
    int errorNum() const { return errorNum_; }
    NXS_ResFileKey const& key() const { return key_; }

    // Reads the file into `image`. 0 or -1. What is no module at all counts as one without resources when
    // `lax` is not 0.
    int imageRead(NXS_ResImage& image, NX_ResLibType wanted, int lax);

private:
    int read(void* to, std::uint32_t at, std::uint32_t qty);

    class NX_File* file_;
    int errorNum_ = 0;
    NXS_ResFileKey key_;
};
