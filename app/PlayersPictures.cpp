#include "PlayersPictures.h"

#include "core/Log.h"

#include <string>

using Zelkor::logLine;

namespace fs = std::filesystem;

fs::path playersPictureFile(const fs::path& folder, const std::tm& time) {
    char stamp[40] = "";
    std::strftime(stamp, sizeof stamp, "Rustpike %Y-%m-%d %H.%M.%S", &time);
    fs::path file = folder / (std::string(stamp) + ".png");
    std::error_code ignored;
    for (int number = 2; fs::exists(file, ignored); ++number)
        file = folder / (stamp + (" " + std::to_string(number)) + ".png");
    return file;
}

void savePlayersPicture(const Zelkor::Image& picture, const std::optional<fs::path>& folder) {
    if (!folder) return logLine("no folder for pictures");
    std::error_code trouble;
    fs::create_directories(*folder, trouble);
    const std::time_t now = std::time(nullptr);
    const fs::path file = playersPictureFile(*folder, *std::localtime(&now));
    logLine((picture.writePng(file) ? "picture saved as " : "cannot save a picture as ") + file.string());
}
