// A data folder of a test's own, gone with it.
#pragma once

#include "io/DataFiles.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include <stdlib.h>

class TempData {
  public:
    TempData() : before_(Zelkor::dataFolder()) {
        std::string pattern = (std::filesystem::temp_directory_path() / "rustpike-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        Zelkor::setDataFolder(folder_);
    }
    ~TempData() {
        Zelkor::setDataFolder(before_);
        std::filesystem::remove_all(folder_);
    }
    TempData(const TempData&) = delete;

    const std::filesystem::path& folder() const { return folder_; }

    // Makes the folders on the way.
    std::filesystem::path write(const std::string& name, std::string_view content) const {
        const auto path = folder_ / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    std::filesystem::path write(const std::string& name, const std::vector<uint8_t>& bytes) const {
        return write(name, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
    }

  private:
    std::filesystem::path before_, folder_;
};
