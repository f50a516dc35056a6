#include "render/Tga.h"

#include "RenderTest.h"

namespace Zelkor {

namespace {

using Bytes = std::vector<uint8_t>;

TEST(TgaTest, FlipsRowsAndOrdersColours) {
    // Bottom row red, green; top row blue, white.
    const Bytes file = tgaBytes(2, 2, 24, {0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255});
    const auto image = decodeTga(file);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 2);
    EXPECT_EQ(image->components, 3);
    EXPECT_EQ(image->pixels, (Bytes{0, 0, 255, 255, 255, 255, 255, 0, 0, 0, 255, 0}));
}

TEST(TgaTest, EveryWidthOfRowKeepsItsPixels) {
    for (const int width : {1, 3, 4, 5, 8, 11}) {
        Bytes data, expected;
        for (int i = 0; i < width; ++i) {
            const auto v = static_cast<uint8_t>(i * 7);
            data.insert(data.end(), {v, static_cast<uint8_t>(v + 1), static_cast<uint8_t>(v + 2)});
            expected.insert(expected.end(), {static_cast<uint8_t>(v + 2), static_cast<uint8_t>(v + 1), v});
        }
        const auto image = decodeTga(tgaBytes(width, 1, 24, data));
        ASSERT_TRUE(image);
        EXPECT_EQ(image->pixels, expected) << width;
    }
}

TEST(TgaTest, OtherDepths) {
    const auto withAlpha = decodeTga(tgaBytes(1, 1, 32, {1, 2, 3, 4}));
    ASSERT_TRUE(withAlpha);
    EXPECT_EQ(withAlpha->components, 4);
    EXPECT_EQ(withAlpha->pixels, (Bytes{3, 2, 1, 4}));

    const auto luminance = decodeTga(tgaBytes(2, 1, 8, {9, 200}));
    ASSERT_TRUE(luminance);
    EXPECT_EQ(luminance->components, 1);
    EXPECT_EQ(luminance->pixels, (Bytes{9, 200}));

    Bytes palette(768);
    for (std::size_t i = 0; i < palette.size(); ++i)
        palette[i] = static_cast<uint8_t>(i % 251);
    const auto indexed = decodeTga(tgaBytes(2, 1, 8, {1, 255}, palette));
    ASSERT_TRUE(indexed);
    EXPECT_EQ(indexed->components, 4);
    // The alpha of entry 1 is the blue of entry 2; nothing follows entry 255.
    EXPECT_EQ(indexed->pixels, (Bytes{5, 4, 3, 6, palette[767], palette[766], palette[765], 255}));
}

TEST(TgaTest, RefusesWhatItCannotRead) {
    std::string reason;
    const auto refused = [&reason](const Bytes& file) {
        reason.clear();
        return !decodeTga(file, &reason) && !reason.empty();
    };
    const Bytes good = tgaBytes(3, 2, 24, Bytes(18));
    ASSERT_FALSE(refused(good));
    // Of every length below the whole; the sanitizers watch for a read beyond.
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_TRUE(refused(Bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length))))
            << length;
    EXPECT_TRUE(refused(tgaBytes(1, 1, 8, {}, Bytes(500)))) << "palette cut short";
    EXPECT_TRUE(refused(tgaBytes(1, 1, 16, {0, 0})));
    EXPECT_TRUE(refused(tgaBytes(0, 1, 24, {})));
    EXPECT_TRUE(refused(tgaBytes(1, -1, 24, {0, 0, 0})));
    EXPECT_TRUE(refused(tgaBytes(32767, 32767, 32, {0, 0, 0, 0}))) << "allocates before it looks";
    Bytes runLength = good;
    runLength[2] = 10;
    EXPECT_TRUE(refused(runLength));
    Bytes named = good;
    named[0] = 3;
    EXPECT_TRUE(refused(named));
}

} // namespace

} // namespace Zelkor
