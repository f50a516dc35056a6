// A small file of the player's that a crash, a full disk or a lost power line must not cost him: it is only
// ever replaced by a complete one, and the one before is kept beside it as a backup.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace Zelkor {

// The steps of putting one file in another's place. Until replace is through, the old file is untouched.
enum class SaveStep { create, write, flush, replace };

class SafeFile {
  public:
    // What makes a content one that was written to its end.
    using IsWhole = bool (*)(std::string_view content);
    // Called before each step with the file that is to be replaced; false makes the step fail.
    using StepHook = std::function<bool(const std::filesystem::path& file, SaveStep step)>;
    // A longer file is none of ours and reads as missing.
    static constexpr std::size_t maxSize = 1 << 20; // bytes

    SafeFile(std::filesystem::path file, IsWhole isWhole);

    struct Content {
        std::string text;
        bool fromBackup = false;
        bool whole = true; // false: neither the file nor its backup is, and this is what there is
    };
    // The file if it is whole, else the backup if that is, else whatever there is of either.
    std::optional<Content> read() const;

    // Makes the folders on the way. A whole file is copied to the backup first, so that once one of the two is
    // whole, one always is. Says what went wrong, nothing when all is well.
    std::string write(std::string_view content) const;

    std::filesystem::path backup() const; // the file's name + ".bak"

    StepHook beforeStep; // for tests

  private:
    std::string replace(const std::filesystem::path& file, std::string_view content) const;
    bool step(const std::filesystem::path& file, SaveStep which) const;

    std::filesystem::path file_;
    IsWhole isWhole_;
};

} // namespace Zelkor
