#include "audio/OggStream.h"

#include "io/DataFiles.h"

#include <algorithm>
#include <vector>

namespace Zelkor {

namespace {

constexpr int littleEndian = 0, wordSize = 2, isSigned = 1;

std::FILE* fileOf(void* source) {
    return static_cast<std::FILE*>(source);
}

std::size_t readBytes(void* to, std::size_t size, std::size_t count, void* source) {
    return std::fread(to, size, count, fileOf(source));
}

int seekTo(void* source, ogg_int64_t offset, int origin) {
    return std::fseek(fileOf(source), static_cast<long>(offset), origin);
}

int closeFile(void* source) {
    return std::fclose(fileOf(source));
}

long tellPosition(void* source) {
    return std::ftell(fileOf(source));
}

platform::SoundFormat formatOf(const vorbis_info& info) {
    platform::SoundFormat format;
    format.channels = info.channels;
    format.samplesPerSecond = static_cast<int>(info.rate);
    format.bitsPerSample = 8 * wordSize;
    return format;
}

} // namespace

bool OggStream::open(std::FILE* file) {
    close();
    if (!file) return false;
    const ov_callbacks callbacks = {readBytes, seekTo, closeFile, tellPosition};
    if (ov_open_callbacks(file, &file_, nullptr, 0, callbacks) != 0) {
        std::fclose(file);
        return false;
    }
    open_ = true;
    format_ = formatOf(*ov_info(&file_, -1));
    section_ = 0;
    damaged_ = false;
    return true;
}

void OggStream::close() {
    if (open_) ov_clear(&file_);
    open_ = false;
}

std::size_t OggStream::read(void* to, std::size_t bytes) {
    auto* out = static_cast<char*>(to);
    std::size_t filled = 0;
    while (open_ && filled < bytes) {
        int section = section_;
        const auto room = static_cast<int>(std::min<std::size_t>(bytes - filled, 1 << 20));
        const long got = ov_read(&file_, out + filled, room, littleEndian, wordSize, isSigned, &section);
        if (got == OV_HOLE) {
            damaged_ = true;
            continue;
        }
        if (got <= 0) {
            damaged_ |= got < 0;
            break;
        }
        if (section != section_) {
            const platform::SoundFormat next = formatOf(*ov_info(&file_, section));
            if (next.channels != format_.channels || next.samplesPerSecond != format_.samplesPerSecond) {
                damaged_ = true;
                break;
            }
            section_ = section;
        }
        filled += static_cast<std::size_t>(got);
    }
    return filled;
}

bool OggStream::rewind() {
    section_ = 0;
    return open_ && ov_pcm_seek(&file_, 0) == 0;
}

std::string oggProblem(const std::string& file) {
    std::FILE* opened = openDataFile(file);
    if (!opened) return "cannot be read";
    OggStream stream;
    if (!stream.open(opened)) return "no Ogg Vorbis file";
    const platform::SoundFormat format = stream.format();
    if (format.channels < 1 || format.channels > 2) return "not 1 or 2 channels";
    if (format.samplesPerSecond < 1000 || format.samplesPerSecond > 192000)
        return "not 1000 to 192000 samples a second";
    std::vector<char> decoded(1 << 16);
    std::size_t total = 0;
    while (const std::size_t got = stream.read(decoded.data(), decoded.size()))
        total += got;
    if (stream.damaged()) return "damaged packets, or parts in different formats";
    if (total == 0) return "not one sample";
    return stream.rewind() ? "" : "cannot be searched, so it would not loop";
}

} // namespace Zelkor
