#include "io/DataFiles.h"

#include "io/TokenReader.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace Zelkor {

namespace fs = std::filesystem;

namespace {

// No data file comes near it; a sparse file may claim anything.
constexpr long largestFile = 1L << 30; // bytes

fs::path& folder() {
    static fs::path path = "data";
    return path;
}

// "." stays where it is; ".." climbs, and on some systems so do longer rows of dots.
bool climbs(const std::string& component) {
    return component.size() > 1 && component.find_first_not_of('.') == std::string::npos;
}

} // namespace

void setDataFolder(fs::path path) {
    folder() = std::move(path);
}
const fs::path& dataFolder() {
    return folder();
}

std::optional<fs::path> dataPath(const std::string& name) {
    // A colon is a drive letter or a file's second stream.
    if (name.empty() || name.find('\0') != std::string::npos || name.find(':') != std::string::npos)
        return {};
    std::string slashed = name;
    std::replace(slashed.begin(), slashed.end(), '\\', '/');
    if (slashed.front() == '/') return {};

    fs::path path = folder();
    for (std::size_t begin = 0; begin <= slashed.size();) {
        const std::size_t end = std::min(slashed.find('/', begin), slashed.size());
        const std::string component = slashed.substr(begin, end - begin);
        if (climbs(component)) return {};
        if (!component.empty()) path /= component;
        begin = end + 1;
    }
    return path;
}

bool dataFileExists(const std::string& name) {
    const auto path = dataPath(name);
    std::error_code error;
    return path && fs::is_regular_file(*path, error);
}

std::FILE* openDataFile(const std::string& name) {
    // Asked before opening: to open a pipe would wait for its writer.
    return dataFileExists(name) ? std::fopen(dataPath(name)->string().c_str(), "rb") : nullptr;
}

std::unique_ptr<TokenReader> openDataTokens(const std::string& name) {
    std::FILE* file = openDataFile(name);
    return file ? TokenReader::open(file) : nullptr;
}

std::optional<std::vector<uint8_t>> readDataFile(const std::string& name) {
    std::FILE* file = openDataFile(name);
    if (!file) return {};
    std::vector<uint8_t> bytes;
    if (std::fseek(file, 0, SEEK_END) == 0) {
        const long size = std::ftell(file);
        std::rewind(file);
        if (size > 0 && size <= largestFile) bytes.resize(static_cast<std::size_t>(size));
        bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    }
    std::fclose(file);
    return bytes;
}

} // namespace Zelkor
