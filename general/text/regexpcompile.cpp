// general/text/regexpcompile.cpp - from a pattern to a program.
#include <cstring>
#include <utility>

#include "general/text/regexpcode.h"
#include "general/text/textprim.h"

namespace {

bool isClass(unsigned char ch, int type) {
    return (NxTextTypeP()[ch + 4] & type) != 0;
}

unsigned int hexValue(unsigned char ch) {
    return NxTextHexToBinaryP()[ch - '0'];
}

// Walks the pattern and writes the program.
class Compiler {
public:
    Compiler(char const* pattern, unsigned short* program) : at_(pattern), code_(program) {}

    NX_RegExpA::EXP_Status compile();

private:
    unsigned char current() const { return static_cast<unsigned char>(*at_); }
    unsigned char next() { return static_cast<unsigned char>(*at_++); }

    NX_RegExpA::EXP_Status element();
    bool repeat(unsigned short op);
    bool classSet();
    unsigned char character();
    unsigned char escaped();
    unsigned char numeric(unsigned int base, int digits, int type);

    void emit(unsigned short unit) {
        last_ = qty_;
        code_[qty_++] = unit;
    }

    char const* at_;
    unsigned short* code_;
    unsigned int qty_ = 0;  // units written
    unsigned int last_ = 0; // where the newest element stands, its operator included
};

// Up to `digits` digits of the given class, as an 8-bit value.
unsigned char Compiler::numeric(unsigned int base, int digits, int type) {
    unsigned int value = 0;
    for (; digits > 0 && isClass(current(), type) && hexValue(current()) < base; --digits)
        value = value * base + hexValue(next());
    return static_cast<unsigned char>(value);
}

// What follows a backslash.
unsigned char Compiler::escaped() {
    if (current() >= '0' && current() <= '7')
        return numeric(8, 3, NX_TextDigit);
    if (current() == 0)
        return '\\';
    unsigned char const ch = next();
    switch (ch) {
    case 'b':
    case 'B':
        return 0x08;
    case 'e':
    case 'E':
        return 0x1B;
    case 'f':
    case 'F':
        return 0x0C;
    case 'n':
    case 'N':
        return 0x0A;
    case 'r':
    case 'R':
        return 0x0D;
    case 's':
    case 'S':
        return 0x20;
    case 't':
    case 'T':
        return 0x09;
    case 'x':
    case 'X':
        return numeric(16, 2, NX_TextHexDigit);
    case '^': {
        if (current() == 0)
            return ch;
        unsigned char const control = next();
        return static_cast<unsigned char>(control - (isClass(control, NX_TextLowerCase) ? 0x60 : 0x40));
    }
    default:
        return ch;
    }
}

// One character of the pattern, escapes read.
unsigned char Compiler::character() {
    unsigned char const ch = next();
    return ch == '\\' ? escaped() : ch;
}

// The set after `[`; false when it is not closed.
bool Compiler::classSet() {
    unsigned short* const set = code_ + qty_ + 1;
    bool const negated = current() == '^';
    if (negated)
        ++at_;
    unsigned int previous = 0;
    for (bool first = true; current() != 0 && current() != ']'; first = false) {
        bool const range = current() == '-' && !first && at_[1] != ']';
        if (range)
            ++at_;
        if (current() == 0)
            return false;
        unsigned int const ch = character();
        unsigned int low = range ? previous : ch;
        unsigned int high = ch;
        if (low > high)
            std::swap(low, high);
        for (unsigned int c = low; c <= high; ++c)
            set[c / 16] = static_cast<unsigned short>(set[c / 16] | 1u << (c % 16));
        previous = ch;
    }
    if (current() != ']')
        return false;
    ++at_;
    if (negated)
        for (int unit = 0; unit < 16; ++unit)
            set[unit] = static_cast<unsigned short>(~set[unit]);
    return true;
}

// Puts an operator before the newest element.
bool Compiler::repeat(unsigned short op) {
    if (qty_ == 0)
        return false;
    unsigned short const element = code_[last_];
    if (element > 0xFF && element != NXS_RegExpAny && element != NXS_RegExpClass)
        return false;
    std::memmove(code_ + last_ + 1, code_ + last_, (qty_ - last_) * sizeof *code_);
    code_[last_] = op;
    ++qty_;
    return true;
}

// One element or operator; there is room for one unit.
NX_RegExpA::EXP_Status Compiler::element() {
    switch (current()) {
    case '*':
    case '+':
    case '?':
        return repeat(static_cast<unsigned short>(0x8000 + next())) ? NX_RegExpA::EXP_Ok
                                                                    : NX_RegExpA::EXP_Syntax;
    case '[':
        if (qty_ + NXS_REGEXP_CLASS_UNITS - 1 >= NXS_REGEXP_UNITS)
            return NX_RegExpA::EXP_Overflow;
        ++at_;
        if (!classSet())
            return NX_RegExpA::EXP_Syntax;
        emit(NXS_RegExpClass);
        qty_ += NXS_REGEXP_CLASS_UNITS - 1;
        return NX_RegExpA::EXP_Ok;
    case '.':
        ++at_;
        emit(NXS_RegExpAny);
        return NX_RegExpA::EXP_Ok;
    case '^':
    case '$':
        if (current() == '^' ? qty_ == 0 : at_[1] == 0) {
            emit(static_cast<unsigned short>(0x8000 + next()));
            return NX_RegExpA::EXP_Ok;
        }
        [[fallthrough]];
    default:
        emit(character());
        return NX_RegExpA::EXP_Ok;
    }
}

NX_RegExpA::EXP_Status Compiler::compile() {
    if (current() == 0)
        return NX_RegExpA::EXP_Syntax;
    while (current() != 0) {
        if (qty_ >= NXS_REGEXP_UNITS - 1)
            return NX_RegExpA::EXP_Overflow;
        NX_RegExpA::EXP_Status const status = element();
        if (status != NX_RegExpA::EXP_Ok)
            return status;
    }
    // A class may have taken the very last unit.
    if (qty_ >= NXS_REGEXP_UNITS)
        return NX_RegExpA::EXP_Overflow;
    code_[qty_] = NXS_RegExpEndOfProgram;
    return NX_RegExpA::EXP_Ok;
}

void add(NXS_RegExpStart& start, unsigned int byte) {
    start.set[byte / 32] |= 1u << (byte % 32);
}

// Adds the bytes that the element matches.
void addElement(NXS_RegExpStart& start, unsigned short const* code) {
    for (unsigned int byte = 0; byte < 256; ++byte)
        if (*code == NXS_RegExpAny || *code == byte ||
            (*code == NXS_RegExpClass && nxRegExpClassHas(code, static_cast<unsigned char>(byte))))
            add(start, byte);
}

// Counts the bytes of the set and describes them as ranges.
void describe(NXS_RegExpStart& start) {
    bool fits = true;
    bool open = false;
    for (unsigned int byte = 0; byte < 256; ++byte) {
        bool const has = (start.set[byte / 32] >> (byte % 32) & 1) != 0;
        if (has && open) {
            if (fits)
                ++start.range[start.rangeQty - 1].span;
        } else if (has) {
            fits = fits && start.rangeQty < NXS_RegExpStart::rangeMax;
            if (fits)
                start.range[start.rangeQty++] = {static_cast<unsigned char>(byte), 0};
        }
        start.byteQty += has;
        open = has;
    }
    if (!fits)
        start.rangeQty = 0;
}

} // namespace

NX_RegExpA::EXP_Status nxRegExpCompile(char const* pattern, unsigned short* program) {
    return Compiler(pattern ? pattern : "", program).compile();
}

NXS_RegExpStart nxRegExpStart(unsigned short const* program) {
    NXS_RegExpStart start{};
    unsigned short const* code = program;
    for (;;) {
        if (*code == NXS_RegExpEndOfProgram)
            start.anywhere = true;
        else if (*code == NXS_RegExpEnd)
            start.atEnd = true;
        else if (*code == NXS_RegExpStar || *code == NXS_RegExpMaybe) {
            addElement(start, code + 1);
            code += 1 + nxRegExpSize(code + 1);
            continue;
        } else if (*code == NXS_RegExpBegin)
            start.anywhere = true;
        else
            addElement(start, *code == NXS_RegExpPlus ? code + 1 : code);
        break;
    }
    describe(start);
    return start;
}
