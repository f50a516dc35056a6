// Recorded input. One line an action: "FRAME press|release NAME" or "FRAME mouse X Y", frame 0 being the
// first. NAME is a key name (Left, Z, Escape, ...), MouseLeft, MouseRight or a binding code in decimal; X and
// Y are fractions of the window.
#pragma once

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace Zelkor {
class ControllerManager;
}

struct InputAction {
    enum class Kind { press, release, mouse };
    int frame = 0;
    Kind kind = Kind::press;
    int code = 0; // raw button: 0..511 binding codes, 512 on the mouse bytes
    float x = 0, y = 0;
};

// In order of frames. None when the script cannot be read or a line is wrong; reason names file and line.
std::optional<std::vector<InputAction>> readInputScript(const std::filesystem::path& file,
                                                        std::string& reason);

class InputPlayer {
  public:
    explicit InputPlayer(std::vector<InputAction> actions) : actions_(std::move(actions)) {}
    // Applies the actions of the frame, before it runs.
    void apply(int frame, Zelkor::ControllerManager& controllers);

  private:
    std::vector<InputAction> actions_;
    std::size_t next_ = 0;
};

// Writes what changed in the raw buttons and the mouse since the frame before.
class InputRecorder {
  public:
    explicit InputRecorder(const std::filesystem::path& file);
    bool failed() const { return !out_; }
    // Just before the frame runs.
    void record(int frame, const Zelkor::ControllerManager& controllers);

  private:
    std::ofstream out_;
    std::vector<unsigned char> raw_;
    float mouseX_ = 0, mouseY_ = 0;
};
