#include "sdl/SdlKeys.h"

#include "VirtualKeys.h"

#include <SDL.h>

namespace platform {

namespace {

struct KeyPosition {
    SDL_Scancode scancode;
    int virtualKey;
};

// Both shift keys are one virtual key, and both control keys. The alt keys are the system's, not the game's.
constexpr KeyPosition keyPositions[] = {
    {SDL_SCANCODE_0, '0'},
    {SDL_SCANCODE_RETURN, key::enter},
    {SDL_SCANCODE_ESCAPE, key::escape},
    {SDL_SCANCODE_BACKSPACE, key::backspace},
    {SDL_SCANCODE_TAB, key::tab},
    {SDL_SCANCODE_SPACE, key::space},
    {SDL_SCANCODE_MINUS, key::minus},
    {SDL_SCANCODE_EQUALS, key::equals},
    {SDL_SCANCODE_LEFTBRACKET, key::leftBracket},
    {SDL_SCANCODE_RIGHTBRACKET, key::rightBracket},
    {SDL_SCANCODE_BACKSLASH, key::backslash},
    {SDL_SCANCODE_NONUSHASH, key::backslash},
    {SDL_SCANCODE_SEMICOLON, key::semicolon},
    {SDL_SCANCODE_APOSTROPHE, key::apostrophe},
    {SDL_SCANCODE_GRAVE, key::grave},
    {SDL_SCANCODE_COMMA, key::comma},
    {SDL_SCANCODE_PERIOD, key::period},
    {SDL_SCANCODE_SLASH, key::slash},
    {SDL_SCANCODE_CAPSLOCK, key::capsLock},
    {SDL_SCANCODE_PRINTSCREEN, key::printScreen},
    {SDL_SCANCODE_SCROLLLOCK, key::scrollLock},
    {SDL_SCANCODE_PAUSE, key::pause},
    {SDL_SCANCODE_INSERT, key::insert},
    {SDL_SCANCODE_HOME, key::home},
    {SDL_SCANCODE_PAGEUP, key::pageUp},
    {SDL_SCANCODE_DELETE, key::del},
    {SDL_SCANCODE_END, key::end},
    {SDL_SCANCODE_PAGEDOWN, key::pageDown},
    {SDL_SCANCODE_RIGHT, key::right},
    {SDL_SCANCODE_LEFT, key::left},
    {SDL_SCANCODE_DOWN, key::down},
    {SDL_SCANCODE_UP, key::up},
    {SDL_SCANCODE_NUMLOCKCLEAR, key::numLock},
    {SDL_SCANCODE_KP_DIVIDE, key::divide},
    {SDL_SCANCODE_KP_MULTIPLY, key::multiply},
    {SDL_SCANCODE_KP_MINUS, key::subtract},
    {SDL_SCANCODE_KP_PLUS, key::add},
    {SDL_SCANCODE_KP_ENTER, key::enter},
    {SDL_SCANCODE_KP_0, key::numpad0},
    {SDL_SCANCODE_KP_PERIOD, key::decimal},
    {SDL_SCANCODE_LCTRL, key::ctrl},
    {SDL_SCANCODE_RCTRL, key::ctrl},
    {SDL_SCANCODE_LSHIFT, key::shift},
    {SDL_SCANCODE_RSHIFT, key::shift},
};

// Runs of keys whose codes count up together.
struct KeyRun {
    SDL_Scancode first, last;
    int virtualKey; // of the first
};

constexpr KeyRun keyRuns[] = {
    {SDL_SCANCODE_A, SDL_SCANCODE_Z, 'A'},
    {SDL_SCANCODE_1, SDL_SCANCODE_9, '1'},
    {SDL_SCANCODE_F1, SDL_SCANCODE_F12, key::f1},
    {SDL_SCANCODE_KP_1, SDL_SCANCODE_KP_9, key::numpad0 + 1},
};

} // namespace

int virtualKeyFromScancode(int scancode) {
    for (const KeyRun& run : keyRuns)
        if (scancode >= run.first && scancode <= run.last) return run.virtualKey + scancode - run.first;
    for (const KeyPosition& position : keyPositions)
        if (position.scancode == scancode) return position.virtualKey;
    return 0;
}

} // namespace platform
