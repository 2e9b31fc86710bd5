// Private header. general/module/resput.h - little-endian bytes, written from front to back.
#pragma once

#include <cstring>

// Where it writes belongs to the caller, who has made room.
class NXS_ResPut {
public:
    explicit NXS_ResPut(unsigned char* to) : to_(to) {}

    unsigned char* to() const { return to_; } // where it goes on
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

private:
    unsigned char* to_;
};
