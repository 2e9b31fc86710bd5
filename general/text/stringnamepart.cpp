// general/text/stringnamepart.cpp - file names: parts as views, and replacing them.
#include <cstring>

#include "general/text/namewalk.h"
#include "general/text/stringa.h"

namespace {

unsigned int lengthOf(char const* text) {
    return text != nullptr ? static_cast<unsigned int>(std::strlen(text)) : 0;
}

} // namespace

NX_CharASub NX_StringA::nameDir() const {
    return (*this)(0, nameBodyExtOff());
}

NX_CharASub NX_StringA::nameBody() const {
    unsigned int const body = nameBodyExtOff();
    return (*this)(body, nameExtOff() - body);
}

NX_CharASub NX_StringA::nameExt() const {
    unsigned int const dot = nameExtOff();
    return dot < strLen() ? (*this)(dot + 1, strLen() - dot - 1) : (*this)(dot, 0);
}

NX_CharASub NX_StringA::nameBodyExt() const {
    unsigned int const body = nameBodyExtOff();
    return (*this)(body, strLen() - body);
}

NX_CharASub NX_StringA::nameDirBody() const {
    return (*this)(0, nameExtOff());
}

NX_CharASub NX_StringA::nameNodeLast() const {
    NXS_NameWalk walk(dataPConst(), strLen());
    unsigned int start = strLen();
    unsigned int end = start;
    while (walk.next()) {
        start = walk.start();
        end = walk.end();
    }
    return (*this)(start, end - start);
}

NX_StringA NX_StringA::nameOfDir() const {
    char const* p = dataPConst();
    unsigned int const body = nameBodyExtOff();
    NXS_NameWalk walk(p, body);
    unsigned int end = body; // of drive and root, when no node stands in front of the body
    while (walk.next())
        end = walk.end();
    return NX_StringA(p, end);
}

// Puts `before`, the text and `after` (0: none) in place of what lies between `start` and `end`.
NX_StringA& NX_StringA::partReplace(unsigned int start, unsigned int end, char const* text, unsigned int len,
                                    char before, char after) {
    NX_StringA part; // apart, as the text may be one of this string's own parts
    if (before != 0)
        part += before;
    part.strReplaceAt(part.strLen(), 0, text, len);
    if (after != 0)
        part += after;
    return strReplaceAt(start, end - start, part);
}

// Replaces the directory part from `start` on.
NX_StringA& NX_StringA::dirReplace(unsigned int start, char const* text, unsigned int len, int sep) {
    if (text == nullptr)
        len = 0;
    char after = 0;
    if (sep && !nxNameIsSepDone(text, len))
        after = nxNameSepUsed(text, len, nxNameSepUsed(dataPConst(), strLen(), nxNameSep));
    return partReplace(start, nameBodyExtOff(), text, len, 0, after);
}

NX_StringA& NX_StringA::nameDir(char const* text, unsigned int len, int sep) {
    return dirReplace(0, text, len, sep);
}

NX_StringA& NX_StringA::nameDir(unsigned int keep, char const* text, unsigned int len, int sep) {
    unsigned int const body = nameBodyExtOff();
    NXS_NameWalk walk(dataPConst(), body);
    unsigned int start = body;
    for (unsigned int node = 0; walk.next(); ++node) {
        if (node == keep) {
            start = walk.start();
            break;
        }
    }
    return dirReplace(start, text, len, sep);
}

NX_StringA& NX_StringA::nameBody(char const* text, unsigned int len, int) {
    return partReplace(nameBodyExtOff(), nameExtOff(), text, len, 0, 0);
}

NX_StringA& NX_StringA::nameBodyExt(char const* text, unsigned int len, int) {
    return partReplace(nameBodyExtOff(), strLen(), text, len, 0, 0);
}

NX_StringA& NX_StringA::nameExt(char const* text, unsigned int len, int sep) {
    bool const supply = sep && text != nullptr && len > 0 && text[0] != '.';
    return partReplace(nameExtOff(), strLen(), text, len, supply ? '.' : '\0', 0);
}

// The forms that take their text in other shapes.

NX_StringA& NX_StringA::nameDir(NX_StringA const& text, int sep) {
    return nameDir(text.dataPConst(), text.strLen(), sep);
}

NX_StringA& NX_StringA::nameDir(NX_CharASub const& text, int sep) {
    return nameDir(text.dataPConst(), text.itemQty(), sep);
}

NX_StringA& NX_StringA::nameDir(char const* text, int sep) {
    return nameDir(text, lengthOf(text), sep);
}

NX_StringA& NX_StringA::nameDir(unsigned int keep, NX_StringA const& text, int sep) {
    return nameDir(keep, text.dataPConst(), text.strLen(), sep);
}

NX_StringA& NX_StringA::nameDir(unsigned int keep, NX_CharASub const& text, int sep) {
    return nameDir(keep, text.dataPConst(), text.itemQty(), sep);
}

NX_StringA& NX_StringA::nameDir(unsigned int keep, char const* text, int sep) {
    return nameDir(keep, text, lengthOf(text), sep);
}

NX_StringA& NX_StringA::nameBody(NX_StringA const& text, int sep) {
    return nameBody(text.dataPConst(), text.strLen(), sep);
}

NX_StringA& NX_StringA::nameBody(NX_CharASub const& text, int sep) {
    return nameBody(text.dataPConst(), text.itemQty(), sep);
}

NX_StringA& NX_StringA::nameBody(char const* text, int sep) {
    return nameBody(text, lengthOf(text), sep);
}

NX_StringA& NX_StringA::nameExt(NX_StringA const& text, int sep) {
    return nameExt(text.dataPConst(), text.strLen(), sep);
}

NX_StringA& NX_StringA::nameExt(NX_CharASub const& text, int sep) {
    return nameExt(text.dataPConst(), text.itemQty(), sep);
}

NX_StringA& NX_StringA::nameExt(char const* text, int sep) {
    return nameExt(text, lengthOf(text), sep);
}

NX_StringA& NX_StringA::nameBodyExt(NX_StringA const& text, int sep) {
    return nameBodyExt(text.dataPConst(), text.strLen(), sep);
}

NX_StringA& NX_StringA::nameBodyExt(NX_CharASub const& text, int sep) {
    return nameBodyExt(text.dataPConst(), text.itemQty(), sep);
}

NX_StringA& NX_StringA::nameBodyExt(char const* text, int sep) {
    return nameBodyExt(text, lengthOf(text), sep);
}
