// Where the data folder is, and the only way into it. Names come from data files, so they are never trusted:
// both slashes separate folders, and a name that would leave the data folder finds nothing.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Zelkor {

class TokenReader;

void setDataFolder(std::filesystem::path folder);
const std::filesystem::path& dataFolder();

// The path of a file below the data folder, or none when the name is absolute, climbs with "..", holds a
// zero byte or a drive letter. name as "units/" + mesh + ".mesh".
std::optional<std::filesystem::path> dataPath(const std::string& name);

// Opened in mode "rb"; null when it does not exist, is no regular file or lies outside.
std::FILE* openDataFile(const std::string& name);
std::unique_ptr<TokenReader> openDataTokens(const std::string& name);
bool dataFileExists(const std::string& name);
// The whole file, or none.
std::optional<std::vector<uint8_t>> readDataFile(const std::string& name);

} // namespace Zelkor
