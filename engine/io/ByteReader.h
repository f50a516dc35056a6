// Cursor over raw little-endian data. The first read past the end fails the reader for good: that read and
// all later ones give zeros. Counts are checked against the bytes that are left before anything is allocated.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace Zelkor {

class ByteReader {
  public:
    // The bytes must outlive the reader.
    explicit ByteReader(std::span<const uint8_t> bytes) : bytes_(bytes) {}

    uint8_t u8();
    int16_t i16();
    int32_t i32();
    float f32();
    // A 32-bit length, then that many bytes.
    std::string string();
    // count elements of elementSize bytes each: the count as it was read if they fit into what is left, else
    // the reader fails and 0 comes back. Negative counts fail.
    int32_t count(std::size_t elementSize);
    // Fills a freshly sized array of count elements straight from the data.
    std::vector<float> floats(std::size_t count);
    std::vector<int32_t> ints(std::size_t count);
    std::vector<uint8_t> bytes(std::size_t count);
    void skip(std::size_t count);

    bool failed() const { return failed_; }
    std::size_t position() const { return position_; }
    std::size_t left() const { return bytes_.size() - position_; }

  private:
    const uint8_t* take(std::size_t count);

    std::span<const uint8_t> bytes_;
    std::size_t position_ = 0;
    bool failed_ = false;
};

} // namespace Zelkor
