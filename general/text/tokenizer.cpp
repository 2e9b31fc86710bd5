// general/text/tokenizer.cpp - splitting a string into words.
#include "general/text/tokenizer.h"

#include "general/text/stringa.h"
#include "general/text/textprim.h"

char const* NX_TokenizerA::restP() const {
    if (position_ >= string_->itemQty())
        return nullptr;
    string_->strTerminate();
    return string_->dataPConst() + position_;
}

NX_CharASub NX_TokenizerA::operator()(char const* separators) {
    if (char const* const rest = restP()) {
        int const skipped = NxTextSpan(rest, separators);
        int const length = NxTextSpanNot(rest + skipped, separators);
        if (length > 0) {
            unsigned int const start = position_ + static_cast<unsigned int>(skipped);
            position_ = start + static_cast<unsigned int>(length);
            return {string_, start, static_cast<unsigned int>(length)};
        }
    }
    return {string_, NX_NO_INDEX, 0};
}

NX_CharASub NX_TokenizerA::operator()() {
    return (*this)(" \t \n");
}

unsigned int NX_TokenizerA::itemNum(char const* separators) {
    char const* const rest = restP();
    position_ = rest != nullptr ? position_ + static_cast<unsigned int>(NxTextSpan(rest, separators))
                                : string_->itemQty();
    return position_;
}
