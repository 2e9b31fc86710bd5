// general/text/bytescan.cpp - scanning of plain units, sixteen bytes at a time where the processor allows.
#include "general/text/bytescan.h"

#include <bit>

#include "general/text/texttable.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

using Byte = unsigned char;
using Wide = unsigned short;

#if defined(__SSE2__)

__m128i load(Byte const* p) {
    return _mm_loadu_si128(reinterpret_cast<__m128i const*>(p));
}

void store(Byte* p, __m128i v) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
}

__m128i all(int c) {
    return _mm_set1_epi8(static_cast<char>(c));
}

unsigned int maskOf(__m128i v) {
    return static_cast<unsigned int>(_mm_movemask_epi8(v));
}

// All bits where a byte lies in `first` to `last`, by one signed comparison.
__m128i inRange(__m128i v, char first, char last) {
    return _mm_cmplt_epi8(_mm_add_epi8(v, all(128 - first)), all(last - first + 1 - 128));
}

__m128i fold(__m128i v) {
    __m128i const lower = _mm_or_si128(v, _mm_and_si128(inRange(v, 'A', 'Z'), all(0x20)));
    return _mm_add_epi8(lower, _mm_cmpeq_epi8(v, all(0xAD))); // adds -1 to 0xAD
}

// All bits where two bytes are equal or one letter in both cases; a few instructions less than folding both.
__m128i sameButCase(__m128i a, __m128i b) {
    __m128i const differ = _mm_xor_si128(a, b);
    __m128i const letters = inRange(_mm_or_si128(a, all(0x20)), 'a', 'z');
    return _mm_or_si128(_mm_cmpeq_epi8(differ, _mm_setzero_si128()),
                        _mm_and_si128(_mm_cmpeq_epi8(differ, all(0x20)), letters));
}

#endif

// The first or last place of a longer text by its first and last unit, the rest compared in full.
template <class U>
bool matches(U const* p, U const* sub, std::size_t subQty) {
    return std::memcmp(p, sub, subQty * sizeof(U)) == 0;
}

template <class U>
U const* scanPlain(U const* p, std::size_t places, U const* sub, std::size_t subQty) {
    while (places) {
        U const* hit = nxScan(p, places, *sub);
        if (!hit || matches(hit, sub, subQty))
            return hit;
        places -= static_cast<std::size_t>(hit - p) + 1;
        p = hit + 1;
    }
    return nullptr;
}

template <class U>
U const* scanPlainLast(U const* p, std::size_t places, U const* sub, std::size_t subQty) {
    while (U const* hit = nxScanLast(p, places, *sub)) {
        if (matches(hit, sub, subQty))
            return hit;
        places = static_cast<std::size_t>(hit - p);
    }
    return nullptr;
}

// The byte of `sub` to look for: the last one that is no common letter of running text, else the last.
std::size_t rareByte(Byte const* sub, std::size_t subQty) {
    for (std::size_t i = subQty; i-- > 0 && i + 16 > subQty;)
        if (!std::memchr(" etaoinshrdlu", sub[i], 13))
            return i;
    return subQty - 1;
}

template <class U, U First>
void changeCase(U* p, std::size_t qty) {
    for (std::size_t i = 0; i < qty; ++i)
        if (static_cast<U>(p[i] - First) < 26)
            p[i] = static_cast<U>(p[i] ^ 0x20);
}

template <char First>
void changeCaseBytes(Byte* p, std::size_t qty) {
#if defined(__SSE2__)
    for (; qty >= 16; p += 16, qty -= 16) {
        __m128i const v = load(p);
        __m128i const letters = inRange(v, First, First + 25);
        if (maskOf(letters)) // text without such letters may be read-only
            store(p, _mm_xor_si128(v, _mm_and_si128(letters, all(0x20))));
    }
#endif
    changeCase<Byte, First>(p, qty);
}

} // namespace

Wide const* nxScan(Wide const* p, std::size_t qty, Wide unit) {
    for (; qty; ++p, --qty)
        if (*p == unit)
            return p;
    return nullptr;
}

Wide const* nxScanLast(Wide const* p, std::size_t qty, Wide unit) {
    while (qty)
        if (p[--qty] == unit)
            return p + qty;
    return nullptr;
}

Byte const* nxScanLast(Byte const* p, std::size_t qty, Byte unit) {
#if defined(__SSE2__)
    __m128i const units = all(unit);
    while (qty >= 16) {
        qty -= 16;
        if (unsigned int const hits = maskOf(_mm_cmpeq_epi8(load(p + qty), units)))
            return p + qty + (std::bit_width(hits) - 1);
    }
#endif
    while (qty)
        if (p[--qty] == unit)
            return p + qty;
    return nullptr;
}

