// general/text/textcopy.cpp - copying and filling text, by unit.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "general/collm/mem.h"
#include "general/text/textprim.h"
#include "general/text/textwalk.h"

namespace {

template <class U>
int lenUpTo(U const* text, int max) {
    return max < 1 ? 0 : static_cast<int>(nxScanLen(text, static_cast<std::size_t>(max)));
}

template <class U>
void move(U* dst, U const* src, int qty) {
    std::memmove(dst, src, static_cast<std::size_t>(qty) * sizeof(U));
}

template <class U>
int copy(U* dst, U const* src, int size) {
    int const qty = src ? lenUpTo(src, size - 1) : 0;
    if (qty)
        move(dst, src, qty);
    if (size != 0)
        dst[qty] = 0;
    return qty;
}

template <class U>
int copyAndPad(U* dst, U const* src, int size, U pad) {
    int const qty = src ? lenUpTo(src, size) : 0;
    if (qty)
        move(dst, src, qty);
    for (int i = qty; i < size; ++i)
        dst[i] = pad;
    return qty;
}

template <class U>
int padTo(U* text, U pad, int width) {
    int const len = static_cast<int>(nxScanLen(text));
    for (int i = len; i < width; ++i)
        text[i] = pad;
    return len;
}

template <class U>
void set2(U* dst, int ch0, int ch1, int count) {
    while (count-- > 0)
        dst[count] = static_cast<U>(count % 2 ? ch1 : ch0);
}

template <class U>
void setSeq(U* dst, int first, int count) {
    for (int i = 0; i < count; ++i)
        dst[i] = static_cast<U>(static_cast<unsigned int>(first) + static_cast<unsigned int>(i));
}

template <class U>
U* dup(U const* src, int len, int extra) {
    std::size_t const qty = len > 0 ? static_cast<std::size_t>(len) : 0;
    std::uint64_t const bytes = (std::uint64_t{qty} + (extra != -1 ? 2 : 1)) * sizeof(U);
    if (bytes > 0xFFFFFFFFu)
        nxMemExhausted();
    auto* text = static_cast<U*>(NxMemStdAlloc(static_cast<unsigned int>(bytes)));
    if (qty)
        std::memcpy(text, src, qty * sizeof(U));
    text[qty] = 0;
    if (extra != -1) {
        text[qty] = static_cast<U>(extra);
        text[qty + 1] = 0;
    }
    return text;
}

unsigned char* units(NX_TextA1Ptr text) {
    return reinterpret_cast<unsigned char*>(text.textP());
}

unsigned short* units(NX_TextW1Ptr text) {
    return text;
}

} // namespace

int NxTextLen(NX_TextA1PtrConst text, int max) {
    return lenUpTo(nxUnits(text), max);
}

int NxTextLen(NX_TextW1PtrConst text, int max) {
    return lenUpTo(nxUnits(text), max);
}

int NxTextCopy(NX_TextA1Ptr dst, NX_TextA1PtrConst src, int size) {
    return copy(units(dst), nxUnits(src), size);
}

int NxTextCopy(NX_TextW1Ptr dst, NX_TextW1PtrConst src, int size) {
    return copy(units(dst), nxUnits(src), size);
}

int NxTextCopyAndPad(NX_TextA1Ptr dst, NX_TextA1PtrConst src, int size, int pad) {
    return copyAndPad(units(dst), nxUnits(src), size, static_cast<unsigned char>(pad));
}

int NxTextCopyAndPad(NX_TextW1Ptr dst, NX_TextW1PtrConst src, int size, int pad) {
    return copyAndPad(units(dst), nxUnits(src), size, static_cast<unsigned short>(pad));
}

int NxTextPad(NX_TextA1Ptr text, int pad, int width) {
    return padTo(units(text), static_cast<unsigned char>(pad), width);
}

int NxTextPad(NX_TextW1Ptr text, int pad, int width) {
    return padTo(units(text), static_cast<unsigned short>(pad), width);
}

NX_TextW1Ptr NxTextSet(NX_TextW1Ptr dst, int ch, int count) {
    return NxTextSet2(dst, ch, ch, count);
}

NX_TextA1Ptr NxTextSet2(NX_TextA1Ptr dst, int ch0, int ch1, int count) {
    set2(units(dst), ch0, ch1, count);
    return dst;
}

NX_TextW1Ptr NxTextSet2(NX_TextW1Ptr dst, int ch0, int ch1, int count) {
    set2(units(dst), ch0, ch1, count);
    return dst;
}

NX_TextA1Ptr NxTextSetSeq(NX_TextA1Ptr dst, int first, int count) {
    setSeq(units(dst), first, count);
    return dst;
}

NX_TextW1Ptr NxTextSetSeq(NX_TextW1Ptr dst, int first, int count) {
    setSeq(units(dst), first, count);
    return dst;
}

NX_TextA1Ptr NxTextDup(NX_TextA1PtrConst src) {
    return NxTextDup(src, static_cast<int>(nxScanLen(nxUnits(src))), -1);
}

NX_TextW1Ptr NxTextDup(NX_TextW1PtrConst src) {
    return NxTextDup(src, static_cast<int>(nxScanLen(nxUnits(src))), -1);
}

NX_TextA1Ptr NxTextDup(NX_TextA1PtrConst src, int len, int extra) {
    return reinterpret_cast<char*>(dup(nxUnits(src), len, extra));
}

NX_TextW1Ptr NxTextDup(NX_TextW1PtrConst src, int len, int extra) {
    return dup(nxUnits(src), len, extra);
}
