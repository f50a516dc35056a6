#include "io/ByteReader.h"

#include <bit>

namespace Zelkor {

static_assert(std::endian::native == std::endian::little, "the data files are read without byte swapping");

const uint8_t* ByteReader::take(std::size_t count) {
    if (failed_ || count > left()) {
        failed_ = true;
        return nullptr;
    }
    const uint8_t* bytes = bytes_.data() + position_;
    position_ += count;
    return bytes;
}

template <class T>
T ByteReader::value() {
    T result{};
    if (const uint8_t* bytes = take(sizeof(T))) std::memcpy(&result, bytes, sizeof(T));
    return result;
}

uint8_t ByteReader::u8() {
    return value<uint8_t>();
}
int16_t ByteReader::i16() {
    return value<int16_t>();
}
int32_t ByteReader::i32() {
    return value<int32_t>();
}
float ByteReader::f32() {
    return value<float>();
}

std::string ByteReader::string() {
    const int32_t length = count(1);
    const uint8_t* bytes = take(static_cast<std::size_t>(length));
    return bytes ? std::string(bytes, bytes + length) : std::string();
}

int32_t ByteReader::count(std::size_t elementSize) {
    const int32_t n = i32();
    if (n < 0 || static_cast<std::size_t>(n) > left() / elementSize) failed_ = true;
    return failed_ ? 0 : n;
}

std::vector<float> ByteReader::floats(std::size_t count) {
    return array<float>(count);
}
std::vector<int32_t> ByteReader::ints(std::size_t count) {
    return array<int32_t>(count);
}
std::vector<uint8_t> ByteReader::bytes(std::size_t count) {
    return array<uint8_t>(count);
}

void ByteReader::skip(std::size_t count) {
    take(count);
}

} // namespace Zelkor
