#include "VirtualKeys.h"
#include "sdl/SdlKeys.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using platform::inputCode;
using platform::inputName;

TEST(VirtualKeys, NamesOfScriptsHaveTheirCodes) {
    EXPECT_EQ(inputCode("Left"), 37);
    EXPECT_EQ(inputCode("Down"), 40);
    EXPECT_EQ(inputCode("Enter"), 13);
    EXPECT_EQ(inputCode("Z"), 90);
    EXPECT_EQ(inputCode("F"), 70); // the letter, not a function key without its number
    EXPECT_EQ(inputCode("F12"), 123);
    EXPECT_EQ(inputCode("7"), 55); // the key, not the code
    EXPECT_EQ(inputCode("07"), 7);
    EXPECT_EQ(inputCode("288"), 288);
    EXPECT_EQ(inputCode("MouseRight"), 513);
    for (const char* unknown :
         {"", "z", "left", "F0", "F13", "F-1", "Numpad", "Numpad10", "515", "-1", "12x"})
        EXPECT_FALSE(inputCode(unknown)) << unknown;
}

TEST(VirtualKeys, EveryCodeHasANameThatLeadsBack) {
    for (int code = 0; code < platform::inputCodeCount; ++code)
        EXPECT_EQ(inputCode(inputName(code)), code) << inputName(code);
}

TEST(SdlKeys, PositionsBecomeVirtualKeys) {
    // USB usage numbers: letters from 4, digits 1 to 9 and 0 from 30, arrows right, left, down, up from 79.
    EXPECT_EQ(platform::virtualKeyFromScancode(4), 'A');
    EXPECT_EQ(platform::virtualKeyFromScancode(29), 'Z');
    EXPECT_EQ(platform::virtualKeyFromScancode(30), '1');
    EXPECT_EQ(platform::virtualKeyFromScancode(39), '0');
    EXPECT_EQ(platform::virtualKeyFromScancode(79), platform::key::right);
    EXPECT_EQ(platform::virtualKeyFromScancode(80), platform::key::left);
    EXPECT_EQ(platform::virtualKeyFromScancode(81), platform::key::down);
    EXPECT_EQ(platform::virtualKeyFromScancode(82), platform::key::up);
    EXPECT_EQ(platform::virtualKeyFromScancode(225), platform::key::shift);
    EXPECT_EQ(platform::virtualKeyFromScancode(229), platform::key::shift);
    EXPECT_EQ(platform::virtualKeyFromScancode(0), 0);

    // Only keys that are on the keyboard twice may share a code.
    std::multiset<int> codes;
    for (int scancode = 0; scancode < 512; ++scancode)
        if (const int code = platform::virtualKeyFromScancode(scancode)) codes.insert(code);
    for (const int code : codes) {
        const bool twice = code == platform::key::shift || code == platform::key::ctrl ||
                           code == platform::key::enter || code == platform::key::backslash;
        EXPECT_EQ(codes.count(code), twice ? 2u : 1u) << code;
    }
}

} // namespace
