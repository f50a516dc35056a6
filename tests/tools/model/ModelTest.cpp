// Whole models, from their text to the records that are written.
#include "model/Finish.h"
#include "tools/Workshop.h"
#include "write/OutputFile.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace forge {
namespace {

using Zelkor::Vec2;
using Zelkor::Vec3;

const std::string rig = R"(rig { joint hips 0,6,0 { joint chest 0,8,0 tail=0,10,0
    mirror z { joint arm.r 0,10,1.5 { joint elbow.r 0,8,2 tail=0,6,2 } } } }
)";

class Models : public Workshop {
  protected:
    MeshRecord mesh(const std::string& text) { return finishMesh(model(text)); }

    // Weight of a joint on each vertex.
    static std::map<int, float> weightsOf(const MeshRecord& mesh, int joint) {
        std::map<int, float> result;
        for (std::size_t i = 0; i < mesh.influences.size(); ++i)
            if (mesh.influences[i].second == joint) result[mesh.influences[i].first] += mesh.weights[i];
        return result;
    }
};

TEST_F(Models, budgetsAreSharedAndOwnNumbersKept) {
    const std::string parts = "part a m1 { sphere 0,0,0 r=3 }\npart b m2 { capsule 5,0,0 9,0,0 r=1 }\n"
                              "part c m3 triangles=40 { box 0,6,0 size=2,2,2 round=.3 }\n";
    for (const int budget : {300, 900, 1800}) {
        const MeshRecord record = mesh("triangles " + std::to_string(budget) + "\n" + parts);
        const auto count = [&](std::size_t i) {
            return static_cast<int>(record.submeshes[i].triangles.size());
        };
        EXPECT_LE(count(0) + count(1), budget);
        EXPECT_GT(count(0) + count(1), budget * 9 / 10);
        EXPECT_GT(count(0), count(1)) << "the larger part gets more";
        EXPECT_LE(count(2), 40);
        EXPECT_GE(count(2), 30);
    }
}

TEST_F(Models, weightsSumToOneGroupedByVertexWithinTheirNumber) {
    for (const int influences : {1, 2, 4}) {
        const MeshRecord record =
            mesh(rig + "part all m bone=hips,chest soft=3 influences=" + std::to_string(influences) + R"( {
            capsule 0,6,0 0,10,0 r=1.5
            capsule 0,10,0 0,10,1.5 r=1 bone=chest,arm.r
            capsule 0,10,1.5 0,8,2 r=.8 bone=arm.r
            capsule 0,8,2 0,6,2 r=.6 bone=elbow.r })");
        ASSERT_EQ(record.weights.size(), record.influences.size());
        std::map<int, float> sums;
        std::map<int, int> counts;
        int before = -1;
        for (std::size_t i = 0; i < record.influences.size(); ++i) {
            const int vertex = record.influences[i].first;
            EXPECT_TRUE(vertex == before || sums.count(vertex) == 0)
                << "influences of one vertex stand together";
            before = vertex;
            sums[vertex] += record.weights[i];
            ++counts[vertex];
            EXPECT_GT(record.weights[i], 0.01f);
        }
        EXPECT_EQ(sums.size(), record.positions.size()) << "every vertex hangs on something";
        int most = 0;
        for (const auto& [vertex, sum] : sums) {
            EXPECT_NEAR(sum, 1, 1e-5f);
            most = std::max(most, counts[vertex]);
        }
        EXPECT_EQ(most, std::min(influences, 4));
    }
}

TEST_F(Models, bonesFadeIntoEachOtherAcrossTheSoftReach) {
    const auto record =
        mesh(rig + "facing z\npart arm.r m bone=arm.r soft=1.2 { capsule 0,10,1.5 0,8,2 r=.6\n"
                   "capsule 0,8,2 0,6,2 r=.5 bone=elbow.r }");
    const std::map<int, float> lower = weightsOf(record, 3);
    ASSERT_EQ(record.skeletonFile, "thing.skel");
    for (std::size_t v = 0; v < record.positions.size(); ++v) {
        const auto found = lower.find(static_cast<int>(v));
        const float weight = found == lower.end() ? 0 : found->second, y = record.positions[v].y;
        if (y > 9.6f) {
            EXPECT_EQ(weight, 0);
        } else if (y < 6.4f) {
            EXPECT_EQ(weight, 1);
        } else if (std::fabs(y - 8) < 0.15f) {
            EXPECT_NEAR(weight, 0.5f, 0.35f);
        }
    }
}

TEST_F(Models, mirroredPartsHangOnTheOtherSide) {
    const MeshRecord record = mesh(rig + "mirror z { part arm.r m bone=arm.r { sphere 0,9,2 r=.7 } }");
    for (const auto& [vertex, weight] : weightsOf(record, 2))
        EXPECT_GT(record.positions[static_cast<std::size_t>(vertex)].z, 0);
    const std::map<int, float> left = weightsOf(record, 4);
    EXPECT_FALSE(left.empty());
    for (const auto& [vertex, weight] : left)
        EXPECT_LT(record.positions[static_cast<std::size_t>(vertex)].z, 0);
    EXPECT_TRUE(isClosed(surfaceOf(record)));
    EXPECT_GT(volumeOf(surfaceOf(record)), 0);
}

