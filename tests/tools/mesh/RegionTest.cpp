// Flat regions and what is sawn out of them, from shapes and from the letters of a font.
#include "font/FontFile.h"
#include "mesh/Region.h"
#include "tools/Workshop.h"

namespace forge {
namespace {

using Zelkor::Vec3;

const std::string klee = "/usr/share/fonts/truetype/klee/KleeOne-SemiBold.ttf";

Outline square(float x, float y, float half) {
    return {{x - half, y - half}, {x + half, y - half}, {x + half, y + half}, {x - half, y + half}};
}

float smallestTriangle(const Surface& surface) {
    float least = 1e9f;
    for (const Triangle& t : surface.triangles) {
        const auto at = [&](std::size_t k) { return surface.positions[static_cast<std::size_t>(t[k])]; };
        least = std::min(least, Zelkor::length(cross(at(1) - at(0), at(2) - at(0))) / 2);
    }
    return least;
}

TEST(Regions, areJoinedCutAndGrown) {
    const Region a({square(0, 0, 2)}), b({square(2, 0, 2)}), far({square(20, 0, 1)});
    const Region ring({square(0, 0, 3), square(0, 0, 1)}); // the inner one lies in two: a hole
    const struct {
        const char* name;
        Region region;
        double area;
        std::size_t outlines;
    } cases[] = {
        {"joined", a.joined(b), 24, 1},
        {"cut", a.without(b), 8, 1},
        {"kept", a.within(b), 8, 1},
        {"apart", a.joined(far), 20, 2},
        {"nothing", a.within(far), 0, 0},
        {"ring", ring, 32, 2},
        {"grown corners stay corners", a.grown(1), 36, 1},
        {"shrunk", a.grown(-1), 4, 1},
        {"shrunk away", a.grown(-3), 0, 0},
        {"a grown ring's hole shrinks", ring.grown(0.5f), 49 - 1, 2},
        {"a ring that closes", ring.grown(1), 64, 1},
        {"a bow tie", Region({{{0, 0}, {2, 2}, {2, 0}, {0, 2}}}), 2, 2},
    };
    for (const auto& each : cases) {
        EXPECT_NEAR(each.region.area(), each.area, 1e-3) << each.name;
        EXPECT_EQ(each.region.outlines().size(), each.outlines) << each.name;
        EXPECT_EQ(each.region.empty(), each.area == 0) << each.name;
        EXPECT_NEAR(areaOf(each.region.triangulated()), each.area, 1e-3) << each.name;
    }
}

TEST(Regions, lettersKeepTheirHolesAndAreSawnOutClosed) {
    FontFile font(klee);
    const struct {
        char letter;
        std::size_t outlines;
    } letters[] = {{'R', 2}, {'P', 2}, {'B', 3}, {'8', 3}, {'S', 1}, {'i', 2}, {'%', 5}};
    for (const auto& each : letters) {
        const Region region(textOutlines(font, std::string(1, each.letter), 10, 0));
        ASSERT_EQ(region.outlines().size(), each.outlines) << each.letter;
        for (const float bevel : {0.0f, 0.1f, 0.3f, 2.0f}) { // the last is wider than any stroke
            const Surface surface = cutoutSurface(region, 3, bevel);
            EXPECT_TRUE(isClosed(surface)) << each.letter << " " << bevel;
            EXPECT_GT(smallestTriangle(surface), 1e-7f) << each.letter << " " << bevel;
            if (bevel == 0) {
                EXPECT_NEAR(volumeOf(surface), 3 * region.area(), 0.02) << each.letter;
            }
            EXPECT_LT(volumeOf(surface), 3 * region.area() + 0.02) << each.letter;
            EXPECT_GT(volumeOf(surface), (3 - 2.7) * region.area()) << each.letter << " " << bevel;
        }
    }
    // A line of text: capitals as high as asked, centred, wider by its spaces.
    const auto box = [&](const std::string& text, float spacing) {
        Box result;
        for (const Outline& outline : textOutlines(font, text, 7, spacing))
            for (const auto& p : outline)
                result.add(Vec3{p.x, p.y, 0});
        return result;
    };
    const Box narrow = box("HH", 0), wide = box("H_H", 1);
    EXPECT_TRUE(near({narrow.lo.x + narrow.hi.x, narrow.lo.y, narrow.hi.y}, {0, 0, 7}, 0.4f));
    EXPECT_GT(wide.size().x, narrow.size().x + 3);
}

class Cutouts : public Workshop {
  protected:
    std::string in(const std::string& words) { return "solid a m { cutout depth=2 { " + words + " } }"; }
};

TEST_F(Cutouts, areDrawnPlacedAndRefusedAtTheirPlace) {
    const std::string letters = "letters H height=4 file=" + klee;
    const struct {
        std::string source;
        double volume;
    } cases[] = {
        {in("shape [0,0 4,0 4,4 0,4]"), 32},
        {in("disc 2 sides=4\n cut disc 1 sides=4"), 12},
        {in("shape [0,0 4,0 4,4 0,4]\n keep { move 2,0,0 { shape [0,0 4,0 4,2 0,2] } }"), 8},
        {in("repeat 2 { move i*10,0,0 { scale 2,1,1 { shape [0,0 1,0 1,1 0,1] } } }"), 8},
        {in("stroke [0,0,2 4,0,2 4,4,2]"), 2 * (16 - 1 + 0.785)},
        {in("stroke path=[-3,-3 3,3 -3,3 3,-3] width=.2"), 2 * 0.2 * (6 + 2 * 8.485)},
        {"solid a m { cutout depth=2 grow=-1 { shape [0,0 4,0 4,4 0,4] } }", 8},
        {"solid a m { cutout depth=2 band=1 { shape [0,0 4,0 4,4 0,4] } }", 24},
        {"define tall h={4} kind=m { solid {kind}1 {kind} { cutout depth=1 { shape [0,0 1,0 1,h 0,h] } } }\n"
         "use tall kind=oak h=6",
         6},
    };
    for (const auto& each : cases) {
        const MeshRecord mesh = finishMesh(model(each.source));
        EXPECT_TRUE(isClosed(surfaceOf(mesh))) << each.source;
        EXPECT_NEAR(volumeOf(surfaceOf(mesh)), each.volume, 0.06 * each.volume) << each.source;
        EXPECT_EQ(mesh.submeshes[0].material, each.source.starts_with("define") ? "oak" : "m");
    }
    EXPECT_GT(finishMesh(model(in(letters))).positions.size(), 20u);
    EXPECT_EQ(refusal(in("cut disc 1")), "1:30: there is nothing yet to cut or keep");
    EXPECT_EQ(refusal(in("disc 1\n cut disc 2")), "1:13: nothing is left of this cutout");
    EXPECT_EQ(refusal(in("disc 1\n cut")), "2:2: cut SHAPE ... or cut { ... }");
    EXPECT_EQ(refusal(in("letters H height=4 file=no/such.ttf")), "1:54: cannot find no/such.ttf");
    EXPECT_EQ(refusal(in("letters H height=4 file=" + path("thing.model"))),
              "1:54: cannot read the outlines of " + path("thing.model"));
    EXPECT_EQ(refusal(in("letters \x86 height=4 file=" + klee)), "1:54: the outlines lack '\x86'");
    EXPECT_TRUE(refusal(in("sphere 1")).starts_with("1:30: 'sphere' means nothing here; known: shape disc"));
}

} // namespace
} // namespace forge
