// Pictures that the player takes of the game.
#pragma once

#include "VirtualKeys.h"
#include "render/Image.h"

#include <ctime>
#include <filesystem>
#include <optional>

inline constexpr int pictureKey = platform::key::f1 + 11;

// "Rustpike 2026-11-23 04.50.12.png" in the folder, with a number behind the time where that exists. time: local.
std::filesystem::path playersPictureFile(const std::filesystem::path& folder, const std::tm& time);
// Into the folder, which is made where it is missing; the log says where to, or why not.
void savePlayersPicture(const Zelkor::Image& picture, const std::optional<std::filesystem::path>& folder);
