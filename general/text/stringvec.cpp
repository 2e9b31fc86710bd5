// general/text/stringvec.cpp - vectors of strings.
#include "general/text/stringvec.h"

#include <ostream>

NX_StringVecA::NX_StringVecA(NX_StringVecASub const& view) : NX_VecT(view.dataPConst(), view.itemQty()) {}

void NX_StringVecA::operator+=(NX_StringVecASub const& view) {
    dataAppend(view.dataPConst(), view.itemQty());
}

std::ostream& operator<<(std::ostream& os, NX_StringVecA const& strings) {
    for (unsigned int n = 0; n < strings.itemQty(); ++n) {
        if (n > 0)
            os << std::endl;
        os << strings[n];
    }
    return os;
}
