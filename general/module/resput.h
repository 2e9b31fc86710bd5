// Private header. general/module/resput.h - the bytes of a file, put together from front to back.
#pragma once

#include <cstring>

#include "general/module/resbitmap.h"

class NXS_ResPut {
public:
    explicit NXS_ResPut(unsigned int size) : to_((file_.itemQty(size), file_.dataPMod())) {}

    void u8(unsigned int value) { *to_++ = static_cast<unsigned char>(value); }
    void u16(unsigned int value) {
        u8(value);
        u8(value >> 8);
    }
    void u32(unsigned int value) {
        u16(value);
        u16(value >> 16);
    }
    void bytes(unsigned char const* from, unsigned int qty) {
        std::memcpy(to_, from, qty);
        to_ += qty;
    }
    NX_ByteVec const& file() const { return file_; }

private:
    NX_ByteVec file_;
    unsigned char* to_;
};
