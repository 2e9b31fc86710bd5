// tests/support/tracked.h - an item that owns something: for testing collections whose items need their
// hooks.
//
// An item holds a number, and a table counts how many items hold each number. An item that is lost, given up
// twice, or made without being announced leaves the table out of balance; one whose bytes are not an item's
// is reported at once.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <map>

class NXS_Tracked {
public:
    NXS_Tracked(int value = 0) { hold(value); } // 0: empty, counted all the same
    NXS_Tracked(NXS_Tracked const& other) { hold(other.value()); }
    NXS_Tracked& operator=(NXS_Tracked const& other) {
        int const incoming = other.value();
        drop();
        hold(incoming);
        return *this;
    }
    ~NXS_Tracked() {
        drop();
        static_cast<std::uint32_t volatile&>(guard) = number; // what is read of it from now on is no item
    }

    int value() const {
        EXPECT_EQ(number, ~guard) << "not an item";
        EXPECT_GT(holders()[static_cast<int>(number)], 0) << "an item that nobody holds: " << number;
        return static_cast<int>(number);
    }

    static std::map<int, int>& holders() {
        static std::map<int, int> table;
        return table;
    }
    // Number of items that exist.
    static int alive() {
        int sum = 0;
        for (auto const& entry : holders()) {
            EXPECT_GE(entry.second, 0) << "given up too often: " << entry.first;
            sum += entry.second;
        }
        return sum;
    }

private:
    void hold(int value) {
        number = static_cast<std::uint32_t>(value);
        guard = ~number;
        ++holders()[value];
    }
    void drop() { --holders()[value()]; }

    std::uint32_t number;
    std::uint32_t guard;
};
