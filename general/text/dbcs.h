// general/text/dbcs.h - double-byte character sets: which bytes start a two-byte character.
//
// NX_DbcsInfo is a plain value that describes one code page. One process-wide instance, made on first use for
// the system's default code page and never destroyed, is what all text routines consult; the free functions
// speak of it. Nothing fails or reports: an unknown code page is described as a single-byte one. Threads:
// first use is safe, changing an instance while others handle text is not.
#pragma once

#include <iosfwd>

#include "general/platform/fwd.h"

class NX_EXPORT NX_DbcsInfo {
public:
    NX_DbcsInfo() : NX_DbcsInfo(0) {}
    explicit NX_DbcsInfo(int codePage); // 0: NxCodePageDefault().

    int dbcsCodePage() const { return codePage_; }

    // Is it one of the double-byte code pages known by number? Wider than the list of those with a region.
    static int dbcsCodePageIsDbcs(int codePage);
    int dbcsCodePageIsDbcs() const { return dbcsCodePageIsDbcs(codePage_); }

    // The double-byte flag: whether the C library's routines will do for terminated text. Independent of the
    // table once the object is made.
    int dbcsIsTrue() const { return isTrue_; }
    void dbcsIsTrue(int isTrue) { isTrue_ = isTrue; }
    int dbcsIsFalse() const { return !isTrue_; }

    int dbcsIsChina() const { return region_ == RegionChina; }
    int dbcsIsJapan() const { return region_ == RegionJapan; }
    int dbcsIsKorea() const { return region_ == RegionKorea; }

    // Does the byte start a two-byte character? 0 for values from 256 up; those below 0 are taken as bytes.
    int chIsLead(int c) const { return c < 256 && lead_[c & 0xFF]; }
    int chIsLead(char c) const { return lead_[static_cast<unsigned char>(c)]; }
    int chIsLead(signed char c) const { return lead_[static_cast<unsigned char>(c)]; }
    int chIsLead(unsigned char c) const { return lead_[c]; }

    // Makes the bytes `first` to `last` lead bytes, or not. Bytes outside 0..255 are left out; the flag
    // stays.
    void chIsLead(int first, int last, int isLead);

    // Reads a setting: white space, then `-` (no lead bytes any more) or a byte or range of bytes such as
    // 0x81-0x9F that become lead bytes. 0 with `*text` moved past it; -1, with nothing changed, when it is no
    // such setting or more text follows a range. The flag stays.
    int dbcsLead(char const** text);

    unsigned char const* dbcsIsLeadP() const { return lead_; } // 256 entries, 1 for a lead byte.

    // The region's double-byte space and its substitute for an unknown character: two bytes, then a zero; 00
    // 00 when the code page has none.
    char const* chSpace() const { return space_; }
    char const* chUnknown() const { return unknown_; }
    int chIsSpace(char const* p) const { return p[0] && p[0] == space_[0] && p[1] == space_[1]; }
    int chIsUnknown(char const* p) const { return p[0] && p[0] == unknown_[0] && p[1] == unknown_[1]; }

    // Replaces variants of Japanese characters by their normal forms, in place. `len` is in bytes. The plain
    // form takes pairs lead, trail; the host form groups of four bytes with lead and trail in bytes 0 and 2,
    // and writes each replacement to the same places of `copy` too. An incomplete last pair or group is left
    // alone.
    void dbcsJapanNormal(char* text, unsigned int len) const;
    void dbcsJapanNormalHost(char* text, char* copy, unsigned int len) const;

    // Writes `title` on a line of its own (unless null) and the lead table as a hex dump whose first entry
    // has the address `address`.
    void dbcsFlagOut(std::ostream& os, char const* title, int address) const;

    // What kinds of lead bytes the table holds, so that text routines can pick their way before they walk.
    enum LeadKind : unsigned char { LeadNone = 0, LeadHigh = 1, LeadLow = 2 };
    LeadKind dbcsLeadKind() const { return leadKind_; } // None; only bytes from 0x80 up; others too.

private:
    enum Region : int { RegionNone = 0, RegionChina = 1, RegionJapan = 2, RegionKorea = 3 };

    void regionSet();
    int leadFill();
    void leadMark(unsigned int first, unsigned int last, unsigned char isLead);

    int codePage_;
    unsigned char lead_[256] = {};
    int isTrue_ = 0;
    char space_[4] = {};
    int region_ = RegionNone;
    char unknown_[4] = {};
    LeadKind leadKind_ = LeadNone;
};

NX_EXPORT NX_DbcsInfo* NxDbcsInfoP(); // The process-wide instance, made on the first call; never null.

// The instance's flag. While there is no instance these two do not make one and answer "not double-byte".
NX_EXPORT int NxDbcsIsFalse();
NX_EXPORT int NxDbcsIsTrue();
NX_EXPORT void NxDbcsIsTrue(int isTrue);

// As the members of the same names.
NX_EXPORT int NxDbcsIsLead(int c);
NX_EXPORT void NxDbcsIsLead(int first, int last, int isLead);
NX_EXPORT int NxDbcsIsSpace(char const* p);
NX_EXPORT int NxDbcsIsUnknown(char const* p);
NX_EXPORT char const* NxDbcsSpace();
NX_EXPORT char const* NxDbcsUnknown();

// The system's default code page, asked for once; 0 when the system's answer is no number.
NX_EXPORT int NxCodePageDefault();

// On a Japanese code page normalises (NX_DbcsInfo::dbcsJapanNormal) every run of double-byte characters in
// place.
NX_EXPORT void NxTextJapanNormal(char* text);
NX_EXPORT void NxTextJapanNormal(char* text, unsigned int len);

// Replaces each double-byte space of the terminated text by two plain spaces, in place.
NX_EXPORT void NxTextDbcsSpaceToSbcs(char* text);
