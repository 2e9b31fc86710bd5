// general/text/textnumber.cpp - reading numbers. They are 32 bits wide on every target, however wide a long
// is.
#include <cstdint>

#include "general/text/textprim.h"
#include "general/text/texttable.h"
#include "general/text/textwalk.h"

namespace {

long longOf(std::uint32_t value) {
    return static_cast<std::int32_t>(value);
}

template <class Text>
long parse(Text const& text, typename Text::Unit const*& end) {
    auto const* p = text.start;
    auto const typeAt = [&text](auto const* at) { return nxTextClass(text.value(at)); };
    while (text.more(p) && (typeAt(p) & NX_TextSpace))
        p = text.next(p);
    bool negative = false;
    if (text.more(p) && (text.value(p) == '+' || text.value(p) == '-')) {
        negative = text.value(p) == '-';
        p = text.next(p);
    }
    std::uint32_t value = 0;
    if (text.more(p) && text.value(p) == '0' && text.more(text.next(p)) &&
        (text.value(text.next(p)) | 0x20u) == 'x') {
        p = text.next(text.next(p));
        for (; text.more(p) && (typeAt(p) & NX_TextHexDigit); p = text.next(p))
            value = value * 16 + NxTextHexToBinaryP()[text.value(p) - '0'];
    } else {
        for (; text.more(p) && (typeAt(p) & NX_TextDigit); p = text.next(p))
            value = value * 10 + (text.value(p) - '0');
    }
    end = p;
    return longOf(negative ? 0u - value : value);
}

template <class End>
auto numberOf(End* end) {
    return [end](auto const& text) {
        typename std::decay_t<decltype(text)>::Unit const* stop = nullptr;
        long const value = parse(text, stop);
        if (end)
            *end = nxTextPtr(stop);
        return value;
    };
}

long binaryMsb(unsigned char const* p, std::size_t bytes, bool isSigned) {
    std::uint32_t value = isSigned && *p >= 0x80 ? 0xFFFFFFFFu : 0u;
    for (std::size_t i = bytes > 4 ? bytes - 4 : 0; i < bytes; ++i)
        value = value << 8 | p[i];
    return longOf(value);
}

long binaryLsb(unsigned char const* p, std::size_t bytes, bool isSigned) {
    std::uint32_t value = isSigned && p[bytes - 1] >= 0x80 ? 0xFFFFFFFFu : 0u;
    for (std::size_t i = bytes > 4 ? 4 : bytes; i-- > 0;)
        value = value << 8 | p[i];
    return longOf(value);
}

template <class TextPtr>
long fieldOf(TextPtr text, int len, NX_DataType type) {
    if (len <= 0)
        return 0;
    auto const* bytes = reinterpret_cast<unsigned char const*>(text.textP());
    std::size_t const qty = static_cast<std::size_t>(len) * sizeof(*text.textP());
    switch (type) {
    case NX_DataMsbInt:
    case NX_DataMsbUInt:
        return binaryMsb(bytes, qty, type == NX_DataMsbInt);
    case NX_DataLsbInt:
    case NX_DataLsbUInt:
        return binaryLsb(bytes, qty, type == NX_DataLsbInt);
    case NX_DataText:
    case NX_DataTextLeft:
    case NX_DataTextRight:
        return NxTextLongGet(text, len, nullptr);
    default:
        return 0;
    }
}

} // namespace

long NxTextLongGet(NX_TextA1PtrConst text, char const** end) {
    return nxText(text, numberOf(end));
}

long NxTextLongGet(NX_TextW1PtrConst text, unsigned short const** end) {
    return nxText(text, numberOf(end));
}

long NxTextLongGet(NX_TextA1PtrConst text, int len, char const** end) {
    return nxText(text, len, numberOf(end));
}

long NxTextLongGet(NX_TextW1PtrConst text, int len, unsigned short const** end) {
    return nxText(text, len, numberOf(end));
}

long NxTextLongGet(NX_TextA1PtrConst text, int len, NX_DataType type) {
    return fieldOf(text, len, type);
}

long NxTextLongGet(NX_TextW1PtrConst text, int len, NX_DataType type) {
    return fieldOf(text, len, type);
}
