// general/text/stringname.cpp - file names: questions, positions, and the operations on the name as a whole.
#include "general/text/stringa.h"

#include "general/text/namewalk.h"
#include "general/text/regexp.h"
#include "general/text/textwild.h"

int NX_StringA::nameIsAbs() const {
    char const* p = dataPConst();
    unsigned int const drive = nxNameDriveLen(p, strLen());
    return strLen() > drive && nxNameIsSep(p[drive]);
}

int NX_StringA::nameIsDrive() const {
    return strLen() == 2 && nxNameDriveLen(dataPConst(), 2) == 2;
}

int NX_StringA::nameIsDir() const {
    return strLen() > 0 && nxNameIsSepDone(dataPConst(), strLen());
}

int NX_StringA::nameIsWild() const {
    return strCharFirst("*?") != NX_NO_INDEX;
}

unsigned int NX_StringA::nameNodeLastOff() const {
    NXS_NameWalk walk(dataPConst(), strLen());
    unsigned int last = strLen();
    while (walk.next())
        last = walk.start();
    return last;
}

unsigned int NX_StringA::nameBodyExtOff() const {
    return nxNameBodyOff(dataPConst(), strLen());
}

unsigned int NX_StringA::nameExtOff() const {
    char const* p = dataPConst();
    unsigned int const len = strLen();
    unsigned int const body = nxNameBodyOff(p, len);
    if (len - body <= 2 && p[body] == '.' && p[len - 1] == '.')
        return len; // the directory itself, or its parent
    unsigned char const* lead = NxTextDbcsP();
    unsigned int dot = len;
    for (unsigned int i = body; i < len; i = nxNameNext(p, len, i, lead)) {
        if (p[i] == '.')
            dot = i;
    }
    return dot;
}

NX_IntVec NX_StringA::nameNodeVec() const {
    NX_IntVec nodes;
    NXS_NameWalk walk(dataPConst(), strLen());
    while (walk.next())
        nodes += static_cast<int>(walk.start());
    return nodes;
}

NX_StringA& NX_StringA::nameDirSep() {
    if (!nxNameIsSepDone(dataPConst(), strLen()))
        *this += nxNameSepUsed(dataPConst(), strLen(), nxNameSep);
    return *this;
}

NX_StringA& NX_StringA::nameDirSep(NX_FileNameType type) {
    return type == NX_FileNameDir ? nameDirSep() : *this;
}

NX_StringA& NX_StringA::nameAbbreviate(unsigned int maxLen) {
    static constexpr unsigned int markLen = 3; // of the "..." in place of what is removed
    NX_IntVec const nodes = nameNodeVec();
    if (strLen() <= maxLen || nodes.itemQty() < 2)
        return *this;
    // Nodes low up to high - 1 are removed, with the separators behind them save the last one.
    unsigned int const last = nodes.itemQty() - 1;
    unsigned int low = last / 2;
    unsigned int high = low;
    unsigned int cutLen = 0;
    for (bool right = true; high - low < last; right = !right) {
        if ((right && high < last) || low == 0)
            ++high;
        else
            --low;
        // The separator in front of the node that follows stays.
        cutLen = static_cast<unsigned int>(nodes[high] - nodes[low]) - 1;
        if (strLen() - cutLen + markLen <= maxLen)
            break;
    }
    if (cutLen > markLen)
        strReplaceAt(static_cast<unsigned int>(nodes[low]), cutLen, "...", markLen);
    return *this;
}

NX_StringA& NX_StringA::nameWildMergeBodyExt(char const* pattern, int patLen, int fold) {
    unsigned int const body = nameBodyExtOff();
    unsigned int const bodyLen = strLen() - body;
    if (pattern == nullptr || patLen < 0)
        patLen = 0;
    // Each byte of the pattern lengthens the name by two at most.
    unsigned int const room = bodyLen + 2 * static_cast<unsigned int>(patLen) + 2;
    NX_StringA merged(dataPConst() + body, bodyLen);
    merged.strLen(room, 0);
    int const len = NxTextWildMerge(merged.dataPMod(), static_cast<int>(bodyLen), static_cast<int>(room),
                                    patLen > 0 ? pattern : "", patLen, fold);
    return strReplaceAt(body, bodyLen, merged.dataPConst(), static_cast<unsigned int>(len));
}

NX_StringA& NX_StringA::nameWildMergeBodyExt(char const* pattern, int fold) {
    return nameWildMergeBodyExt(NX_StringA(pattern), fold);
}

NX_StringA& NX_StringA::nameWildMergeBodyExt(NX_StringA const& pattern, int fold) {
    return nameWildMergeBodyExt(pattern.dataPConst(), static_cast<int>(pattern.strLen()), fold);
}

int NX_StringA::nameInc() {
    static NX_RegExpA const& digits = *new NX_RegExpA("[0-9]+");
    unsigned int last = NX_NO_INDEX;
    unsigned int lastLen = 0;
    unsigned int len = 0;
    for (unsigned int at = itemNum(digits, &len, 0); at != NX_NO_INDEX;
         at = itemNum(digits, &len, at + len)) {
        last = at;
        lastLen = len;
    }
    if (last == NX_NO_INDEX)
        return -1;
    return NxTextInc(dataPMod() + last, static_cast<int>(lastLen));
}
