#include "texture/Image.h"

#include <stdexcept>

namespace forge {
namespace {

constexpr std::size_t headerSize = 18;
constexpr std::uint8_t trueColour = 2, grey = 3;

// Blue, green, red in the file; red, green, blue here.
int fileChannel(int channels, int c) {
    return channels >= 3 && c < 3 ? 2 - c : c;
}

} // namespace

Bytes encodeTga(const Image& image) {
    Bytes bytes(headerSize, 0);
    bytes[2] = image.channels == 1 ? grey : trueColour;
    bytes[12] = static_cast<std::uint8_t>(image.width & 255);
    bytes[13] = static_cast<std::uint8_t>(image.width >> 8);
    bytes[14] = static_cast<std::uint8_t>(image.height & 255);
    bytes[15] = static_cast<std::uint8_t>(image.height >> 8);
    bytes[16] = static_cast<std::uint8_t>(image.channels * 8);
    bytes[17] = image.channels == 4 ? 8 : 0; // alpha bits; origin at the bottom left
    for (int y = image.height - 1; y >= 0; --y)
        for (int x = 0; x < image.width; ++x)
            for (int c = 0; c < image.channels; ++c)
                bytes.push_back(image.at(x, y, fileChannel(image.channels, c)));
    return bytes;
}

Image decodeTga(const Bytes& bytes) {
    if (bytes.size() < headerSize) throw std::runtime_error("the header is cut off");
    const int bits = bytes[16];
    if (bytes[0] != 0 || bytes[1] != 0 || (bytes[2] != trueColour && bytes[2] != grey) ||
        (bits != 8 && bits != 24 && bits != 32))
        throw std::runtime_error("not a plain picture");
    Image image(bytes[12] | bytes[13] << 8, bytes[14] | bytes[15] << 8, bits / 8);
    if (bytes.size() != headerSize + image.pixels.size())
        throw std::runtime_error("the size does not fit the header");
    std::size_t next = headerSize;
    for (int y = image.height - 1; y >= 0; --y)
        for (int x = 0; x < image.width; ++x)
            for (int c = 0; c < image.channels; ++c)
                image.at(x, y, fileChannel(image.channels, c)) = bytes[next++];
    return image;
}

} // namespace forge
