#include "Picture.h"

#include <gtest/gtest.h>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#include <stb/stb_image.h>

#include <cstdlib>
#include <filesystem>

namespace Zelkor {

namespace {

// Of 255. A pixel beyond the first is wrong; so many wrong ones are edges that fell the other way.
constexpr int pixelTolerance = 24;
constexpr double wrongShare = 0.02;
constexpr double meanTolerance = 1.5;

std::filesystem::path picturePath(const std::string& file) {
    return std::filesystem::path(PICTURE_FOLDER) / file;
}

Image readPng(const std::filesystem::path& file) {
    Image image;
    image.components = 3;
    int components = 0;
    stbi_uc* pixels = stbi_load(file.c_str(), &image.width, &image.height, &components, 3);
    if (!pixels) return {};
    image.pixels.assign(pixels, pixels + image.width * image.height * 3);
    stbi_image_free(pixels);
    return image;
}

int lightness(const Image& image, std::size_t pixel) {
    const uint8_t* at = &image.pixels[3 * pixel];
    return (at[0] + at[1] + at[2]) / 3;
}

} // namespace

void expectPicture(const Image& image, const std::string& name) {
    const auto reference = picturePath(name + ".png");
    if (std::getenv("RUSTPIKE_UPDATE_PICTURES")) {
        EXPECT_TRUE(image.writePng(reference));
        ADD_FAILURE() << "wrote " << reference << ": look at it";
        return;
    }
    const Image expected = readPng(reference);
    Image diff{image.width, image.height, 3, std::vector<uint8_t>(image.pixels.size(), 255)};
    double sum = 0;
    std::size_t wrong = 0;
    const std::size_t count = image.pixels.size() / 3;
    if (expected.width == image.width && expected.height == image.height) {
        for (std::size_t i = 0; i < count; ++i) {
            int worst = 0;
            for (std::size_t c = 0; c < 3; ++c)
                worst = std::max(worst, std::abs(image.pixels[3 * i + c] - expected.pixels[3 * i + c]));
            sum += worst;
            wrong += worst > pixelTolerance;
            const auto rest = static_cast<uint8_t>(255 - std::min(255, 4 * worst));
            const bool darker = lightness(image, i) < lightness(expected, i);
            diff.pixels[3 * i + 1] = rest;
            diff.pixels[3 * i + (darker ? 2 : 0)] = rest;
        }
        if (static_cast<double>(wrong) <= wrongShare * static_cast<double>(count) &&
            sum <= meanTolerance * static_cast<double>(count))
            return;
        diff.writePng(picturePath(name + ".diff.png"));
    }
    image.writePng(picturePath(name + ".actual.png"));
    ADD_FAILURE() << name << ": " << image.width << "x" << image.height << " against " << expected.width
                  << "x" << expected.height << ", " << wrong << " wrong pixels of " << count
                  << ", mean difference " << sum / static_cast<double>(count) << "; see "
                  << picturePath(name + ".diff.png");
}

} // namespace Zelkor
