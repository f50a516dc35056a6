// Virtual-key codes, the numbers by which keys are known in messages, bindings and input scripts, and the
// names that input scripts give them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Letters and digits have their ASCII codes, 'A' to 'Z' and '0' to '9'.
namespace key {
inline constexpr int backspace = 8, tab = 9, enter = 13;
inline constexpr int shift = 16, ctrl = 17, alt = 18; // either side
inline constexpr int pause = 19, capsLock = 20, escape = 27, space = 32;
inline constexpr int pageUp = 33, pageDown = 34, end = 35, home = 36;
inline constexpr int left = 37, up = 38, right = 39, down = 40;
inline constexpr int printScreen = 44, insert = 45, del = 46;
inline constexpr int numpad0 = 96; // to numpad0 + 9
inline constexpr int multiply = 106, add = 107, subtract = 109, decimal = 110, divide = 111;
inline constexpr int f1 = 112; // to f1 + 11
inline constexpr int numLock = 144, scrollLock = 145;
inline constexpr int leftShift = 160, rightShift = 161, leftCtrl = 162, rightCtrl = 163;
inline constexpr int semicolon = 186, equals = 187, comma = 188, minus = 189, period = 190, slash = 191;
inline constexpr int grave = 192, leftBracket = 219, backslash = 220, rightBracket = 221, apostrophe = 222;
} // namespace key

// Codes of inputs: 0..255 virtual keys, 256..511 joystick elements, then the mouse.
inline constexpr int firstMouseCode = 512;
inline constexpr int mouseLeftCode = 512, mouseRightCode = 513, mouseMiddleCode = 514;
inline constexpr int inputCodeCount = 515;

// The code of a name ("Left", "Z", "F5", "MouseLeft") or of a decimal number below inputCodeCount. Names are
// compared exactly. A single digit is the name of its key, so codes below 10 are written with a leading 0.
std::optional<int> inputCode(std::string_view name);
// A name that inputCode understands, the decimal number when there is no other.
std::string inputName(int code);

} // namespace platform