TEST_F(Models, hardEdgesSplitNormalsAndColoursJoinTheHull) {
    const MeshRecord record = mesh("solid a m { box size=4,4,4 }");
    EXPECT_EQ(record.positions.size(), 24u);
    ASSERT_EQ(record.colours.size(), 24u);
    for (std::size_t v = 0; v < 24; ++v) {
        const Vec3& n = record.normals[v];
        EXPECT_NEAR(std::fabs(n.x) + std::fabs(n.y) + std::fabs(n.z), 1, 1e-5f)
            << "one of the six directions";
        // The hull's direction is the corner's own, the same on all three faces.
        const auto unpacked = [&](std::size_t c) {
            return static_cast<float>(record.colours[v][c]) / 127.5f - 1;
        };
        const Vec3 hull{unpacked(0), unpacked(1), unpacked(2)},
            corner = record.positions[v] * (1 / std::sqrt(12.0f));
        EXPECT_TRUE(near(hull, corner, 0.02f));
    }
    const MeshRecord round = mesh("solid a m smooth=80 { cylinder r=2 height=4 sides=12 }");
    for (std::size_t v = 0; v < round.positions.size(); ++v) {
        const Vec3 p = round.positions[v], n = round.normals[v];
        if (std::fabs(n.y) < 0.5f) {
            EXPECT_TRUE(near(n, {p.x / 2, 0, p.z / 2}, 0.01f)) << "the side is smooth";
        }
    }
}

TEST_F(Models, fieldNormalsFollowTheSurface) {
    const MeshRecord record = mesh("triangles 400\npart a m { sphere 1,2,3 r=2 }");
    for (std::size_t v = 0; v < record.positions.size(); ++v)
        EXPECT_TRUE(near(record.normals[v], (record.positions[v] - Vec3{1, 2, 3}) * 0.5f, 0.03f));
}

TEST_F(Models, textureCoordinatesAreWorldUnitsAndFollowTheirMap) {
    const auto uvs = [&](const std::string& options) {
        const MeshRecord record =
            mesh("solid a m " + options + " { move 10,0,0 { turn 90 { box size=6,2,4 } } }");
        // The longest edge of any front face, in texture coordinates.
        Vec3 longest;
        for (const auto& t : record.submeshes[0].triangles)
            for (std::size_t k = 0; k < 3; ++k) {
                const auto a = static_cast<std::size_t>(t[k]), b = static_cast<std::size_t>(t[(k + 1) % 3]);
                if (record.normals[a].z < 0.9f) continue;
                const Vec2 p = record.texCoords[0][a], q = record.texCoords[0][b];
                longest.x = std::max(longest.x, std::fabs(p.x - q.x));
                longest.y = std::max(longest.y, std::fabs(p.y - q.y));
            }
        return longest;
    };
    EXPECT_TRUE(near(uvs("map=front"), {2, 6, 0}, 1e-4f));
    EXPECT_TRUE(
        near(uvs("map=local"), {6, 2, 0}, 1e-4f)); // the grain lies along the board, however it stands
    EXPECT_TRUE(near(uvs("map=box uvscale=2"), {4, 12, 0}, 1e-4f));
    EXPECT_TRUE(near(uvs("map=front uvturn=90"), {6, 2, 0}, 1e-4f));
    const MeshRecord record = mesh("texture 68\nsolid a m uv=.5,0 { plane size=34,68 }");
    for (std::size_t v = 0; v < 4; ++v) {
        EXPECT_NEAR(record.texCoords[0][v].x, 0.5f + record.positions[v].x / 68, 1e-5f);
        EXPECT_NEAR(record.texCoords[0][v].y, -record.positions[v].y / 68, 1e-5f) << "v runs downwards";
    }
}

TEST_F(Models, materialsMakeSubmeshesAndFacingTurns) {
    const MeshRecord record =
        mesh("facing x\nbounds 1\nsolid a wood { box size=2,2,2 at=5,0,0 }\n"
             "solid b collision { box size=8,8,8 at=0,0,3 }\nsolid c wood { box size=1,1,1 at=5,4,0 }");
    ASSERT_EQ(record.submeshes.size(), 2u);
    EXPECT_EQ(record.submeshes[0].material, "wood");
    EXPECT_EQ(record.submeshes[1].material, "collision");
    EXPECT_EQ(record.submeshes[0].triangles.size(), 24u);
    // +x, where the author looks, is +z in the game; his +z, the right hand, is -x.
    const Surface box = surfaceOf(record, "collision");
    Box reached;
    for (const Triangle& t : box.triangles)
        for (const int i : t)
            reached.add(box.positions[static_cast<std::size_t>(i)]);
    EXPECT_TRUE(near(reached.lo, {-7, -4, -4}, 1e-4f));
    EXPECT_TRUE(near(record.boxMax, {2, 5.5f, 7}, 1e-4f));
    EXPECT_TRUE(near(record.boxMin, {-8, -5, -5}, 1e-4f));
}

