// Private header. general/text/textcount.h - a vector's count as the length that the text routines take.
#pragma once

#include <climits>

// Text beyond 2 GiB is handled up to there.
inline int nxTextCount(unsigned int qty) {
    return qty > INT_MAX ? INT_MAX : static_cast<int>(qty);
}
