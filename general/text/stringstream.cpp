// general/text/stringstream.cpp - writing the string to streams and reading a word from one.
#include <istream>
#include <ostream>
#include <string>
#include <string_view>

#include "general/text/stringa.h"

std::ostream& operator<<(std::ostream& out, NX_StringA const& text) {
    return out << std::string_view(text.dataPConst(), text.strLen());
}

std::istream& operator>>(std::istream& in, NX_StringA& text) {
    std::string word;
    if (in >> word)
        text = NX_StringA(word.data(), static_cast<unsigned int>(word.size()));
    else
        text = "";
    return in;
}

int NX_StringA::strWrite(std::FILE* out) const {
    return strLen() == 0 || std::fwrite(dataPConst(), 1, strLen(), out) == strLen() ? 0 : -1;
}
