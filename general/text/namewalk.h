// Private header. general/text/namewalk.h - walking a file name node by node.
//
// All functions take the name as a counted text and find separators by character, so that a trail byte is
// never taken for one.
#pragma once

#include <filesystem>

#include "general/text/textprim.h"

// The system's own directory separator, and what stands between the directories of PATH.
inline constexpr char nxNameSep = static_cast<char>(std::filesystem::path::preferred_separator);
inline constexpr char nxNameListSep = nxNameSep == '\\' ? ';' : ':';

inline bool nxNameIsSep(char ch) {
    return ch == '\\' || ch == '/';
}

// 2 when the name starts with a drive, else 0.
inline unsigned int nxNameDriveLen(char const* p, unsigned int len) {
    int const letter = NX_TextUpperCase | NX_TextLowerCase;
    return len >= 2 && p[1] == ':' && (NxTextTypeP()[static_cast<unsigned char>(p[0]) + 4] & letter) != 0 ? 2
                                                                                                          : 0;
}

// The position of the character after the one at `pos`, never past the end.
inline unsigned int nxNameNext(char const* p, unsigned int len, unsigned int pos, unsigned char const* lead) {
    unsigned int const width = lead[static_cast<unsigned char>(p[pos])] != 0 && len - pos > 1 ? 2 : 1;
    return pos + width;
}

// Walks the nodes: the runs between separators, behind drive and root.
class NXS_NameWalk {
public:
    NXS_NameWalk(char const* p, unsigned int len)
        : name(p), length(len), lead(NxTextDbcsP()), end_(nxNameDriveLen(p, len)) {}

    // Goes to the next node; false when there is none.
    bool next() {
        start_ = end_;
        while (start_ < length && nxNameIsSep(name[start_]))
            ++start_;
        end_ = start_;
        while (end_ < length && !nxNameIsSep(name[end_]))
            end_ = nxNameNext(name, length, end_, lead);
        return start_ < end_;
    }

    unsigned int start() const { return start_; }
    unsigned int end() const { return end_; }

private:
    char const* name;
    unsigned int length;
    unsigned char const* lead;
    unsigned int start_ = 0;
    unsigned int end_;
};

// The position behind the last separator or the drive.
inline unsigned int nxNameBodyOff(char const* p, unsigned int len) {
    NXS_NameWalk walk(p, len);
    unsigned int last = nxNameDriveLen(p, len);
    unsigned int lastEnd = last;
    while (walk.next()) {
        last = walk.start();
        lastEnd = walk.end();
    }
    return lastEnd < len ? len : last;
}

inline bool nxNameEndsInSep(char const* p, unsigned int len) {
    return len > 0 && nxNameIsSep(p[len - 1]) && nxNameBodyOff(p, len) == len;
}

// True for a text behind which no separator may be put: nothing, a bare drive, or one that ends in a
// separator.
inline bool nxNameIsSepDone(char const* p, unsigned int len) {
    return nxNameDriveLen(p, len) == len || nxNameEndsInSep(p, len);
}

// The last separator in the name, or `otherwise`.
inline char nxNameSepUsed(char const* p, unsigned int len, char otherwise) {
    unsigned char const* lead = NxTextDbcsP();
    char used = otherwise;
    for (unsigned int i = 0; i < len; i = nxNameNext(p, len, i, lead)) {
        if (nxNameIsSep(p[i]))
            used = p[i];
    }
    return used;
}
