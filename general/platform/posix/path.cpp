// general/platform/posix/path.cpp - the one normalisation of names, and the calls on names alone.
#include "general/platform/posix/path.h"

#include <errno.h>
#include <sys/stat.h>

#include <cstring>

#include "general/platform/posix/calls.h"
#include "general/platform/posix/codepage.h"
#include "general/platform/posix/error.h"
#include "general/platform/posix/seam.h"

namespace {

bool isSeparator(char unit) {
    return unit == '/' || unit == '\\';
}

bool isDrive(char const* name) {
    return ((name[0] >= 'A' && name[0] <= 'Z') || (name[0] >= 'a' && name[0] <= 'z')) && name[1] == ':';
}

// Whether a component names the null device: `nul`, with anything after a dot, a colon or spaces.
bool isNull(char const* component, std::size_t length) {
    if (length < 3 || (component[0] | 0x20) != 'n' || (component[1] | 0x20) != 'u' ||
        (component[2] | 0x20) != 'l') {
        return false;
    }
    std::size_t at = 3;
    while (at < length && component[at] == ' ') {
        ++at;
    }
    return at == length || component[at] == '.' || (component[at] == ':' && at + 1 == length);
}

// One name on its way through the rules.
class Normaliser {
public:
    Normaliser(char const* name, unsigned int flags, NXS_Path& path)
        : in_(name), flags_(flags), path_(path) {}

    DWORD run() {
        std::size_t const given = in_ == nullptr ? 0 : std::strlen(in_);
        if (given == 0) {
            return ERROR_PATH_NOT_FOUND;
        }
        if (given > NX_PATH_GIVEN_MAX) {
            return ERROR_FILENAME_EXCED_RANGE;
        }
        path_.trailing = path_.device = path_.wild = path_.starDot = false;
        DWORD code = begin();
        bool more = *in_ != 0;
        while (code == 0 && more) {
            code = component(more);
        }
        if (code == 0 && !path_.device) {
            finish();
        }
        return code;
    }

private:
    bool has(unsigned int flag) const { return (flags_ & flag) != 0; }

    // The start of the output: a device prefix, a drive, the root, the current directory or nothing.
    DWORD begin() {
        out_ = root_ = 0;
        if (isSeparator(in_[0]) && isSeparator(in_[1]) && in_[2] == '.' && isSeparator(in_[3])) {
            bool const null = isNull(in_ + 4, std::strlen(in_ + 4));
            if (!null && !has(NXS_PathLexical)) {
                return ERROR_PATH_NOT_FOUND;
            }
            in_ += 4;
            if (!null) {
                std::memcpy(path_.text, "//./", 4);
                out_ = root_ = 4;
                skipSeparators();
                path_.trailing = *in_ == 0;
            }
            return 0;
        }
        if (isDrive(in_)) {
            if (!has(NXS_PathLexical)) {
                return ERROR_PATH_NOT_FOUND;
            }
            path_.text[0] = in_[0];
            path_.text[1] = ':';
            path_.text[2] = '/';
            in_ += 2;
            out_ = root_ = 3;
            skipSeparators();
            return 0;
        }
        if (isSeparator(in_[0])) {
            path_.text[0] = '/';
            out_ = root_ = 1;
            skipSeparators();
            path_.trailing = *in_ == 0;
            return 0;
        }
        return has(NXS_PathFull) ? work() : 0;
    }

    DWORD work() {
        if (nxSeam.workGet(path_.text, NX_PATH_WORK_MAX) == nullptr) {
            return nxErrorFromErrno(errno);
        }
        out_ = std::strlen(path_.text);
        root_ = 1;
        if (out_ > 1) {
            path_.text[out_++] = '/';
        }
        return 0;
    }

    void skipSeparators() {
        while (isSeparator(*in_)) {
            ++in_;
        }
    }

