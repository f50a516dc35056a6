// Where a Linux desktop keeps the player's files, by its environment.
#pragma once

#include <filesystem>
#include <optional>

namespace platform {

// "$XDG_DATA_HOME", else ".local/share" at home. None without a home.
std::optional<std::filesystem::path> dataHome();
// What the desktop's user-dirs.dirs calls XDG_PICTURES_DIR, else "Pictures" at home. None without a home.
std::optional<std::filesystem::path> picturesHome();

} // namespace platform
