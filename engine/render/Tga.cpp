#include "render/Tga.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace Zelkor {

namespace {

constexpr std::size_t headerSize = 18;
constexpr std::size_t paletteEntries = 256;
constexpr std::size_t paletteSize = 3 * paletteEntries;
constexpr uint8_t runLengthBit = 8; // of the image type

struct Header {
    bool palette = false;
    int width = 0, height = 0;
    int bits = 0;

    std::size_t filePixelSize() const { return bits == 8 ? 1 : bits == 32 ? 4 : 3; }
    int components() const {
        if (bits == 8) return palette ? 4 : 1;
        return bits == 32 ? 4 : 3;
    }
};

int littleEndian16(const uint8_t* at) {
    return static_cast<int16_t>(static_cast<uint16_t>(at[0] | at[1] << 8));
}

// Null when the header describes a picture that is read here, else what is wrong with it.
const char* readHeader(std::span<const uint8_t> bytes, Header& header) {
    if (bytes.size() < headerSize) return "shorter than its header";
    if (bytes[0] != 0) return "it has an image-ID field";
    if (bytes[2] & runLengthBit) return "it is run-length encoded";
    header.palette = bytes[1] == 1;
    header.width = littleEndian16(&bytes[12]);
    header.height = littleEndian16(&bytes[14]);
    header.bits = bytes[16];
    if (header.width <= 0 || header.height <= 0) return "it has no pixels";
    if (header.bits == 15 || header.bits == 16) return "15 and 16 bits a pixel are not supported";
    return nullptr;
}

// Swaps red and blue, two pixels at a time. Each step reads and writes eight bytes for six, so the last few
// pixels go one by one.
void copyWithoutAlpha(const uint8_t* in, uint8_t* out, std::size_t pixels) {
    for (; pixels > 2; pixels -= 2, in += 6, out += 6) {
        uint64_t two;
        std::memcpy(&two, in, 8);
        two = (two & 0x0000'00ff'0000'ff00) | (two >> 16 & 0x0000'0000'ff00'00ff) |
              (two << 16 & 0x0000'ff00'00ff'0000);
        std::memcpy(out, &two, 8);
    }
    for (; pixels > 0; --pixels, in += 3, out += 3) {
        out[0] = in[2];
        out[1] = in[1];
        out[2] = in[0];
    }
}

// Swaps red and blue, in blocks of a fixed size that a compiler turns into vector operations.
void copyWithAlpha(const uint8_t* in, uint8_t* out, std::size_t pixels) {
    constexpr std::size_t block = 4;
    const auto swap = [](uint32_t pixel) {
        return (pixel & 0xff00ff00) | (pixel >> 16 & 0xff) | (pixel & 0xff) << 16;
    };
    std::array<uint32_t, block> some{};
    for (; pixels >= block; pixels -= block, in += sizeof some, out += sizeof some) {
        std::memcpy(some.data(), in, sizeof some);
        for (uint32_t& pixel : some)
            pixel = swap(pixel);
        std::memcpy(out, some.data(), sizeof some);
    }
    std::memcpy(some.data(), in, 4 * pixels);
    for (uint32_t& pixel : some)
        pixel = swap(pixel);
    std::memcpy(out, some.data(), 4 * pixels);
}

using Palette = std::array<std::array<uint8_t, 4>, paletteEntries>;

// The alpha of an entry is the blue of the one after it; the last has none after it and is opaque.
Palette readPalette(const uint8_t* in) {
    Palette palette;
    for (std::size_t i = 0; i < paletteEntries; ++i, in += 3)
        palette[i] = {in[2], in[1], in[0], i + 1 < paletteEntries ? in[3] : uint8_t{255}};
    return palette;
}

void copyIndexed(const uint8_t* in, uint8_t* out, std::size_t pixels, const Palette& palette) {
    for (; pixels > 0; --pixels, ++in, out += 4)
        std::memcpy(out, palette[*in].data(), 4);
}

} // namespace

std::optional<Image> decodeTga(std::span<const uint8_t> bytes, std::string* reason) {
    const auto refuse = [reason](const char* why) {
        if (reason) *reason = why;
        return std::nullopt;
    };
    Header header;
    if (const char* wrong = readHeader(bytes, header)) return refuse(wrong);
    bytes = bytes.subspan(headerSize);
    Palette palette{};
    if (header.palette) {
        if (bytes.size() < paletteSize) return refuse("its palette is cut short");
        palette = readPalette(bytes.data());
        bytes = bytes.subspan(paletteSize);
    }
    const auto width = static_cast<std::size_t>(header.width);
    const auto height = static_cast<std::size_t>(header.height);
    const std::size_t fileRow = width * header.filePixelSize();
    if (bytes.size() / fileRow < height) return refuse("its pixels are cut short");

    Image image{header.width, header.height, header.components(), {}};
    const std::size_t row = width * static_cast<std::size_t>(image.components);
    // Row by row, so that what resize fills with zeros is still in the cache when it is written.
    image.pixels.reserve(row * height);
    for (std::size_t y = 0; y < height; ++y) {
        const uint8_t* in = bytes.data() + (height - 1 - y) * fileRow;
        if (header.bits == 8 && !header.palette) {
            image.pixels.insert(image.pixels.end(), in, in + fileRow);
            continue;
        }
        image.pixels.resize(row * (y + 1));
        uint8_t* out = image.pixels.data() + row * y;
        if (header.bits == 8)
            copyIndexed(in, out, width, palette);
        else if (header.bits == 32)
            copyWithAlpha(in, out, width);
        else
            copyWithoutAlpha(in, out, width);
    }
    return image;
}

} // namespace Zelkor
