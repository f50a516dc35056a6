// An Ogg Vorbis file, decoded to 16-bit samples in the order of its channels.
#pragma once

#include "Platform.h"

#define OV_EXCLUDE_STATIC_CALLBACKS
#include <vorbis/vorbisfile.h>

#include <cstddef>
#include <cstdio>
#include <string>

namespace Zelkor {

class OggStream {
  public:
    OggStream() = default;
    ~OggStream() { close(); }
    OggStream(const OggStream&) = delete;

    // Takes the file over, also when it cannot be decoded (false). Closes the stream that was open.
    bool open(std::FILE* file);
    void close();
    bool isOpen() const { return open_; }
    // Of the beginning; the stream ends where another begins.
    platform::SoundFormat format() const { return format_; }

    // Decodes until so many bytes are filled or the stream ends. Returns how many were. Broken packets are
    // skipped.
    std::size_t read(void* to, std::size_t bytes);
    // Back to the first sample. False when the file cannot be searched.
    bool rewind();

    // Whether a packet has been skipped or a part in another format met since it was opened.
    bool damaged() const { return damaged_; }

  private:
    OggVorbis_File file_{};
    platform::SoundFormat format_;
    int section_ = 0; // of a file in several parts
    bool open_ = false;
    bool damaged_ = false;
};

// Decodes a whole file below the data folder. Empty when it is sound, else what is wrong with it.
std::string oggProblem(const std::string& file);

} // namespace Zelkor
