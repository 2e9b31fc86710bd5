// tests/collm/rawvec.h - a vector of plain items of any size, with the protected operations open.
#pragma once

#include "general/collm/v1.h"
#include "general/collm/vsub.h"

#include <string>

class RawVec : public NX_VecM {
public:
    explicit RawVec(unsigned int itemSize, unsigned long refNo = 0x100) : NX_VecM(refNo, 1, itemSize) {}
    RawVec(RawVec const&) = default;
    RawVec(std::string const& text) : NX_VecM(NXS_EmptyBlock<1>::blockP()) {
        dataReplaceAt(0, 0, text.data(), static_cast<unsigned int>(text.size()));
    }
    ~RawVec() override { RawVec::collManDec(); }
    RawVec& operator=(RawVec const&) = default;

    void collManClone(unsigned int cap) override { refManClone(cap); }
    void collManClone() override { refManClone(itemQty()); }
    int collManFlag(NX_RefFlag flag, int on) const override { return refManFlag(flag, on); }
    void collManCreate(void*, unsigned int) override {}
    void collManDec() override { refManDec(); }
    void collManInc() const override { refManInc(); }
    unsigned int collManItemSize() const override { return itemSize(); }

    std::string text() const { return std::string(dataPConst(), dataSize()); }

    using NX_VecM::dataBin, NX_VecM::dataHex, NX_VecM::dataPConst, NX_VecM::dataReplaceAt, NX_VecM::dataSort;
    using NX_VecM::dataValid, NX_VecM::itemMax, NX_VecM::itemMin, NX_VecM::itemSearch, NX_VecM::itemSearchSeq;
};

class RawSub : public NX_VecSubM {
public:
    RawSub(RawVec const* vec, unsigned int first, unsigned int qty) : NX_VecSubM(vec, first, qty) {}
    RawSub(RawSub const&) = default;
    using NX_VecSubM::operator=;
    RawSub& operator=(RawSub const&) = default;

    std::string text() const { return std::string(dataPConst(), dataSize()); }

    using NX_VecSubM::dataPConst, NX_VecSubM::dataReplace, NX_VecSubM::dataSort;
    using NX_VecSubM::itemPConst, NX_VecSubM::itemSearch, NX_VecSubM::itemSearchSeq;
};

// Comparisons of one-byte items.
inline int NX_FASTCALL byteCompare(char const* a, char const* b) {
    return static_cast<unsigned char>(*a) - static_cast<unsigned char>(*b);
}
inline int NX_FASTCALL byteCompareContext(char const* a, char const* b, void*) {
    return byteCompare(a, b);
}
