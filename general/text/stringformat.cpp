// general/text/stringformat.cpp - the formatter of strPrintF.
//
// Output goes to a string through a small buffer, so no result is too long. Digits of whole numbers are made
// here; those of floating-point numbers come from the C library.
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "general/text/stringa.h"

namespace {

constexpr int numberMax = 998; // greatest width and precision
constexpr char digitsLower[] = "0123456789abcdef";
constexpr char digitsUpper[] = "0123456789ABCDEF";

// The arguments, in a form that can be passed on by reference whatever a va_list is.
struct Args {
    explicit Args(va_list from) { va_copy(list, from); }
    Args(Args const&) = delete;
    Args& operator=(Args const&) = delete;
    ~Args() { va_end(list); }

    va_list list;
};

class Sink {
public:
    explicit Sink(NX_StringA& to) : target(to) {}
    Sink(Sink const&) = delete;
    Sink& operator=(Sink const&) = delete;
    ~Sink() { flush(); }

    void put(char const* text, std::size_t len) {
        if (len > sizeof buffer - used) {
            flush();
            if (len > sizeof buffer) {
                target.strReplaceAt(target.strLen(), 0, text, static_cast<unsigned int>(len));
                return;
            }
        }
        std::memcpy(buffer + used, text, len);
        used += len;
    }

    void pad(char ch, int count) {
        for (; count > 0; --count)
            put(&ch, 1);
    }

private:
    void flush() {
        if (used == 0)
            return;
        target.strReplaceAt(target.strLen(), 0, buffer, static_cast<unsigned int>(used));
        used = 0;
    }

