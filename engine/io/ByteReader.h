// Cursor over raw little-endian data. The first read past the end fails the reader for good: that read and
// all later ones give zeros. Counts are checked against the bytes that are left before anything is allocated.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <type_traits>
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
    // Fills a freshly sized array of count elements straight from the data; empty when they do not fit.
    std::vector<float> floats(std::size_t count);
    std::vector<int32_t> ints(std::size_t count);
    std::vector<uint8_t> bytes(std::size_t count);
    // The same for any element without padding that the file holds as it stands in memory.
    template <class T>
    std::vector<T> array(std::size_t count) {
        static_assert(std::is_trivially_copyable_v<T>);
        // Divided, not multiplied: a count near the largest size must not wrap round to a small one.
        const uint8_t* from = take(count > left() / sizeof(T) ? left() + 1 : count * sizeof(T));
        std::vector<T> result(from ? count : 0);
        if (!result.empty()) std::memcpy(result.data(), from, count * sizeof(T));
        return result;
    }
    void skip(std::size_t count);

    bool failed() const { return failed_; }
    std::size_t position() const { return position_; }
    std::size_t left() const { return bytes_.size() - position_; }

  private:
    const uint8_t* take(std::size_t count);
    template <class T>
    T value();

    std::span<const uint8_t> bytes_;
    std::size_t position_ = 0;
    bool failed_ = false;
};

} // namespace Zelkor
