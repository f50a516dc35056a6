#include "io/SafeFile.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace Zelkor {

namespace fs = std::filesystem;

namespace {

constexpr mode_t everyoneReads = 0644;

std::optional<std::string> readAll(const fs::path& file) {
    std::error_code error;
    // Asked before opening: to open a pipe would wait for its writer.
    if (!fs::is_regular_file(file, error)) return {};
    const auto size = fs::file_size(file, error);
    if (error || size > SafeFile::maxSize) return {};
    std::ifstream in(file, std::ios::binary);
    if (!in) return {};
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// An open file of the system's, closed with its owner.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;

    bool open() const { return number_ >= 0; }
    bool writeAll(std::string_view content) const {
        while (!content.empty()) {
            const ssize_t written = ::write(number_, content.data(), content.size());
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) return false;
            content.remove_prefix(static_cast<std::size_t>(written));
        }
        return true;
    }
    bool flush() const { return ::fsync(number_) == 0; }
    // Some systems tell only now that the disk is full.
    bool close() {
        const int number = std::exchange(number_, -1);
        return number < 0 || ::close(number) == 0;
    }

  private:
    int number_;
};

// The new name reaches the disk with its folder. Not every file system can do it, and none has to.
void flushFolder(const fs::path& folder) {
    const Descriptor descriptor(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY));
    if (descriptor.open()) (void)descriptor.flush();
}

fs::path withSuffix(fs::path file, const char* suffix) {
    file += suffix;
    return file;
}

} // namespace

SafeFile::SafeFile(fs::path file, IsWhole isWhole) : file_(std::move(file)), isWhole_(isWhole) {
    // A link stays one: what it points to is replaced.
    std::error_code error;
    if (fs::is_symlink(file_, error))
        if (fs::path target = fs::weakly_canonical(file_, error); !error) file_ = std::move(target);
}

fs::path SafeFile::backup() const {
    return withSuffix(file_, ".bak");
}

std::optional<SafeFile::Content> SafeFile::read() const {
    auto text = readAll(file_);
    if (text && isWhole_(*text)) return Content{std::move(*text)};
    auto older = readAll(backup());
    if (older && isWhole_(*older)) return Content{std::move(*older), true};
    if (text) return Content{std::move(*text), false, false};
    if (older) return Content{std::move(*older), true, false};
    return {};
}

std::string SafeFile::write(std::string_view content) const {
    std::error_code error;
    fs::create_directories(file_.parent_path(), error); // what is wrong with it shows when a file is made
    std::string backupFailure;
    if (const auto before = readAll(file_); before && isWhole_(*before))
        backupFailure = replace(backup(), *before);
    const std::string failure = replace(file_, content);
    if (!failure.empty()) return "not saved: " + failure;
    return backupFailure.empty() ? "" : "saved without a backup: " + backupFailure;
}

bool SafeFile::step(const fs::path& file, SaveStep which) const {
    errno = 0;
    return !beforeStep || beforeStep(file, which);
}

std::string SafeFile::replace(const fs::path& file, std::string_view content) const {
    const fs::path fresh = withSuffix(file, ".new");
    const auto failed = [&fresh](const char* what) {
        const std::string reason = errno ? std::strerror(errno) : "no reason given";
        ::unlink(fresh.c_str());
        return "cannot " + std::string(what) + " " + fresh.string() + ": " + reason;
    };
    ::unlink(fresh.c_str()); // left by a save that was cut off, or a link to somewhere else
    if (!step(file, SaveStep::create)) return failed("create");
    Descriptor descriptor(::open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, everyoneReads));
    if (!descriptor.open()) return failed("create");
    if (!step(file, SaveStep::write) || !descriptor.writeAll(content)) return failed("write");
    if (!step(file, SaveStep::flush) || !descriptor.flush() || !descriptor.close()) return failed("flush");
    if (!step(file, SaveStep::replace) || ::rename(fresh.c_str(), file.c_str()) != 0)
        return failed("put in its place");
    flushFolder(file.parent_path());
    return {};
}

} // namespace Zelkor
