// tests/text/textsupport.h - code pages for a scope, wide twins of 8-bit texts, and a naive model of text.
#pragma once

#include <random>
#include <string>
#include <vector>

#include "general/text/dbcs.h"
#include "general/text/textptr.h"

// Makes a code page the process's own until the end of the scope.
class NXS_CodePage {
public:
    explicit NXS_CodePage(int codePage) { *NxDbcsInfoP() = NX_DbcsInfo(codePage); }
    NXS_CodePage(NXS_CodePage const&) = delete;
    ~NXS_CodePage() { *NxDbcsInfoP() = saved_; }

private:
    NX_DbcsInfo saved_ = *NxDbcsInfoP();
};

// Code pages for the model's tests: plain, lead bytes from 0x80 up, and one of letters below.
inline constexpr int nxModelPages[] = {1252, 932, -1};
inline void nxModelPage(int page) {
    *NxDbcsInfoP() = NX_DbcsInfo(page == -1 ? 932 : page);
    if (page == -1)
        NxDbcsIsLead('b', 'c', 1);
}

// An 8-bit text as wide text, terminated.
class NXS_Wide {
public:
    NXS_Wide(std::string const& text) : units_(text.size() + 1) {
        for (std::size_t i = 0; i < text.size(); ++i)
            units_[i] = static_cast<unsigned char>(text[i]);
    }
    operator NX_TextW1PtrConst() const { return units_.data(); }
    operator NX_TextW1Ptr() { return units_.data(); }
    std::ptrdiff_t offset(NX_TextW1PtrConst found) const { return found ? found - units_.data() : -1; }
    std::string text(int len) const { return {units_.begin(), units_.begin() + len}; }
    std::string text() const { return text(static_cast<int>(units_.size()) - 1); }

private:
    std::vector<unsigned short> units_;
};

struct NXS_Char {
    unsigned int value;
    int at;    // byte offset
    int width; // bytes
};

// The characters of a counted text.
inline std::vector<NXS_Char> nxChars(std::string const& text) {
    std::vector<NXS_Char> chars;
    auto const byteAt = [&](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
    };
    for (std::size_t i = 0; i < text.size(); i += static_cast<std::size_t>(chars.back().width)) {
        bool const lead = NxDbcsIsLead(static_cast<int>(byteAt(i))) != 0;
        chars.push_back({lead ? byteAt(i) * 256 + byteAt(i + 1) : byteAt(i), static_cast<int>(i),
                         lead && i + 1 < text.size() ? 2 : 1});
    }
    return chars;
}

// Random text of few different bytes, so that hits, near hits and split characters are common.
class NXS_RandomText {
public:
    explicit NXS_RandomText(std::string alphabet) : alphabet_(std::move(alphabet)) {}

    unsigned int below(unsigned int n) { return static_cast<unsigned int>(engine_() % n); }

    std::string bytes(unsigned int maxLen) {
        std::string text(below(maxLen + 1), ' ');
        for (char& c : text)
            c = alphabet_[below(static_cast<unsigned int>(alphabet_.size()))];
        return text;
    }

    // The same without a lead byte that stands alone at the end.
    std::string whole(unsigned int maxLen) {
        std::string text = bytes(maxLen);
        auto const chars = nxChars(text);
        if (!chars.empty() && chars.back().width == 1 && chars.back().value > 255)
            text.pop_back();
        return text;
    }

private:
    std::mt19937 engine_{20240229};
    std::string alphabet_;
};
