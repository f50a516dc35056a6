#include "fake/FakePlatform.h"

#include <algorithm>

namespace platform {

namespace {

class FakeWindow final : public Window {
  public:
    FakeWindow(FakePlatform& platform, ClientSize size) : platform_(platform), size_(size) {}
    ~FakeWindow() override { destroy(); }

    WindowTeardown destroy() override {
        if (destroyed_) return {};
        record("destroy");
        destroyed_ = true;
        return platform_.teardown;
    }
    void resize(int width, int height) override {
        if (destroyed_) return;
        record("resize " + std::to_string(width) + " " + std::to_string(height));
        size_ = {width, height};
        platform_.messages.push_back({.kind = MessageKind::resize, .width = width, .height = height});
    }
    ClientSize clientSize() const override { return size_; }
    void swapBuffers() override { record("swapBuffers"); }
    bool setSwapInterval(int interval) override {
        record("setSwapInterval " + std::to_string(interval));
        return platform_.swapIntervalSupported && !destroyed_;
    }
    void bringToFront() override { record("bringToFront"); }
    void minimise() override { record("minimise"); }
    void maximise() override { record("maximise"); }
    void restore() override { record("restore"); }
    std::optional<ClientPoint> cursorPosition() const override { return platform_.cursor; }
    void* glFunction(const char*) const override { return nullptr; }

  private:
    void record(std::string call) {
        if (!destroyed_) platform_.calls.push_back(std::move(call));
    }

    FakePlatform& platform_;
    ClientSize size_;
    bool destroyed_ = false;
};

std::string modeText(int width, int height, int bits) {
    return std::to_string(width) + " " + std::to_string(height) + " " + std::to_string(bits);
}

} // namespace

FakePlatform::FakePlatform() : previous_(current()) {
    setCurrent(this);
}
FakePlatform::~FakePlatform() {
    setCurrent(previous_);
}

bool FakePlatform::registerWindowClass() {
    calls.push_back("registerWindowClass");
    return !windowClassFails;
}

std::unique_ptr<Window> FakePlatform::createWindow(const WindowOptions& options) {
    calls.push_back("createWindow " + modeText(options.width, options.height, options.bits) +
                    (options.fullscreen ? " fullscreen" : " windowed"));
    if (failingWindows > 0) {
        --failingWindows;
        return nullptr;
    }
    return std::make_unique<FakeWindow>(*this, ClientSize{options.width, options.height});
}

bool FakePlatform::pollMessage(Message& message) {
    if (!messages.empty()) {
        message = messages.front();
        messages.pop_front();
        return true;
    }
    if (!quitCode_) return false;
    message = {.kind = MessageKind::quit, .code = *quitCode_};
    quitCode_.reset();
    return true;
}

void FakePlatform::postQuit(int exitCode) {
    quitCode_ = exitCode;
}

void FakePlatform::showCursor(bool visible) {
    calls.push_back(visible ? "showCursor 1" : "showCursor 0");
}

bool FakePlatform::switchDisplayMode(const DisplayMode& mode) {
    calls.push_back("switchDisplayMode " + modeText(mode.width, mode.height, mode.bits));
    return !modeSwitchesFail && std::find(modes.begin(), modes.end(), mode) != modes.end();
}

void FakePlatform::restoreDisplayMode() {
    calls.push_back("restoreDisplayMode");
}

void FakePlatform::showMessage(const std::string& text, const std::string& caption, MessageIcon icon) {
    messageBoxes.push_back({text, caption, icon, false});
}

bool FakePlatform::askYesNo(const std::string& text, const std::string& caption, MessageIcon icon) {
    messageBoxes.push_back({text, caption, icon, true});
    if (answers.empty()) return true;
    const bool answer = answers.front();
    answers.pop_front();
    return answer;
}

int FakePlatform::enumerateJoysticks() {
    return std::min(static_cast<int>(joysticks.size()), maxJoysticks);
}

std::optional<std::string> FakePlatform::startJoystick(int index) {
    const Joystick& joystick = joysticks.at(static_cast<std::size_t>(index));
    return joystick.usable ? std::optional(joystick.productName) : std::nullopt;
}

bool FakePlatform::readJoystick(int index, JoystickState& state) {
    const Joystick& joystick = joysticks.at(static_cast<std::size_t>(index));
    if (joystick.answering) state = joystick.state;
    return joystick.answering;
}

} // namespace platform
