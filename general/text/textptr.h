// general/text/textptr.h - the one-pointer value types in which text is passed and returned.
//
// A value refers to text that somebody else owns and keeps alive; copying it copies the pointer. A null value
// means "not found" as a result. It is used where the plain pointer is: it converts from and to it without a
// word, compares with nullptr, indexes, dereferences and counts in units (bytes, or 16-bit units in the W
// forms).
#pragma once

#include <type_traits>

template <class T>
class NX_TextPtrT {
public:
    constexpr NX_TextPtrT() = default;
    constexpr NX_TextPtrT(T* text) : text_(text) {}

    // A pointer to writable text may stand where one to constant text is wanted.
    template <class U>
    requires(std::is_const_v<T>&& std::is_same_v<U, std::remove_const_t<T>>) constexpr NX_TextPtrT(
        NX_TextPtrT<U> text)
        : text_(text.textP()) {}

    constexpr T* textP() const { return text_; }
    constexpr operator T*() const { return text_; }

    constexpr NX_TextPtrT& operator++() {
        ++text_;
        return *this;
    }
    constexpr NX_TextPtrT& operator--() {
        --text_;
        return *this;
    }
    constexpr NX_TextPtrT operator++(int) { return text_++; }
    constexpr NX_TextPtrT operator--(int) { return text_--; }
    constexpr NX_TextPtrT& operator+=(int units) {
        text_ += units;
        return *this;
    }
    constexpr NX_TextPtrT& operator-=(int units) {
        text_ -= units;
        return *this;
    }

private:
    T* text_ = nullptr;
};

using NX_TextA1Ptr = NX_TextPtrT<char>;
using NX_TextA1PtrConst = NX_TextPtrT<char const>;
using NX_TextW1Ptr = NX_TextPtrT<unsigned short>;
using NX_TextW1PtrConst = NX_TextPtrT<unsigned short const>;

static_assert(sizeof(NX_TextA1Ptr) == sizeof(char*) &&
              sizeof(NX_TextW1PtrConst) == sizeof(unsigned short const*));