    NX_StringA& target;
    std::size_t used = 0;
    char buffer[512];
};

enum class Size { Plain, Short, Long, LongLong, LongDouble };

struct Conversion {
    bool left = false;
    bool plus = false;
    bool alternate = false;
    bool space = false;
    bool zero = false;
    int width = 0;
    int precision = -1; // none given
    Size size = Size::Plain;
    char letter = 0;
};

int numberRead(char const*& p) {
    int value = 0;
    for (; *p >= '0' && *p <= '9'; ++p)
        value = value <= numberMax ? value * 10 + (*p - '0') : value;
    return value <= numberMax ? value : numberMax;
}

bool flagRead(char ch, Conversion& c) {
    switch (ch) {
    case '-':
        c.left = true;
        return true;
    case '+':
        c.plus = true;
        return true;
    case '#':
        c.alternate = true;
        return true;
    case ' ':
        c.space = true;
        return true;
    case '0':
        c.zero = true;
        return true;
    default:
        return false;
    }
}

// Reads what stands between the per cent and the letter, and the letter itself.
Conversion conversionRead(char const*& p) {
    Conversion c;
    while (flagRead(*p, c))
        ++p;
    c.width = numberRead(p);
    if (*p == '.') {
        ++p;
        c.precision = numberRead(p);
    }
    if (*p == 'h') {
        c.size = Size::Short;
        ++p;
    } else if (*p == 'L') {
        c.size = Size::LongDouble;
        ++p;
    } else if (*p == 'l') {
        c.size = Size::Long;
        if (*++p == 'l') {
            c.size = Size::LongLong;
            ++p;
        }
    }
    c.letter = *p;
    if (c.letter != 0)
        ++p;
    return c;
}

// Writes blanks, `prefix`, zeros and `text` so that the field is as wide as the conversion asks.
void fieldPut(Sink& sink, Conversion const& c, char const* prefix, int zeros, char const* text,
              std::size_t len) {
    std::size_t const prefixLen = std::strlen(prefix);
    std::size_t const whole = prefixLen + static_cast<std::size_t>(zeros) + len;
    int const blanks = whole < static_cast<std::size_t>(c.width) ? c.width - static_cast<int>(whole) : 0;
    if (!c.left)
        sink.pad(' ', blanks);
    sink.put(prefix, prefixLen);
    sink.pad('0', zeros);
    sink.put(text, len);
    if (c.left)
        sink.pad(' ', blanks);
}

void wholePut(Sink& sink, Conversion const& c, std::uint64_t value, char const* prefix) {
    char buffer[24];
    char* const end = buffer + sizeof buffer;
    char* p = end;
    unsigned int const radix = c.letter == 'o'                                         ? 8
                               : c.letter == 'x' || c.letter == 'X' || c.letter == 'p' ? 16
                                                                                       : 10;
    char const* digits = c.letter == 'X' ? digitsUpper : digitsLower;
    for (; value != 0; value /= radix)
        *--p = digits[value % radix];
    int const count = static_cast<int>(end - p);
    int zeros = (c.precision < 0 ? 1 : c.precision) - count;
    if (c.letter == 'o' && c.alternate && zeros <= 0)
        zeros = 1;
    if (c.zero && !c.left && c.precision < 0) {
        int const room = c.width - static_cast<int>(std::strlen(prefix)) - count;
        zeros = zeros < room ? room : zeros;
    }
    fieldPut(sink, c, prefix, zeros < 0 ? 0 : zeros, p, static_cast<std::size_t>(count));
}

void signedPut(Sink& sink, Conversion const& c, Args& args) {
    long long value = 0;
    if (c.size == Size::LongLong || c.size == Size::LongDouble)
        value = va_arg(args.list, long long);
    else if (c.size == Size::Long)
        value = va_arg(args.list, long);
    else
        value = va_arg(args.list, int);
    if (c.size == Size::Short)
        value = static_cast<short>(value);
    auto const bits = static_cast<std::uint64_t>(value);
    wholePut(sink, c, value < 0 ? 0 - bits : bits, value < 0 ? "-" : c.plus ? "+" : c.space ? " " : "");
}

void unsignedPut(Sink& sink, Conversion const& c, Args& args) {
    std::uint64_t value = 0;
    if (c.size == Size::LongLong || c.size == Size::LongDouble)
        value = va_arg(args.list, unsigned long long);
    else if (c.size == Size::Long)
        value = va_arg(args.list, unsigned long);
    else
        value = va_arg(args.list, unsigned int);
    if (c.size == Size::Short)
        value = static_cast<unsigned short>(value);
    bool const prefixed = c.alternate && value != 0;
    wholePut(sink, c, value, prefixed && c.letter == 'x' ? "0x" : prefixed && c.letter == 'X' ? "0X" : "");
}

void textPut(Sink& sink, Conversion const& c, char const* text) {
    if (text == nullptr)
        text = "(null)";
    std::size_t len = 0;
    if (c.precision < 0)
        len = std::strlen(text);
    else
        while (len < static_cast<std::size_t>(c.precision) && text[len] != 0)
            ++len;
    fieldPut(sink, c, "", 0, text, len);
}

template <class Value>
void floatPut(Sink& sink, Conversion const& c, Value value) {
    char format[16];
    char* f = format;
    *f++ = '%';
    if (c.left)
        *f++ = '-';
    if (c.plus)
        *f++ = '+';
    if (c.alternate)
        *f++ = '#';
    if (c.space)
        *f++ = ' ';
    if (c.zero)
        *f++ = '0';
    *f++ = '*';
    *f++ = '.';
    *f++ = '*';
    if (sizeof(Value) > sizeof(double) || c.size == Size::LongDouble)
        *f++ = 'L';
    *f++ = c.letter;
    *f = 0;
    char buffer[512];
    int const len = std::snprintf(buffer, sizeof buffer, format, c.width, c.precision, value);
    if (len < 0)
        return;
    if (static_cast<std::size_t>(len) < sizeof buffer) {
        sink.put(buffer, static_cast<std::size_t>(len));
        return;
    }
    NX_StringA large;
    large.strLen(static_cast<unsigned int>(len), '0');
    std::snprintf(large.dataPMod(), static_cast<std::size_t>(len) + 1, format, c.width, c.precision, value);
    sink.put(large.dataPConst(), static_cast<std::size_t>(len));
}

// False when the letter is none of the known ones.
bool conversionPut(Sink& sink, Conversion const& c, Args& args) {
    switch (c.letter) {
    case 'd':
    case 'i':
        signedPut(sink, c, args);
        return true;
    case 'u':
    case 'o':
    case 'x':
    case 'X':
        unsignedPut(sink, c, args);
        return true;
    case 'p':
        wholePut(sink, c, reinterpret_cast<std::uintptr_t>(va_arg(args.list, void*)), "0x");
        return true;
    case 'c': {
        char const ch = static_cast<char>(va_arg(args.list, int));
        fieldPut(sink, c, "", 0, &ch, 1);
        return true;
    }
    case 's':
        textPut(sink, c, va_arg(args.list, char const*));
        return true;
    case 'e':
    case 'E':
    case 'f':
    case 'F':
    case 'g':
    case 'G':
        if (c.size == Size::LongDouble)
            floatPut(sink, c, va_arg(args.list, long double));
        else
            floatPut(sink, c, va_arg(args.list, double));
        return true;
    case '%':
        sink.put("%", 1);
        return true;
    default:
        return false;
    }
}

} // namespace

int NX_StringA::strPrintFV(char const* format, va_list args) {
    NX_StringA made; // apart, as the arguments may point into this string
    {
        Sink sink(made);
        Args list(args);
        for (char const* p = format != nullptr ? format : ""; *p != 0;) {
            std::size_t const literal = std::strcspn(p, "%");
            sink.put(p, literal);
            p += literal;
            if (*p == 0)
                break;
            char const* const start = p++;
            Conversion const c = conversionRead(p);
            if (!conversionPut(sink, c, list))
                sink.put(start, static_cast<std::size_t>(p - start));
        }
    }
    *this = made;
    return static_cast<int>(strLen());
}

int NX_StringA::strPrintF(char const* format, ...) {
    va_list args;
    va_start(args, format);
    int const len = strPrintFV(format, args);
    va_end(args);
    return len;
}
