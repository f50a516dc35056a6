#include "FuzzTarget.h"

#include "game/SettingsText.h"

// Whatever was read can be written, is then whole, and reads as the same again; cut anywhere it is not whole.
int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    DisplaySettings display, displayAgain;
    SettingsValues values{}, valuesAgain{};
    readDisplaySettings(text, display);
    readSettings(text, values);
    (void)isWholeSettings(text);

    const std::string written = writeSettings(display, values);
    fuzzCheck(isWholeSettings(written));
    fuzzCheck(!isWholeSettings(std::string_view(written).substr(0, size % written.size())));
    readDisplaySettings(written, displayAgain);
    readSettings(written, valuesAgain);
    fuzzCheck(values == valuesAgain);
    fuzzCheck(display.width == displayAgain.width && display.height == displayAgain.height &&
              display.fullscreen == displayAgain.fullscreen);
    return 0;
}
