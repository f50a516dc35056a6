#include "sdl/UserFolders.h"

#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

namespace platform {

namespace {

namespace fs = std::filesystem;

std::optional<fs::path> home() {
    const char* folder = std::getenv("HOME");
    if (folder && *folder) return folder;
    return {};
}

// A relative path in such a variable counts as none.
std::optional<fs::path> absoluteFrom(const char* variable) {
    const char* folder = std::getenv(variable);
    if (folder && fs::path(folder).is_absolute()) return folder;
    return {};
}

// The value of a line NAME="VALUE", where VALUE begins with '/' or with "$HOME/"; quotes and backslashes in it have
// a backslash before them.
std::optional<fs::path> folderOf(std::string_view line, std::string_view name, const fs::path& atHome) {
    if (line.substr(0, name.size()) != name) return {};
    line.remove_prefix(name.size());
    if (line.substr(0, 2) != "=\"") return {};
    line.remove_prefix(2);
    std::string value;
    bool escaped = false;
    for (const char c : line) {
        if (!escaped && c == '"') break;
        escaped = !escaped && c == '\\';
        if (!escaped) value += c;
    }
    constexpr std::string_view homeMark = "$HOME";
    if (value.compare(0, homeMark.size(), homeMark) == 0)
        return atHome / fs::path(value.substr(homeMark.size())).relative_path();
    if (fs::path(value).is_absolute()) return value;
    return {};
}

} // namespace

std::optional<fs::path> dataHome() {
    if (const auto folder = absoluteFrom("XDG_DATA_HOME")) return folder;
    if (const auto atHome = home()) return *atHome / ".local" / "share";
    return {};
}

std::optional<fs::path> picturesHome() {
    const auto atHome = home();
    if (!atHome) return {};
    std::ifstream list(absoluteFrom("XDG_CONFIG_HOME").value_or(*atHome / ".config") / "user-dirs.dirs");
    for (std::string line; std::getline(list, line);)
        if (const auto folder = folderOf(line, "XDG_PICTURES_DIR", *atHome)) return folder;
    return *atHome / "Pictures";
}

} // namespace platform
