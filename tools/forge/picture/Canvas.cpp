#include "picture/Canvas.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <stdexcept>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>
#pragma GCC diagnostic pop

namespace forge {
namespace {

// Rows of three points from the top, five rows, a bit each.
struct Letter {
    char sign;
    int rows[5];
};
constexpr Letter letters[] = {
    {'A', {2, 5, 7, 5, 5}}, {'B', {6, 5, 6, 5, 6}}, {'C', {3, 4, 4, 4, 3}}, {'D', {6, 5, 5, 5, 6}},
    {'E', {7, 4, 6, 4, 7}}, {'F', {7, 4, 6, 4, 4}}, {'G', {3, 4, 5, 5, 3}}, {'H', {5, 5, 7, 5, 5}},
    {'I', {7, 2, 2, 2, 7}}, {'J', {1, 1, 1, 5, 2}}, {'K', {5, 5, 6, 5, 5}}, {'L', {4, 4, 4, 4, 7}},
    {'M', {5, 7, 7, 5, 5}}, {'N', {6, 5, 5, 5, 5}}, {'O', {2, 5, 5, 5, 2}}, {'P', {6, 5, 6, 4, 4}},
    {'Q', {2, 5, 5, 6, 3}}, {'R', {6, 5, 6, 5, 5}}, {'S', {3, 4, 2, 1, 6}}, {'T', {7, 2, 2, 2, 2}},
    {'U', {5, 5, 5, 5, 7}}, {'V', {5, 5, 5, 5, 2}}, {'W', {5, 5, 7, 7, 5}}, {'X', {5, 5, 2, 5, 5}},
    {'Y', {5, 5, 2, 2, 2}}, {'Z', {7, 1, 2, 4, 7}}, {'0', {7, 5, 5, 5, 7}}, {'1', {2, 6, 2, 2, 7}},
    {'2', {6, 1, 2, 4, 7}}, {'3', {6, 1, 2, 1, 6}}, {'4', {5, 5, 7, 1, 1}}, {'5', {7, 4, 6, 1, 6}},
    {'6', {3, 4, 7, 5, 7}}, {'7', {7, 1, 2, 2, 2}}, {'8', {7, 5, 7, 5, 7}}, {'9', {7, 5, 7, 1, 6}},
    {'.', {0, 0, 0, 0, 2}}, {'_', {0, 0, 0, 0, 7}}, {'-', {0, 0, 7, 0, 0}}, {'/', {1, 1, 2, 4, 4}},
};

} // namespace

void Canvas::set(int x, int y, const Zelkor::Vec3& colour) {
    if (x < 0 || y < 0 || x >= width || y >= height) return;
    const auto index =
        (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 3;
    const float channels[3] = {colour.x, colour.y, colour.z};
    for (std::size_t c = 0; c < 3; ++c)
        rgb[index + c] = static_cast<std::uint8_t>(std::lround(std::clamp(channels[c], 0.0f, 1.0f) * 255));
}

void Canvas::paste(const Canvas& other, int left, int top) {
    for (int y = 0; y < other.height; ++y)
        for (int x = 0; x < other.width; ++x) {
            const auto i = (static_cast<std::size_t>(y) * static_cast<std::size_t>(other.width) +
                            static_cast<std::size_t>(x)) *
                           3;
            const float scale = 1 / 255.0f;
            set(left + x, top + y,
                Zelkor::Vec3{other.rgb[i] * scale, other.rgb[i + 1] * scale, other.rgb[i + 2] * scale});
        }
}

void Canvas::label(int left, int top, const std::string& text) {
    for (const char c : text) {
        const char sign = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        for (const Letter& letter : letters)
            if (letter.sign == sign)
                for (int y = 0; y < 10; ++y)
                    for (int x = 0; x < 6; ++x)
                        if (letter.rows[y / 2] >> (2 - x / 2) & 1) set(left + x, top + y, {0.5f, 0.1f, 0.1f});
        left += 8;
    }
}

void writePng(const std::string& path, const Canvas& canvas) {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    if (!folder.empty()) std::filesystem::create_directories(folder);
    if (!stbi_write_png(path.c_str(), canvas.width, canvas.height, 3, canvas.rgb.data(), canvas.width * 3))
        throw std::runtime_error("cannot write " + path);
}

} // namespace forge