Byte const* nxScan(Byte const* p, std::size_t qty, Byte const* sub, std::size_t subQty) {
    if (subQty == 0)
        return p;
    if (subQty > qty)
        return nullptr;
    if (subQty == 1)
        return nxScan(p, qty, *sub);
    std::size_t places = qty - subQty + 1;

    // One byte of `sub` alone, at the C library's speed, as long as it turns out to be rare.
    std::size_t const rare = rareByte(sub, subQty);
    std::size_t misses = 0;
    for (Byte const* const start = p; places;) {
        Byte const* hit = nxScan(p + rare, places, sub[rare]);
        if (!hit)
            return nullptr;
        hit -= rare;
        if (matches(hit, sub, subQty))
            return hit;
        std::size_t const passed = static_cast<std::size_t>(hit - p) + 1;
        p += passed;
        places -= passed;
        if (++misses > 4 + static_cast<std::size_t>(p - start) / 256)
            break; // it is not
    }
#if defined(__SSE2__)
    __m128i const first = all(sub[0]);
    __m128i const last = all(sub[subQty - 1]);
    for (; places >= 16; p += 16, places -= 16) {
        __m128i const both =
            _mm_and_si128(_mm_cmpeq_epi8(load(p), first), _mm_cmpeq_epi8(load(p + subQty - 1), last));
        for (unsigned int hits = maskOf(both); hits; hits &= hits - 1) {
            Byte const* hit = p + std::countr_zero(hits);
            if (matches(hit + 1, sub + 1, subQty - 2))
                return hit;
        }
    }
#endif
    return scanPlain(p, places, sub, subQty);
}

Byte const* nxScanLast(Byte const* p, std::size_t qty, Byte const* sub, std::size_t subQty) {
    if (subQty == 0)
        return p + qty;
    if (subQty > qty)
        return nullptr;
    std::size_t places = qty - subQty + 1;
#if defined(__SSE2__)
    __m128i const first = all(sub[0]);
    __m128i const last = all(sub[subQty - 1]);
    for (; places >= 16; places -= 16) {
        Byte const* block = p + places - 16;
        __m128i const both =
            _mm_and_si128(_mm_cmpeq_epi8(load(block), first), _mm_cmpeq_epi8(load(block + subQty - 1), last));
        for (unsigned int hits = maskOf(both); hits; hits ^= std::bit_floor(hits)) {
            Byte const* hit = block + (std::bit_width(hits) - 1);
            if (matches(hit, sub, subQty))
                return hit;
        }
    }
#endif
    return scanPlainLast(p, places, sub, subQty);
}

Wide const* nxScan(Wide const* p, std::size_t qty, Wide const* sub, std::size_t subQty) {
    if (subQty == 0)
        return p;
    return subQty > qty ? nullptr : scanPlain(p, qty - subQty + 1, sub, subQty);
}

Wide const* nxScanLast(Wide const* p, std::size_t qty, Wide const* sub, std::size_t subQty) {
    if (subQty == 0)
        return p + qty;
    return subQty > qty ? nullptr : scanPlainLast(p, qty - subQty + 1, sub, subQty);
}

std::size_t nxScanAscii(Byte const* p, std::size_t qty) {
    std::size_t n = 0;
#if defined(__SSE2__)
    for (; qty - n >= 16; n += 16)
        if (unsigned int const high = maskOf(load(p + n)))
            return n + static_cast<std::size_t>(std::countr_zero(high));
#endif
    while (n < qty && p[n] < 0x80)
        ++n;
    return n;
}

void nxScanUpper(Byte* p, std::size_t qty) {
    changeCaseBytes<'a'>(p, qty);
}

void nxScanUpper(Wide* p, std::size_t qty) {
    changeCase<Wide, 'a'>(p, qty);
}

void nxScanLower(Byte* p, std::size_t qty) {
    changeCaseBytes<'A'>(p, qty);
}

void nxScanLower(Wide* p, std::size_t qty) {
    changeCase<Wide, 'A'>(p, qty);
}

std::size_t nxScanDiffer(Byte const* a, Byte const* b, std::size_t qty) {
    std::size_t n = 0;
#if defined(__SSE2__)
    for (; qty - n >= 16; n += 16)
        if (unsigned int const same = maskOf(_mm_cmpeq_epi8(load(a + n), load(b + n))); same != 0xFFFF)
            return n + static_cast<std::size_t>(std::countr_one(same));
#endif
    while (n < qty && a[n] == b[n])
        ++n;
    return n;
}

std::size_t nxScanDiffer(Wide const* a, Wide const* b, std::size_t qty) {
    std::size_t n = 0;
    while (n < qty && a[n] == b[n])
        ++n;
    return n;
}

std::size_t nxScanDifferFold(Byte const* a, Byte const* b, std::size_t qty) {
    std::size_t n = 0;
#if defined(__SSE2__)
    for (; qty - n >= 16; n += 16) {
        __m128i const va = load(a + n);
        __m128i const vb = load(b + n);
        if (maskOf(sameButCase(va, vb)) == 0xFFFF)
            continue;
        if (unsigned int const same = maskOf(_mm_cmpeq_epi8(fold(va), fold(vb))); same != 0xFFFF)
            return n + static_cast<std::size_t>(std::countr_one(same));
    }
#endif
    while (n < qty && nxTextLower[a[n]] == nxTextLower[b[n]])
        ++n;
    return n;
}

std::size_t nxScanDifferFold(Wide const* a, Wide const* b, std::size_t qty) {
    std::size_t n = 0;
    while (n < qty && nxTextFold(a[n]) == nxTextFold(b[n]))
        ++n;
    return n;
}
