// The engine's log: one plain line a message, no time stamps.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace Zelkor {

// The one log of the process. Until it is open, and when it could not be opened, lines are dropped.
class Log {
  public:
    static Log& instance();

    // Truncates. False leaves the log silent.
    bool open(const std::filesystem::path& file);
    // The text and a line end, flushed, so that a crash leaves everything before it.
    void write(std::string_view text);
    void close();

    // While set, lines are appended here as well, whatever the state of the file. Not owned; null ends it.
    void captureInto(std::vector<std::string>* lines) { captured_ = lines; }

  private:
    Log() = default;

    std::ofstream file_;
    std::vector<std::string>* captured_ = nullptr;
};

// Log::instance().write(text)
void logLine(std::string_view text);

} // namespace Zelkor
