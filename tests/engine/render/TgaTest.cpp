#include "render/Tga.h"

#include "RenderTest.h"

namespace Zelkor {

namespace {

using Bytes = std::vector<uint8_t>;

TEST(TgaTest, RowsOfEveryDepthAndWidthKeepTheirPixels) {
    for (const int width : {1, 3, 4, 5, 8, 11})
        for (const int components : {1, 3, 4}) {
            Bytes data;
            for (int i = 0; i < 2 * components * width; ++i)
                data.push_back(static_cast<uint8_t>(i));
            Bytes expected(data); // the top row first, red before blue
            std::rotate(expected.begin(), expected.begin() + components * width, expected.end());
            if (components >= 3)
                for (std::size_t at = 0; at < expected.size(); at += static_cast<std::size_t>(components))
                    std::swap(expected[at], expected[at + 2]);
            const auto image = decodeTga(tgaBytes(width, 2, 8 * components, data));
            ASSERT_TRUE(image);
            EXPECT_EQ(image->components, components);
            EXPECT_EQ(image->pixels, expected) << width;
        }
    Bytes palette(768);
    for (std::size_t i = 0; i < palette.size(); ++i)
        palette[i] = static_cast<uint8_t>(i % 251);
    const auto indexed = decodeTga(tgaBytes(2, 1, 8, {1, 255}, palette));
    ASSERT_TRUE(indexed);
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
