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

void copyWithoutAlpha(const uint8_t* in, uint8_t* out, std::size_t pixels) {
    // Four pixels are three words: b0 g0 r0 b1, g1 r1 b2 g2, r2 b3 g3 r3 from the lowest byte up.
    for (; pixels >= 4; pixels -= 4, in += 12, out += 12) {
        uint32_t a, b, c;
        std::memcpy(&a, in, 4);
        std::memcpy(&b, in + 4, 4);
        std::memcpy(&c, in + 8, 4);
        const uint32_t words[3] = {
            (a >> 16 & 0xff) | (a & 0xff00) | (a & 0xff) << 16 | (b & 0xff00) << 16,
            (b & 0xff) | a >> 24 << 8 | (c & 0xff) << 16 | (b & 0xff000000),
            (b >> 16 & 0xff) | (c >> 16 & 0xff00) | (c & 0xff0000) | (c & 0xff00) << 16,
        };
        std::memcpy(out, words, 12);
    }
    for (; pixels > 0; --pixels, in += 3, out += 3) {
        out[0] = in[2];
        out[1] = in[1];
        out[2] = in[0];
    }
}

void copyWithAlpha(const uint8_t* in, uint8_t* out, std::size_t pixels) {
    for (; pixels > 0; --pixels, in += 4, out += 4) {
        uint32_t pixel;
        std::memcpy(&pixel, in, 4);
        pixel = (pixel & 0xff00ff00) | (pixel >> 16 & 0xff) | (pixel & 0xff) << 16;
        std::memcpy(out, &pixel, 4);
    }
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
    image.pixels.resize(row * height);
    for (std::size_t y = 0; y < height; ++y) {
        const uint8_t* in = bytes.data() + (height - 1 - y) * fileRow;
        uint8_t* out = image.pixels.data() + y * row;
        if (header.bits == 8 && header.palette)
            copyIndexed(in, out, width, palette);
        else if (header.bits == 8)
            std::memcpy(out, in, row);
        else if (header.bits == 32)
            copyWithAlpha(in, out, width);
        else
            copyWithoutAlpha(in, out, width);
    }
    return image;
}

} // namespace Zelkor
