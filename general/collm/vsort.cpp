// general/collm/vsort.cpp - the two sorts of a vector. Which items are compared, and in which order, is
// fixed; only the moving of the bytes depends on the item size.
#include "general/collm/v1.h"

#include <cstring>

namespace {

// Items of a size known to the compiler are exchanged in registers, others word by word.
template <unsigned int Size>
struct FixedItem {
    static constexpr std::ptrdiff_t size() { return Size; }
    static void exchange(char* a, char* b) {
        unsigned char first[Size];
        unsigned char second[Size];
        std::memcpy(first, a, Size);
        std::memcpy(second, b, Size);
        std::memcpy(a, second, Size);
        std::memcpy(b, first, Size);
    }
};

template <unsigned int Word>
struct WordsItem {
    std::ptrdiff_t bytes;

    std::ptrdiff_t size() const { return bytes; }
    void exchange(char* a, char* b) const {
        for (char* const end = a + bytes; a != end; a += Word, b += Word)
            FixedItem<Word>::exchange(a, b);
    }
};

// Calls `sort` with the way of handling items of `size` bytes.
template <class Sort>
void withItem(unsigned int size, Sort sort) {
    std::ptrdiff_t const bytes = size;
    if (size == 4)
        sort(FixedItem<4>());
    else if (size == 8)
        sort(FixedItem<8>());
    else if (size == 16)
        sort(FixedItem<16>());
    else if (size % 8 == 0)
        sort(WordsItem<8>{bytes});
    else if (size % 4 == 0)
        sort(WordsItem<4>{bytes});
    else
        sort(WordsItem<1>{bytes});
}

// Brings the greatest item of low ... high to the end of the range, then of what is left, and so on.
template <class Item>
void sortSelecting(char* low, char* high, Item item, NX_VecCompareM cmp) {
    for (; high > low; high -= item.size()) {
        char* greatest = low;
        for (char* p = low + item.size(); p <= high; p += item.size()) {
            if (cmp(p, greatest) > 0)
                greatest = p;
        }
        if (greatest != high)
            item.exchange(greatest, high);
    }
}

// Sorts low ... high. The smaller part is done first, so that 30 waiting ranges are enough for any count.
template <class Item>
void sortPlain(char* low, char* high, Item item, NX_VecCompareM cmp) {
    std::ptrdiff_t const size = item.size();
    struct Range {
        char* low;
        char* high;
    };
    Range waiting[30];
    int waitingQty = 0;
    for (;;) {
        if (high - low > 7 * size) {
            std::ptrdiff_t const qty = (high - low) / size + 1;
            item.exchange(low, low + qty / 2 * size);
            char* up = low;
            char* down = high + size;
            for (;;) {
                do {
                    up += size;
                } while (up <= high && cmp(up, low) <= 0);
                do {
                    down -= size;
                } while (down > low && cmp(down, low) >= 0);
                if (down < up)
                    break;
                item.exchange(up, down);
            }
            if (down != low)
                item.exchange(low, down);
            Range const left = {low, down - size};
            Range const right = {up, high};
            bool const rightFirst = down - 1 - low >= high - up;
            Range const& now = rightFirst ? right : left;
            Range const& later = rightFirst ? left : right;
            if (later.low < later.high)
                waiting[waitingQty++] = later;
            if (now.low < now.high) {
                low = now.low;
                high = now.high;
                continue;
            }
        } else {
            sortSelecting(low, high, item, cmp);
        }
        if (waitingQty == 0)
            return;
        --waitingQty;
        low = waiting[waitingQty].low;
        high = waiting[waitingQty].high;
    }
}

// Sorts `qty` items from `first` on; the last item is the pivot.
template <class Item>
void sortContext(char* first, std::ptrdiff_t qty, Item item, NX_VecCompareContextM cmp, void* context) {
    std::ptrdiff_t const size = item.size();
    while (qty > 1) {
        char* const pivot = first + (qty - 1) * size;
        char* i = first;
        char* j = pivot;
        while (j > i) {
            while (j > i && cmp(i, pivot, context) <= 0)
                i += size;
            if (j <= i)
                break;
            while (j > i && cmp(pivot, j, context) <= 0)
                j -= size;
            if (j <= i)
                break;
            item.exchange(i, j);
            i += size;
        }
        if (i != pivot)
            item.exchange(i, pivot);
        std::ptrdiff_t const leftQty = (i - first) / size;
        std::ptrdiff_t const rightQty = qty - leftQty - 1;
        if (rightQty >= leftQty) {
            sortContext(first, leftQty, item, cmp, context);
            first = i + size;
            qty = rightQty;
        } else {
            sortContext(i + size, rightQty, item, cmp, context);
            qty = leftQty;
        }
    }
}

void sortItems(char* items, unsigned int qty, unsigned int size, NX_VecCompareM cmp) {
    if (qty < 2 || size == 0)
        return;
    withItem(size,
             [=](auto item) { sortPlain(items, items + std::ptrdiff_t(qty - 1) * item.size(), item, cmp); });
}

void sortItems(char* items, unsigned int qty, unsigned int size, NX_VecCompareContextM cmp, void* context) {
    if (size == 0)
        return;
    withItem(size, [=](auto item) { sortContext(items, std::ptrdiff_t(qty), item, cmp, context); });
}

} // namespace

void NX_VecM::dataSort(NX_VecCompareM cmp) {
    sortItems(dataPMod(), itemQty(), itemSize(), cmp);
}

// The range forms make the vector modifiable twice: one that had to be cloned ends up marked dirty all the
// same.
void NX_VecM::dataSort(NX_VecCompareM cmp, unsigned int pos, unsigned int qty) {
    collManMod();
    sortItems(itemPMod(pos), qty, itemSize(), cmp);
}

void NX_VecM::dataSort(NX_VecCompareContextM cmp, void* context) {
    sortItems(dataPMod(), itemQty(), itemSize(), cmp, context);
}

void NX_VecM::dataSort(NX_VecCompareContextM cmp, unsigned int pos, unsigned int qty, void* context) {
    collManMod();
    sortItems(itemPMod(pos), qty, itemSize(), cmp, context);
}
