// general/persist/psave.cpp - the save stream.
#include <charconv>

#include "general/persist/persist.h"
#include "general/persist/persistout.h"

NX_PersistTextSave::NX_PersistTextSave(char const* fileName, int openMode, int) : out_(new NXS_PersistOut) {
    saveInit(fileName, openMode);
}

NX_PersistTextSave::NX_PersistTextSave(NX_StringA const& fileName, int openMode, int)
    : out_(new NXS_PersistOut) {
    saveInit(fileName.dataPConst(), openMode);
}

NX_PersistTextSave::~NX_PersistTextSave() {
    std::basic_ios<char>::rdbuf(nullptr);
    delete out_; // writes and closes
}

void NX_PersistTextSave::saveInit(char const* fileName, int openMode) {
    std::basic_ios<char>::rdbuf(out_);
    imbue(std::locale::classic()); // a file reads the same whatever the program's locale
    if (out_->open(fileName, static_cast<std::ios_base::openmode>(openMode) | std::ios_base::out) == nullptr)
        setstate(std::ios_base::failbit);
    table_.itemQtyCap(100);
    table_ += NX_PersistP{nullptr, 0};
    *this << 'S' << 0;
}

NX_PersistTextSave& NX_PersistTextSave::flush() {
    std::ofstream::flush();
    return *this;
}

NX_PersistTextSave& NX_PersistTextSave::textSave(char const* p, std::streamsize n) {
    if (!good())
        setstate(std::ios_base::failbit);
    else if (!out_->write(p, n))
        setstate(std::ios_base::badbit);
    return *this;
}

NX_PersistTextSave& NX_PersistTextSave::operator<<(char ch) {
    return textSave(&ch, 1);
}

NX_PersistTextSave& NX_PersistTextSave::operator<<(int value) {
    char digits[12];
    return textSave(digits, std::to_chars(digits, digits + sizeof digits, value).ptr - digits);
}

NX_PersistTextSave& NX_PersistTextSave::operator<<(unsigned int value) {
    char digits[12];
    return textSave(digits, std::to_chars(digits, digits + sizeof digits, value).ptr - digits);
}

NX_PersistTextSave& NX_PersistTextSave::operator<<(double value) {
    static_cast<std::ofstream&>(*this) << value;
    return *this;
}

NX_PersistTextSave& NX_PersistTextSave::operator<<(char const* text) {
    return textSave(text, static_cast<std::streamsize>(std::strlen(text)));
}

NX_PersistTextSave& NX_PersistTextSave::dataSave(char const* p, unsigned int n) {
    textSave(" ", 1);
    return textSave(p, n);
}

int NX_PersistTextSave::pIsSaved(void const* p, unsigned int size) {
    unsigned int const number = p == nullptr ? 0 : out_->index.take(p, table_);
    if (number == NX_NO_INDEX) {
        table_ += NX_PersistP{p, size};
        textSave("\nD", 2);
        return 0;
    }
    char text[16] = {'\n', 'P'};
    textSave(text, std::to_chars(text + 2, text + sizeof text, number).ptr - text);
    return 1;
}

int NX_PersistTextSave::pIsSaved(NX_VecM const* p, unsigned int size) {
    return pIsSaved(static_cast<void const*>(p), size) || p->refIsSaved(*this);
}
