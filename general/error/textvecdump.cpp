// general/error/textvecdump.cpp - character vectors as hexadecimal dumps.
#include <ostream>

#include "general/error/hexdump.h"
#include "general/text/textvec.h"

void NX_TextVecA::dataFlagOut(std::ostream& os, char const* title, int address) const {
    if (title)
        os << title << '\n';
    NxCharHexOut(os, dataPConst(), itemQty(), address);
}