TEST_F(Models, jointsStandAndAreNamedByTheirAncestors) {
    const Model m =
        model("facing x\nrig { joint neck 1,9,0 called=rig_JT_DRV_neck_Base1 {\n"
              "mirror z { joint collar.r 1,9,.5 called=rig_JT_DRV_R_Clavicle { joint arm.r 1,8.5,2 "
              "called=rig_JT_DRV_R_Shoulder axes=0,0,90 } } } joint other 0,0,0 path=x|y }\n"
              "part p m bone=neck { sphere 1,9,0 r=1 }");
    const SkeletonRecord skeleton = finishSkeleton(m);
    EXPECT_EQ(skeleton.joints[2].path, "rig_JT_DRV_neck_Base1|rig_JT_DRV_R_Clavicle|rig_JT_DRV_R_Shoulder");
    EXPECT_EQ(skeleton.joints[4].path, "rig_JT_DRV_neck_Base1|rig_JT_DRV_L_Clavicle|rig_JT_DRV_L_Shoulder");
    EXPECT_EQ(skeleton.joints[5].path, "x|y");
    // Places in the game's space, parents first.
    std::vector<Zelkor::Mat4> world;
    for (std::size_t j = 0; j < skeleton.joints.size(); ++j) {
        const SkeletonRecord::Joint& joint = skeleton.joints[j];
        Zelkor::Mat4 local, all;
        Zelkor::mat4FromTransform(local, joint.rotation, {1, 1, 1}, joint.position);
        ASSERT_LT(joint.parent, static_cast<int>(j));
        all = joint.parent < 0
                  ? local
                  : Zelkor::mat4Multiply(all, world[static_cast<std::size_t>(joint.parent)], local);
        world.push_back(all);
        const Vec3 p = m.rig.joints[j].position;
        EXPECT_TRUE(near({all.m[3], all.m[7], all.m[11]}, {-p.z, p.y, p.x}, 1e-4f)) << joint.path;
    }
    // `axes` turns the written frame only: the arm's own x points up.
    EXPECT_TRUE(near(mat4TransformDirection(world[2], {1, 0, 0}), {0, 1, 0}, 1e-4f));
}

TEST_F(Models, theSameSourceGivesTheSameBytes) {
    const std::string source = rig + R"(let seed = 4
        part body m bone=chest blend=.4 { ellipsoid 0,8,0 r=1.5,2,1
                                          wobble .2 1 { capsule 0,6,0 0,10,0 r=1 } }
        solid bits n bone=hips { row 4 2,0,0 jitter=.3,.3,0 { rock size=2,1,1 }
                                 plank size=5,1,.5 bevel=.1 }
        clip nod 1 loop { sway chest 20 })";
    const Model once = model(source), again = model(source);
    EXPECT_EQ(encodeMesh(finishMesh(once)), encodeMesh(finishMesh(again)));
    EXPECT_EQ(encodeSkeleton(finishSkeleton(once)), encodeSkeleton(finishSkeleton(again)));
    const Model other = model("let seed = 5\n" + source.substr(0, source.find("let seed")) +
                              source.substr(source.find("part")));
    EXPECT_NE(encodeMesh(finishMesh(once)), encodeMesh(finishMesh(other)));
}

TEST_F(Models, faultsAreToldAtTheirPlace) {
    EXPECT_EQ(refusal("part a m {\n  sphere 0,0,0 r=0\n}"), "2:18: radii are above 0");
    EXPECT_EQ(refusal("part a m { cut sphere 0,0,0 r=1 }"), "1:16: there is nothing yet to cut or keep");
    EXPECT_EQ(refusal("part a m { }"), "1:1: part a has no shape");
    EXPECT_EQ(refusal("solid a m { box size=1,0,1 }"), "1:22: size is above 0 on every axis");
    EXPECT_EQ(refusal("solid a m { prism points=[0,0 2,2 2,0 0,2] depth=1 }"),
              "1:26: this outline crosses itself");
    EXPECT_EQ(refusal("solid a m { prism points=[0,0 2,2 2] depth=1 }"),
              "1:26: point 3 of points is not x,y");
    EXPECT_EQ(refusal("let w = 3\n"), "1:1: the model has no part and no solid");
    EXPECT_EQ(refusal(rig + "part a m { sphere 0,0,0 r=1 }"),
              "3:1: part a needs bone=, for the model has a rig");
    EXPECT_EQ(refusal(rig + "part a m bone=nose { sphere 0,0,0 r=1 }"), "3:15: the rig has no joint 'nose'");
    EXPECT_EQ(refusal("rig { joint a 0,0,0 { joint a 0,1,0 } }"), "1:29: there is a joint 'a' already");
    // A part that cuts itself away.
    EXPECT_EQ(refusal("part a m { sphere 0,0,0 r=1\n cut box 0,0,0 size=4,4,4 }"),
              "1:1: part a has no surface");
}

} // namespace
} // namespace forge