    // Takes one component from the input. The output ends in '/' or is empty before each component.
    DWORD component(bool& more) {
        char const* const begin = in_;
        bool reserved = false; // never allowed
        bool quoted = false;   // allowed in the last component of a pattern, as ordinary characters
        bool wild = false;     // allowed there too
        while (*in_ != 0 && !isSeparator(*in_)) {
            auto const unit = static_cast<unsigned char>(*in_);
            if (unit == '*' || unit == '?') {
                wild = true;
            } else if (unit == '<' || unit == '>' || unit == '"') {
                quoted = true;
            } else if (unit < 32 || unit == '|') {
                reserved = true;
            }
            in_ += nxPlatformUnitsAt(in_);
        }
        auto length = static_cast<std::size_t>(in_ - begin);
        bool const separated = *in_ != 0;
        skipSeparators();
        more = *in_ != 0;
        reserved = reserved || (quoted && (more || !has(NXS_PathPattern)));
        if (reserved && !has(NXS_PathLexical)) {
            return ERROR_INVALID_NAME;
        }
        if (length == 1 && begin[0] == '.') {
            path_.trailing = separated;
            return 0;
        }
        if (length == 2 && begin[0] == '.' && begin[1] == '.') {
            path_.trailing = separated;
            up();
            return 0;
        }
        if (more) {
            return inner(begin, length, wild);
        }
        return final(begin, length, wild, separated);
    }

    DWORD inner(char const* begin, std::size_t length, bool wild) {
        if (begin[length - 1] == '.') {
            --length;
        }
        if (has(NXS_PathLexical)) {
            append(begin, length);
            return 0;
        }
        if (wild) {
            return ERROR_INVALID_NAME;
        }
        if (length == 2 && begin[0] == '.' && begin[1] == '.') {
            return ERROR_PATH_NOT_FOUND; // written as three dots: no such directory, and not the parent
                                         // either
        }
        if (length > NX_PATH_COMPONENT_MAX) {
            return ERROR_INVALID_NAME;
        }
        append(begin, length);
        return 0;
    }

    DWORD final(char const* begin, std::size_t length, bool wild, bool separated) {
        std::size_t const given = length;
        if (!separated && !wild && isNull(begin, length)) {
            char const* const device = has(NXS_PathLexical) ? "//./" : "/dev/";
            std::memcpy(path_.text, device, 5);
            out_ = std::strlen(device);
            path_.device = true;
            path_.last = out_;
            std::memcpy(path_.text + out_, has(NXS_PathLexical) ? begin : "null", 4);
            path_.length = out_ + (has(NXS_PathLexical) ? 3u : 4u);
            path_.text[path_.length] = 0;
            return 0;
        }
        if (separated) {
            if (begin[length - 1] == '.') {
                --length;
            }
        } else {
            while (length > 0 && (begin[length - 1] == '.' || begin[length - 1] == ' ')) {
                --length;
            }
        }
        path_.wild = wild;
        path_.starDot = wild && begin[given - 1] == '.' && length > 0 && begin[length - 1] == '*';
        if (!has(NXS_PathLexical)) {
            if (wild && (!has(NXS_PathPattern) || separated)) {
                return ERROR_INVALID_NAME;
            }
            if (length > NX_PATH_COMPONENT_MAX) {
                return ERROR_INVALID_NAME;
            }
            if (length == 2 && begin[0] == '.' && begin[1] == '.') {
                return ERROR_PATH_NOT_FOUND;
            }
        }
        path_.trailing = separated || length == 0;
        append(begin, length);
        return 0;
    }

    void append(char const* begin, std::size_t length) {
        if (length > 0) {
            std::memcpy(path_.text + out_, begin, length);
            out_ += length;
            path_.text[out_++] = '/';
        }
    }

