#include "Platform.h"

namespace platform {

namespace {
Platform* currentPlatform = nullptr;
}

Platform* current() {
    return currentPlatform;
}
void setCurrent(Platform* platform) {
    currentPlatform = platform;
}

} // namespace platform
