// Positions on the keyboard to virtual keys: a key has the code of what an English (US) layout has there.
#pragma once

namespace platform {

// scancode: SDL's, that is the USB usage number. 0: no virtual key.
int virtualKeyFromScancode(int scancode);

} // namespace platform
