// What the texture generators promise, measured on their pixels.
#include "texture/Hatch.h"
#include "texture/TextureReader.h"
#include "tools/Workshop.h"

#include <cmath>
#include <cstdlib>

namespace forge {
namespace {

class Textures : public Workshop {
  protected:
    Image draw(const std::string& text) { return readTexture(write("t.texture", text)).image; }
    std::string fault(const std::string& text) {
        const std::string what = faultOf([&] { draw(text); });
        return what.empty() ? what : what.substr(folder.size() + 1);
    }

    static double meanStep(const Image& image, bool columns, int from) {
        double sum = 0;
        for (int i = 0; i < image.width; ++i) {
            const int next = (from + 1) % image.width;
            sum += columns ? std::abs(image.at(from, i) - image.at(next, i))
                           : std::abs(image.at(i, from) - image.at(i, next));
        }
        return sum / image.width;
    }
    // The step over the seam against the steps within.
    static void expectSeamless(const Image& image, const std::string& name) {
        for (const bool columns : {true, false}) {
            double within = 0, largest = 0;
            for (int i = 0; i + 1 < image.width; ++i) {
                const double step = meanStep(image, columns, i);
                within += step / (image.width - 1);
                largest = std::max(largest, step);
            }
            const double seam = meanStep(image, columns, image.width - 1);
            EXPECT_LE(seam, std::max(largest, 2 * within) + 0.5) << name << (columns ? " columns" : " rows");
        }
    }
    static double mean(const Image& image) {
        double sum = 0;
        for (const std::uint8_t texel : image.pixels)
            sum += texel;
        return sum / 255 / static_cast<double>(image.pixels.size());
    }
};

TEST_F(Textures, hatchedTonesComeOutAsLightAsTheyWentIn) {
    const Image hatch = draw("hatch size=256 seed=3");
    for (const float tone : {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f, 0.7f, 0.8f, 0.9f}) {
        EXPECT_NEAR(1 - hatchCoverage(hatch, tone, 0.07f), tone, 0.012f);
        EXPECT_NEAR(1 - hatchCoverage(hatch, tone, 0.01f), tone, 0.012f);
    }
}

TEST_F(Textures, hatchingIsStrokesInOneDirectionThenAcross) {
    // Of two texels a stroke's length of 8 apart, both inked or both not: more often along a stroke than
    // across.
    const auto alike = [](const Image& hatch, float tone, float degrees) {
        const float c = std::cos(degrees * Zelkor::pi / 180), s = std::sin(degrees * Zelkor::pi / 180);
        const int dx = static_cast<int>(std::lround(8 * c)), dy = static_cast<int>(std::lround(8 * s)),
                  n = hatch.width;
        int same = 0;
        for (int y = 0; y < n; ++y)
            for (int x = 0; x < n; ++x)
                same += (static_cast<float>(hatch.at(x, y)) > tone * 255) ==
                        (static_cast<float>(hatch.at((x + dx + n) % n, (y + dy + n) % n)) > tone * 255);
        return static_cast<double>(same) / (n * n);
    };
    const Image hatch = draw("hatch size=256 angle=38 cross=.5 crossAngle=70");
    EXPECT_GT(alike(hatch, 0.75f, 38), alike(hatch, 0.75f, 128) + 0.1);
    EXPECT_GT(alike(hatch, 0.75f, 38), alike(hatch, 0.75f, -32) + 0.1);
    // Crossed strokes raise the likeness along the second direction in the dark against an uncrossed hatch.
    const Image plain = draw("hatch size=256 angle=38 cross=0");
    EXPECT_GT(alike(hatch, 0.2f, -32), alike(plain, 0.2f, -32) + 0.02);
}

TEST_F(Textures, paperHasEveryHeightEquallyOften) {
    const Image paper = draw("paper size=128");
    int counts[8] = {};
    for (const std::uint8_t texel : paper.pixels)
        ++counts[texel / 32];
    for (const int count : counts)
        EXPECT_NEAR(count, 128 * 128 / 8, 140);
}

TEST_F(Textures, everythingWrapsIsSteadyAndHasItsInk) {
    const char* sources[] = {"hatch size=128 length=30,60",
                             "paper size=128",
                             "wood size=128",
                             "rock size=128",
                             "brick size=128",
                             "foliage size=128",
                             "wash size=128"};
    for (const std::string source : sources) {
        const Image image = draw(source);
        EXPECT_EQ(image.width, 128);
        expectSeamless(image, source);
        EXPECT_EQ(image.pixels, draw(source).pixels) << source;
        EXPECT_NE(image.pixels, draw(source + " seed=9").pixels) << source;
        EXPECT_GT(mean(image), 0.45) << source;
        EXPECT_LT(mean(image), 0.985) << source;
    }
}

TEST_F(Textures, spritesArePaperAndInkOnNothing) {
    const std::string paper = "sprite size=64 { shape points=[-.5,-.5 .5,-.5 .5,.5 -.5,.5] ";
    const Image plain = draw(paper + "}"), lined = draw(paper + "width=.1\n hatch r=.9 }");
    ASSERT_EQ(plain.channels, 4);
    int paperTexels = 0, strayInk = 0, hatched = 0;
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) {
            paperTexels += plain.at(x, y, 3) == 255 && plain.at(x, y) == 255;
            strayInk += lined.at(x, y, 3) > 0 && (x < 11 || x > 52 || y < 11 || y > 52);
            hatched += lined.at(x, y) < 200 && x > 20 && x < 44 && y > 20 && y < 44;
        }
    EXPECT_EQ(paperTexels, 32 * 32);
    EXPECT_EQ(strayInk, 0) << "hatching stays on the shape";
    EXPECT_GT(hatched, 60);
    EXPECT_GT(draw("sprite size=64 { line path=[0,.4 0,.9] width=.2 }").at(32, 10, 3), 100) << "y runs upwards";
    EXPECT_EQ(fault("sprite { puff lobes=2 }"), "t.texture:1:21: lobes is 3 to 400");
}

TEST_F(Textures, sheetsHaveUnitsColoursWashesAndLetters) {
    const std::string sheet = "sprite size=80,40 wide=20 { shape points=[0,0 10,0 10,10 0,10] tint=1,.8,.4\n";
    const auto texel = [](const Image& image, int x, int y) {
        return std::vector<int>{image.at(x, y, 0), image.at(x, y, 1), image.at(x, y, 2), image.at(x, y, 3)};
    };
    const Image plain = draw(sheet + "}"), washed = draw(sheet + "wash points=[0,0 20,0 20,5 0,5] tint=.5,.5,1 }"),
                hatched = draw(sheet + "hatch points=[2,2 6,2 6,6 2,6] gap=.4 width=.2 ink=.9 }"),
                moved = draw("sprite size=80,40 wide=20 { move 10,0,0 { line path=[2,5 8,5] width=2 colour=1,0,0 } }"),
                written = draw(sheet + "letters I height=6 at=5,2 file=/usr/share/fonts/truetype/klee/"
                                       "KleeOne-SemiBold.ttf }");
    ASSERT_EQ(plain.width, 80);
    ASSERT_EQ(plain.height, 40);
    EXPECT_EQ(texel(plain, 20, 20), (std::vector<int>{255, 204, 102, 255}));
    EXPECT_EQ(texel(plain, 60, 20)[3], 0) << "the sheet runs from 0 to 20";
    EXPECT_EQ(texel(washed, 20, 10), texel(plain, 20, 10));
    EXPECT_LT(texel(washed, 20, 30)[0], 180) << "washed below, where y is small";
    EXPECT_EQ(texel(washed, 20, 30)[2], 102) << "in the wash's own colour";
    EXPECT_EQ(texel(washed, 60, 30)[3], 0) << "a wash needs paper";
    int beside = 0, within = 0;
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 40; ++x)
            (x >= 8 && x < 24 && y >= 16 && y < 32 ? within : beside) += hatched.at(x, y) < 200;
    EXPECT_EQ(beside, 0);
    EXPECT_GT(within, 40);
    EXPECT_GT(texel(moved, 60, 20)[0], 200);
    EXPECT_LT(texel(moved, 60, 20)[1], 20);
    EXPECT_EQ(texel(moved, 20, 20)[3], 0);
    EXPECT_LT(texel(written, 20, 20)[0], 60) << "the stem of the letter";
    EXPECT_EQ(texel(written, 8, 20), texel(plain, 8, 20));
    EXPECT_EQ(fault("sprite size=80,40 { }"), "t.texture:1:13: a picture that is not square says wide=");
    EXPECT_EQ(fault("sprite size=8.5 { }"), "t.texture:1:13: a size is 8 to 2048");
}

TEST_F(Textures, faultsAreToldAtTheirPlace) {
    EXPECT_EQ(fault("# nothing"), "t.texture:1:1: the texture has no generator");
    EXPECT_EQ(fault("paper\nwood"), "t.texture:2:1: a texture has one generator");
    EXPECT_EQ(fault("hatch size=4"), "t.texture:1:12: size is 8 to 2048");
    EXPECT_EQ(fault("hatch length=90,10"), "t.texture:1:14: length is least,most; from 4 texels");
}

} // namespace
} // namespace forge
