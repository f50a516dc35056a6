#include "picture/Sheet.h"
#include "tools/Workshop.h"
#include "write/OutputFile.h"

namespace forge {
namespace {

using Zelkor::Vec3;

class Pictures : public Workshop {
  protected:
    static int dark(const Canvas& canvas, int x0, int x1) {
        int count = 0;
        for (int y = 0; y < canvas.height; ++y)
            for (int x = x0; x < x1; ++x)
                count += canvas.rgb[static_cast<std::size_t>((y * canvas.width + x) * 3)] < 128;
        return count;
    }
    const std::string arm = "rig { joint root 0,0,0 { joint tip 0,4,0 tail=0,8,0 } }\n"
                            "solid low m bone=root { box size=2,4,2 at=0,2,0 }\n"
                            "solid high m bone=tip { box size=2,4,2 at=0,6,0 }\n"
                            "solid hidden collision bone=root { box size=30,1,1 }\n"
                            "clip lean 1 { key 0 { tip 0 }\n key 1 ease=linear { tip -90 } }";
};

TEST_F(Pictures, silhouettesCoverWhatTheShapeCovers) {
    const LoadedUnit unit = loadUnit(write("arm.model", arm));
    View filled;
    filled.silhouette = true;
    const Canvas canvas = drawMesh(unit.mesh, restPose(unit.mesh), filled, {0, 4, 0}, 10, 200, 100);
    EXPECT_NEAR(dark(canvas, 0, 200), 20 * 80, 140)
        << "2 by 8 units at 10 pixels each; collision is not drawn";
    EXPECT_EQ(dark(canvas, 0, 85), 0);
}

TEST_F(Pictures, clipsMoveTheVerticesTheirJointsCarry) {
    const LoadedUnit unit = loadUnit(write("arm.model", arm));
    const Posed bent = posedAt(unit.mesh, unit.skeleton, "lean", 1),
                half = posedAt(unit.mesh, unit.skeleton, "lean", 0.5f);
    for (std::size_t v = 0; v < unit.mesh.positions.size(); ++v) {
        const Vec3 p = unit.mesh.positions[v];
        const int joint = unit.mesh.influences[v].second;
        // A quarter turn clockwise about (0, 4): what stood above now lies to the right.
        const Vec3 expected = joint == 0 ? p : Vec3{p.y - 4, 4 - p.x, p.z};
        EXPECT_TRUE(near(bent.positions[v], expected, 1e-3f));
        const float share = 0.70711f;
        const Vec3 halfway = joint == 0 ? p : Vec3{(p.x + p.y - 4) * share, 4 + (p.y - 4 - p.x) * share, p.z};
        EXPECT_TRUE(near(half.positions[v], halfway, 0.02f));
    }
    EXPECT_THROW(posedAt(unit.mesh, unit.skeleton, "none", 0), std::runtime_error);
}

TEST_F(Pictures, unitsAreFoundBesideTheirSkeletonAndDescribed) {
    Model m = model(arm);
    m.unitFolder = "people/small";
    writeFile(path("out/thing.mesh"), encodeMesh(finishMesh(m)));
    writeFile(path("out/thing.skel"), encodeSkeleton(finishSkeleton(m)));
    const LoadedUnit unit = loadUnit(path("out/thing.mesh"));
    EXPECT_EQ(unit.mesh.skeletonFile, "people/small/thing.skel");
    const std::string text = describeUnit(unit);
    for (const char* part : {"36 triangles", "material m: 24 triangles", "material collision: 12",
                             "joint 1 root|tip", "clip lean: 1.000 s, 1 joints move"})
        EXPECT_NE(text.find(part), std::string::npos) << part << " in\n" << text;
    PictureOptions options;
    options.size = 120;
    options.sheet = true;
    options.moments = 3;
    const Canvas sheet = drawPicture(unit, options);
    EXPECT_EQ(sheet.width, 300);
    EXPECT_GT(dark(sheet, 0, 100), 50) << "something is drawn at each moment";
    EXPECT_NE(dark(sheet, 0, 100), dark(sheet, 200, 300));
}

} // namespace
} // namespace forge
