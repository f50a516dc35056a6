#include "VirtualKeys.h"

#include <charconv>

namespace platform {

namespace {

struct NamedCode {
    std::string_view name;
    int code;
};

// Letters, digits, function keys and the number pad follow from their codes and are not listed.
constexpr NamedCode namedCodes[] = {
    {"Backspace", key::backspace},
    {"Tab", key::tab},
    {"Enter", key::enter},
    {"Shift", key::shift},
    {"Ctrl", key::ctrl},
    {"Alt", key::alt},
    {"Pause", key::pause},
    {"CapsLock", key::capsLock},
    {"Escape", key::escape},
    {"Space", key::space},
    {"PageUp", key::pageUp},
    {"PageDown", key::pageDown},
    {"End", key::end},
    {"Home", key::home},
    {"Left", key::left},
    {"Up", key::up},
    {"Right", key::right},
    {"Down", key::down},
    {"PrintScreen", key::printScreen},
    {"Insert", key::insert},
    {"Delete", key::del},
    {"Multiply", key::multiply},
    {"Add", key::add},
    {"Subtract", key::subtract},
    {"Decimal", key::decimal},
    {"Divide", key::divide},
    {"NumLock", key::numLock},
    {"ScrollLock", key::scrollLock},
    {"LeftShift", key::leftShift},
    {"RightShift", key::rightShift},
    {"LeftCtrl", key::leftCtrl},
    {"RightCtrl", key::rightCtrl},
    {"Semicolon", key::semicolon},
    {"Equals", key::equals},
    {"Comma", key::comma},
    {"Minus", key::minus},
    {"Period", key::period},
    {"Slash", key::slash},
    {"Grave", key::grave},
    {"LeftBracket", key::leftBracket},
    {"Backslash", key::backslash},
    {"RightBracket", key::rightBracket},
    {"Apostrophe", key::apostrophe},
    {"MouseLeft", mouseLeftCode},
    {"MouseRight", mouseRightCode},
    {"MouseMiddle", mouseMiddleCode},
};

constexpr int functionKeyCount = 12;
constexpr std::string_view numpadPrefix = "Numpad";

std::optional<int> decimalBelow(std::string_view text, int end) {
    int value = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || stop != text.data() + text.size() || value < 0 || value >= end) return {};
    return value;
}

bool isLetterOrDigit(int code) {
    return (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z');
}

} // namespace

std::optional<int> inputCode(std::string_view name) {
    if (name.size() == 1 && isLetterOrDigit(static_cast<unsigned char>(name[0]))) return name[0];
    for (const NamedCode& named : namedCodes)
        if (named.name == name) return named.code;
    if (name.starts_with(numpadPrefix)) {
        const auto digit = decimalBelow(name.substr(numpadPrefix.size()), 10);
        return digit ? std::optional(key::numpad0 + *digit) : std::nullopt;
    }
    if (name.starts_with('F')) {
        const auto number = decimalBelow(name.substr(1), functionKeyCount + 1);
        return number && *number > 0 ? std::optional(key::f1 + *number - 1) : std::nullopt;
    }
    return decimalBelow(name, inputCodeCount);
}

std::string inputName(int code) {
    if (isLetterOrDigit(code)) return std::string(1, static_cast<char>(code));
    for (const NamedCode& named : namedCodes)
        if (named.code == code) return std::string(named.name);
    if (code >= key::numpad0 && code < key::numpad0 + 10)
        return std::string(numpadPrefix) + std::to_string(code - key::numpad0);
    if (code >= key::f1 && code < key::f1 + functionKeyCount) return "F" + std::to_string(code - key::f1 + 1);
    return (code < 10 ? "0" : "") + std::to_string(code);
}

} // namespace platform
