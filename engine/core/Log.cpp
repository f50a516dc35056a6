#include "core/Log.h"

namespace Zelkor {

Log& Log::instance() {
    static Log log;
    return log;
}

bool Log::open(const std::filesystem::path& file) {
    // A stream, not fopen: it takes a path in any alphabet on every system.
    file_.open(file, std::ios::binary | std::ios::trunc);
    return file_.is_open();
}

void Log::write(std::string_view text) {
    if (file_.is_open()) file_ << text << std::endl;
    if (captured_) captured_->emplace_back(text);
}

void Log::close() {
    file_.close();
}

void logLine(std::string_view text) {
    Log::instance().write(text);
}

} // namespace Zelkor
