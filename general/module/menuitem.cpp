#include "general/module/menuitem.h"

#include "general/error/errornum.h"
#include "general/module/resimage.h"

namespace {

// Marks of a plain template's item, and of an extended one's.
constexpr std::uint32_t plainPopup = 0x10, plainEnd = 0x80;
constexpr std::uint32_t extendedPopup = 0x01, extendedEnd = 0x80;

// What of a plain item's word is type and what is state.
constexpr std::uint32_t plainTypes = menuTypeBitmap | menuTypeBarBreak | menuTypeBreak | menuTypeOwnerDraw |
                                     menuTypeSeparator | menuTypeRightOrder | menuTypeRightJustify;
constexpr std::uint32_t plainStates = menuStateGrayed | menuStateChecked | menuStateDefault;

constexpr unsigned int accelSize = 8;
constexpr std::uint32_t accelEnd = 0x80;

} // namespace

// Walks through a template. Nesting is a counter, so that no template can exhaust the stack.
class NXS_MenuReader {
public:
    NXS_MenuReader(NXS_ResBytes bytes, NX_MenuItemVec& items) : bytes_(bytes), items_(items) {}

    bool read() {
        if (!bytes_.has(0, 4) || bytes_.u16(0) > 1)
            return false;
        bool const isExtended = bytes_.u16(0) == 1;
        at_ = 4 + bytes_.u16(2);
        bool isLast[NX_MenuItemVec::depthMax + 1] = {}; // whether the item that opened the level ends its own
        for (unsigned int depth = 0;;) {
            NX_MenuItem item;
            item.depth_ = depth;
            bool isEnd = false;
            if (!(isExtended ? extendedItem(item, isEnd) : plainItem(item, isEnd)))
                return false;
            items_ += item;
            if (item.isPopup_ != 0) {
                if (depth == NX_MenuItemVec::depthMax)
                    return false;
                isLast[++depth] = isEnd;
                continue;
            }
            while (isEnd && depth > 0)
                isEnd = isLast[depth--];
            if (isEnd)
                return true;
        }
    }

private:
    bool plainItem(NX_MenuItem& item, bool& isEnd) {
        if (!bytes_.has(at_, 2))
            return false;
        std::uint32_t const word = bytes_.u16(at_);
        at_ += 2;
        item.isPopup_ = (word & plainPopup) != 0;
        if (item.isPopup_ == 0) {
            if (!bytes_.has(at_, 2))
                return false;
            item.id_ = static_cast<std::int32_t>(bytes_.u16(at_));
            at_ += 2;
        }
        if (!text(item.text_))
            return false;
        isEnd = (word & plainEnd) != 0;
        item.type_ = word & plainTypes;
        item.state_ = word & plainStates;
        separatorSet(item);
        return true;
    }

    bool extendedItem(NX_MenuItem& item, bool& isEnd) {
        align();
        if (!bytes_.has(at_, 14))
            return false;
        item.type_ = bytes_.u32(at_);
        item.state_ = bytes_.u32(at_ + 4);
        item.id_ = static_cast<std::int32_t>(bytes_.u32(at_ + 8));
        std::uint32_t const word = bytes_.u16(at_ + 12);
        at_ += 14;
        if (!text(item.text_))
            return false;
        isEnd = (word & extendedEnd) != 0;
        item.isPopup_ = (word & extendedPopup) != 0;
        if (item.isPopup_ != 0) {
            align();
            if (!bytes_.has(at_, 4))
                return false;
            item.helpId_ = static_cast<std::int32_t>(bytes_.u32(at_));
            at_ += 4;
        }
        separatorSet(item);
        return true;
    }

    // 16-bit characters up to a zero.
    bool text(NX_StringA& text) {
        for (;; at_ += 2) {
            if (!bytes_.has(at_, 2))
                return false;
            std::uint32_t const unit = bytes_.u16(at_);
            if (unit == 0) {
                at_ += 2;
                return true;
            }
            text += nxResChar(unit);
        }
    }

    static void separatorSet(NX_MenuItem& item) {
        if (item.isPopup_ == 0 && item.id_ == 0 && item.text_.strLen() == 0)
            item.type_ |= menuTypeSeparator;
        if (item.itemIsSeparator() != 0)
            item.state_ |= menuStateGrayed;
    }

    void align() { at_ = (at_ + 3) & ~3u; }

    NXS_ResBytes bytes_;
    NX_MenuItemVec& items_;
    std::uint32_t at_ = 0;
};

int NX_MenuItemVec::menuRead(unsigned char const* data, unsigned int size) {
    collDefault();
    NX_MenuItemVec items;
    if (data == nullptr || size > 0x7FFFFFFFu || !NXS_MenuReader({data, size}, items).read())
        return errorNumImage;
    *this = items;
    return 0;
}

unsigned int NX_MenuItemVec::menuFind(int id) const {
    for (unsigned int n = 0; n < itemQty(); ++n) {
        NX_MenuItem const& item = *itemPConst(n);
        if (item.itemId() == id && !item.itemIsPopup() && !item.itemIsSeparator())
            return n;
    }
    return NX_NO_INDEX;
}

int NX_AccelVec::accelRead(unsigned char const* data, unsigned int size) {
    collDefault();
    NXS_ResBytes const bytes{data, data != nullptr ? size : 0};
    NX_AccelVec entries;
    for (std::uint32_t at = 0; bytes.has(at, accelSize); at += accelSize) {
        std::uint32_t const flags = bytes.u8(at);
        entries +=
            {static_cast<std::uint16_t>(flags & ~accelEnd), static_cast<std::uint16_t>(bytes.u16(at + 2)),
             static_cast<std::uint16_t>(bytes.u16(at + 4))};
        if ((flags & accelEnd) != 0) {
            *this = entries;
            return 0;
        }
    }
    return errorNumImage;
}
