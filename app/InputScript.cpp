#include "InputScript.h"

#include "VirtualKeys.h"
#include "input/ControllerManager.h"

#include <algorithm>
#include <sstream>

namespace {

std::optional<InputAction> parseAction(const std::string& line) {
    std::istringstream words(line);
    InputAction action;
    std::string kind, rest;
    if (!(words >> action.frame >> kind) || action.frame < 0) return std::nullopt;
    if (kind == "mouse") {
        action.kind = InputAction::Kind::mouse;
        if (!(words >> action.x >> action.y)) return std::nullopt;
    } else {
        if (kind != "press" && kind != "release") return std::nullopt;
        action.kind = kind == "press" ? InputAction::Kind::press : InputAction::Kind::release;
        std::string name;
        words >> name;
        const auto code = platform::inputCode(name);
        if (!code) return std::nullopt;
        action.code = *code;
    }
    if (words >> rest) return std::nullopt;
    return action;
}

} // namespace

std::optional<std::vector<InputAction>> readInputScript(const std::filesystem::path& file,
                                                        std::string& reason) {
    std::ifstream in(file);
    if (!in) {
        reason = file.string() + ": cannot be read";
        return std::nullopt;
    }
    std::vector<InputAction> actions;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (line.empty() || line[0] == '#') continue;
        const auto action = parseAction(line);
        if (!action) {
            reason = file.string() + ":" + std::to_string(number) + ": no input action: " + line;
            return std::nullopt;
        }
        actions.push_back(*action);
    }
    std::stable_sort(actions.begin(), actions.end(),
                     [](const InputAction& a, const InputAction& b) { return a.frame < b.frame; });
    return actions;
}

void InputPlayer::apply(int frame, Zelkor::ControllerManager& controllers) {
    for (; next_ < actions_.size() && actions_[next_].frame <= frame; ++next_) {
        const InputAction& action = actions_[next_];
        if (action.kind == InputAction::Kind::mouse) {
            controllers.mouseX = action.x;
            controllers.mouseY = action.y;
        } else {
            controllers.setButton(action.code, action.kind == InputAction::Kind::press);
        }
    }
}

InputRecorder::InputRecorder(const std::filesystem::path& file)
    : out_(file), raw_(platform::inputCodeCount, 0) {}

void InputRecorder::record(int frame, const Zelkor::ControllerManager& controllers) {
    for (int code = 0; code < platform::inputCodeCount; ++code) {
        const auto now =
            code < Zelkor::rawButtonCount
                ? controllers.raw[static_cast<std::size_t>(code)]
                : controllers.mouseButtons[static_cast<std::size_t>(code - Zelkor::rawButtonCount)];
        auto& before = raw_[static_cast<std::size_t>(code)];
        if (now == before) continue;
        before = now;
        out_ << frame << (now ? " press " : " release ") << platform::inputName(code) << '\n';
    }
    if (controllers.mouseX != mouseX_ || controllers.mouseY != mouseY_) {
        mouseX_ = controllers.mouseX;
        mouseY_ = controllers.mouseY;
        out_ << frame << " mouse " << mouseX_ << ' ' << mouseY_ << '\n';
    }
    out_.flush(); // a crash later must not lose the recording that led to it
}