    // One directory up: never above the root; a relative name that has run out of components goes on with
    // "..".
    void up() {
        if (out_ <= root_) {
            if (root_ == 0) {
                append("..", 2);
            }
            return;
        }
        std::size_t const begin = lastBegin(out_ - 1);
        if (root_ == 0 && out_ - begin == 3 && path_.text[begin] == '.' && path_.text[begin + 1] == '.') {
            append("..", 2);
            return;
        }
        out_ = begin;
    }

    // Where the component that ends at `end` begins. '/' in the output may be a trail byte nowhere: no
    // double-byte page has it as one.
    std::size_t lastBegin(std::size_t end) const {
        while (end > root_ && path_.text[end - 1] != '/') {
            --end;
        }
        return end;
    }

    void finish() {
        if (out_ > root_) {
            --out_; // the separator after the last component
        }
        if (out_ == 0) {
            path_.text[out_++] = '.';
        }
        path_.length = out_;
        path_.last = out_ > root_ ? lastBegin(out_) : out_;
        path_.text[out_] = 0;
    }

    char const* in_;
    unsigned int flags_;
    NXS_Path& path_;
    std::size_t out_ = 0;
    std::size_t root_ = 0; // the part of the output that `..` never takes away
};

} // namespace

void NXS_Path::directory(char* buffer) const {
    std::size_t size = last;
    if (size > 1 && text[size - 1] == '/') {
        --size;
    }
    if (size == 0) {
        buffer[size++] = '.';
    } else {
        std::memcpy(buffer, text, size);
    }
    buffer[size] = 0;
}

DWORD nxPathNormalise(char const* name, unsigned int flags, NXS_Path& path) {
    return Normaliser(name, flags, path).run();
}

DWORD nxPathError(NXS_Path const& path, int error) {
    if (error == ENOENT) {
        char parent[sizeof path.text];
        path.directory(parent);
        struct statx found;
        if (nxSeam.stat(AT_FDCWD, parent, 0, STATX_TYPE, &found) < 0 || !S_ISDIR(found.stx_mode)) {
            return ERROR_PATH_NOT_FOUND;
        }
    }
    return nxErrorFromErrno(error);
}

DWORD GetFullPathNameA(LPCSTR name, DWORD size, LPSTR buffer, LPSTR* filePart) {
    NXS_Path path;
    if (name == nullptr || name[std::strspn(name, " ")] == 0) {
        return 0;
    }
    DWORD const code = nxPathNormalise(name, NXS_PathFull | NXS_PathLexical, path);
    if (code != 0) {
        nxErrorSet(code);
        return 0;
    }
    bool const named = !path.trailing && !path.device && path.last < path.length;
    if (path.trailing && path.length > 0 && path.text[path.length - 1] != '/') {
        path.text[path.length++] = '/';
        path.text[path.length] = 0;
    }
    if (path.length >= size || buffer == nullptr) {
        return static_cast<DWORD>(path.length + 1);
    }
    std::memcpy(buffer, path.text, path.length + 1);
    if (filePart != nullptr) {
        *filePart = named ? buffer + path.last : nullptr;
    }
    return static_cast<DWORD>(path.length);
}

DWORD GetCurrentDirectoryA(DWORD size, LPSTR buffer) {
    char work[NX_PATH_WORK_MAX];
    if (nxSeam.workGet(work, sizeof work) == nullptr) {
        nxErrorSet(nxErrorFromErrno(errno));
        return 0;
    }
    std::size_t const length = std::strlen(work);
    if (length >= size || buffer == nullptr) {
        return static_cast<DWORD>(length + 1);
    }
    std::memcpy(buffer, work, length + 1);
    return static_cast<DWORD>(length);
}

BOOL SetCurrentDirectoryA(LPCSTR name) {
    NXS_Path path;
    DWORD code = nxPathNormalise(name, NXS_PathPlain, path);
    if (code == 0 && nxSeam.workSet(path.text) < 0) {
        code = errno == ENOTDIR ? DWORD{ERROR_DIRECTORY} : nxPathError(path, errno);
    }
    return code == 0 ? TRUE : nxFail(code);
}
