// general/error/stringread.cpp - reading the string from streams and C streams, where failing is an error.
#include <istream>
#include <limits>

#include "general/error/errorman.h"
#include "general/text/stringa.h"

namespace {

constexpr int atEnd = -1;

// What reading needs of a source: the next character as an unsigned char or atEnd, and to step over it.
class StreamSource {
public:
    explicit StreamSource(std::istream& from) : in(from), ready(from, true) {}

    int peek() {
        int const ch = ready ? in.rdbuf()->sgetc() : std::istream::traits_type::eof();
        if (ch != std::istream::traits_type::eof())
            return ch;
        sawEnd = true;
        return atEnd;
    }
    void step() { in.rdbuf()->sbumpc(); }

    // Leaves in the stream's state what its own readers would leave.
    void finish(bool failed) {
        auto state = std::ios_base::goodbit;
        if (sawEnd)
            state |= std::ios_base::eofbit;
        if (failed)
            state |= std::ios_base::failbit;
        if (state != std::ios_base::goodbit)
            in.setstate(state);
    }

private:
    std::istream& in;
    std::istream::sentry ready;
    bool sawEnd = false;
};

class FileSource {
public:
    explicit FileSource(std::FILE* from) : in(from) {}
    FileSource(FileSource const&) = delete;
    FileSource& operator=(FileSource const&) = delete;
    ~FileSource() {
        if (next >= 0)
            std::ungetc(next, in);
    }

    int peek() {
        if (next < 0)
            next = std::fgetc(in);
        return next < 0 ? atEnd : next;
    }
    void step() { next = atEnd; }
    void finish(bool) {}

private:
    std::FILE* in;
    int next = atEnd; // read ahead
};

// Moves the next character to `to`, the trail byte with its lead byte. Returns how many bytes there were.
template <class Source>
int charMove(Source& from, NX_StringA& to, int room) {
    auto const ch = static_cast<unsigned char>(from.peek());
    from.step();
    to += static_cast<char>(ch);
    if (room < 2 || !NxTextDbcsP()[ch])
        return 1;
    int const trail = from.peek();
    if (trail == atEnd)
        return 1;
    from.step();
    to += static_cast<char>(trail);
    return 2;
}

template <class Source>
int fieldRead(NX_StringA& to, Source from, int maxLen, char delimiter, NX_StripType type, int quoted) {
    to = "";
    int const end = static_cast<unsigned char>(delimiter);
    bool const failed = from.peek() == atEnd;
    bool inside = false; // double quotes
    int len = 0;
    int ch = atEnd;
    while ((ch = from.peek()) != atEnd && (ch != end || inside) && len < maxLen) {
        if (quoted && ch == '"')
            inside = !inside;
        len += charMove(from, to, maxLen - len);
    }
    if (ch == end && !inside)
        from.step();
    from.finish(failed);
    if (failed)
        return NxERROR(errorNumStringRead);
    to.strStrip(type);
    return 0;
}

} // namespace

int NX_StringA::strRead(std::istream& in, char delimiter, NX_StripType type, int quoted) {
    return fieldRead(*this, StreamSource(in), std::numeric_limits<int>::max(), delimiter, type, quoted);
}

int NX_StringA::strRead(std::istream& in, int maxLen, char delimiter, NX_StripType type, int quoted) {
    return fieldRead(*this, StreamSource(in), maxLen, delimiter, type, quoted);
}

int NX_StringA::strRead(std::FILE* in, char delimiter, NX_StripType type, int quoted) {
    return fieldRead(*this, FileSource(in), std::numeric_limits<int>::max(), delimiter, type, quoted);
}

int NX_StringA::strRead(std::FILE* in, int maxLen, char delimiter, NX_StripType type, int quoted) {
    return fieldRead(*this, FileSource(in), maxLen, delimiter, type, quoted);
}

int NX_StringA::strReadRaw(std::FILE* in, int len) {
    *this = "";
    if (len <= 0)
        return 0;
    // In pieces, so that a length that the file does not have costs nothing.
    char buffer[4096];
    auto left = static_cast<std::size_t>(len);
    while (left > 0) {
        std::size_t const wanted = left < sizeof buffer ? left : sizeof buffer;
        std::size_t const got = std::fread(buffer, 1, wanted, in);
        strReplaceAt(strLen(), 0, buffer, static_cast<unsigned int>(got));
        if (got < wanted)
            return NxERROR(errorNumStringRead);
        left -= got;
    }
    return 0;
}

int NX_StringA::strTokenRead(std::istream& in) {
    *this = "";
    StreamSource from(in);
    auto const isSpace = [](int ch) { return (NxTextTypeP()[ch + 4] & NX_TextSpace) != 0; };
    while (from.peek() != atEnd && isSpace(from.peek()))
        from.step();
    bool const failed = from.peek() == atEnd;
    while (from.peek() != atEnd && !isSpace(from.peek()))
        charMove(from, *this, 2);
    from.finish(failed);
    return failed ? NxERROR(errorNumStringRead) : 0;
}
