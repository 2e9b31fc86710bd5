// general/error/dbcsout.cpp - the hex dump of a lead-byte table.
#include <ostream>

#include "general/error/hexdump.h"
#include "general/text/dbcs.h"

void NX_DbcsInfo::dbcsFlagOut(std::ostream& os, char const* title, int address) const {
    if (title)
        os << title << '\n';
    NxCharHexOut(os, reinterpret_cast<char const*>(lead_), sizeof lead_, address);
}
