#include "resources/Mesh.h"

#include "engine/resources/MeshBytes.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace Zelkor;

TEST(MeshReader, ReadsEveryField) {
    std::string reason;
    const auto mesh = readMesh(wholeMesh().bytes, &reason);
    ASSERT_TRUE(mesh) << reason;
    EXPECT_EQ(mesh->skeletonFile, "figure.skel");
    EXPECT_EQ(mesh->boxMax, (Vec3{4, 5, 6})); // the maximum comes first
    EXPECT_EQ(mesh->boxMin, (Vec3{-2, -3, -4}));
    const VertexData& vertices = mesh->vertices;
    ASSERT_EQ(vertices.positions.size(), 3u);
    EXPECT_EQ(vertices.positions[2], (Vec3{0, 1, 0}));
    EXPECT_EQ(vertices.normals[1], (Vec3{0, 1, 0}));
    EXPECT_EQ(vertices.colours[2], (std::array<uint8_t, 3>{70, 80, 90}));
    EXPECT_EQ(vertices.texCoordSetCount, 2);
    ASSERT_EQ(vertices.texCoords.size(), 6u);
    EXPECT_EQ(vertices.texCoords[3].x, 6 / 8.0f); // set 1, vertex 0
    ASSERT_EQ(vertices.influences.size(), 4u);
    EXPECT_EQ(vertices.influences[2].vertex, 1);
    EXPECT_EQ(vertices.influences[2].joint, 1);
    EXPECT_EQ(vertices.influences[2].weight, 0.5f);
    ASSERT_EQ(mesh->submeshes.size(), 2u);
    EXPECT_EQ(mesh->submeshes[0].materialName, "skin");
    EXPECT_EQ(mesh->submeshes[0].indices, (std::vector<int32_t>{0, 1, 2}));
    EXPECT_TRUE(mesh->submeshes[1].isCollision());
    EXPECT_EQ(mesh->submeshes[1].triangleCount(), 1);
}

TEST(MeshReader, AbsentPartsTakeNoBytes) {
    // No vertices: straight on to the influences, whose vertices are not there.
    const auto none = readMesh(
        MeshBytes().meshHead("", 1).i32(0).i32(1).i32(0).i32(0).f32(1).string("m").i32(0).bytes, nullptr);
    ASSERT_TRUE(none);
    EXPECT_EQ(none->submeshes.size(), 1u);
    EXPECT_TRUE(none->vertices.influences.empty());
    // No normals and no colours: the number of texture coordinate sets follows the two flags.
    const auto bare = readMesh(MeshBytes()
                                   .meshHead("", 1)
                                   .i32(1)
                                   .vec(1, 2, 3)
                                   .u8(0)
                                   .u8(0)
                                   .u8(1)
                                   .f32(0.5f)
                                   .f32(0.25f)
                                   .i32(0)
                                   .string("m")
                                   .i32(0)
                                   .bytes);
    ASSERT_TRUE(bare);
    EXPECT_TRUE(bare->vertices.normals.empty());
    EXPECT_TRUE(bare->vertices.colours.empty());
    EXPECT_EQ(bare->vertices.texCoords.at(0).y, 0.25f);
    // No submeshes: no vertex block.
    EXPECT_TRUE(readMesh(MeshBytes().meshHead("", 0).bytes));
}

TEST(MeshReader, CutFilesAreRefusedAtEveryByte) {
    const auto mesh = wholeMesh().bytes, skeleton = wholeSkeleton().bytes;
    for (std::size_t length = 0; length < mesh.size(); ++length) {
        std::string reason;
        // A copy of its own length, so that reading past it is seen.
        const std::vector<uint8_t> cut(mesh.begin(), mesh.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_FALSE(readMesh(cut, &reason)) << length;
        EXPECT_FALSE(reason.empty());
    }
    for (std::size_t length = 0; length < skeleton.size(); ++length) {
        const std::vector<uint8_t> cut(skeleton.begin(),
                                       skeleton.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_FALSE(readSkeleton(cut)) << length;
    }
}

// Any four bytes may hold a count, a length or an index: none of these values may crash, hang or allocate
// more than the file could fill.
TEST(MeshReader, HostileNumbersAnywhereDoNoHarm) {
    for (const bool isMesh : {true, false}) {
        const auto whole = isMesh ? wholeMesh().bytes : wholeSkeleton().bytes;
        for (std::size_t at = 0; at + 4 <= whole.size(); ++at)
            for (const int32_t hostile : {-1, 3, 0x7FFFFFFF, INT32_MIN, 0x10000000}) {
                auto bytes = whole;
                std::memcpy(bytes.data() + at, &hostile, sizeof hostile);
                if (!isMesh) {
                    readSkeleton(bytes);
                } else if (const auto mesh = readMesh(bytes)) {
                    for (const Submesh& submesh : mesh->submeshes)
                        for (const int32_t index : submesh.indices) {
                            ASSERT_GE(index, 0);
                            ASSERT_LT(static_cast<std::size_t>(index), mesh->vertices.positions.size());
                        }
                }
            }
    }
}

TEST(MeshReader, NumbersThatAreNotFiniteAreRefused) {
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), -std::numeric_limits<float>::infinity()}) {
        MeshBytes file;
        file.meshHead("", 1).i32(1).vec(1, bad, 3).u8(0).u8(0).u8(0).i32(0).string("m").i32(0);
        std::string reason;
        EXPECT_FALSE(readMesh(file.bytes, &reason));
        EXPECT_NE(reason.find("positions"), std::string::npos) << reason;
    }
}

TEST(SkeletonReader, ReadsJointsAndClips) {
    std::string reason;
    const auto skeleton = readSkeleton(wholeSkeleton().bytes, &reason);
    ASSERT_TRUE(skeleton) << reason;
    ASSERT_EQ(skeleton->jointCount(), 2);
    EXPECT_EQ(skeleton->bindPose[1].position, (Vec3{0, 2, 0}));
    EXPECT_EQ(skeleton->bindPose[1].rotation, Quat{});
    EXPECT_EQ(skeleton->parents, (std::vector<int32_t>{-1, 0}));
    EXPECT_EQ(skeleton->jointNames[1], "root|head");
    ASSERT_EQ(skeleton->clips.size(), 1u);
    const AnimationClip& clip = skeleton->clips[0];
    EXPECT_EQ(clip.name, "nod");
    EXPECT_EQ(clip.duration(), 1);
    ASSERT_EQ(clip.tracks.size(), 2u);
    EXPECT_TRUE(clip.tracks[0].empty());
    // The file stores a key's scalar part last.
    EXPECT_EQ(clip.tracks[1][1].rotation, quatFromAxisAngle(1, {1, 0, 0}));
    EXPECT_EQ(clip.tracks[1][1].position, (Vec3{1, 0, 0}));
}

TEST(SkeletonReader, RefusesBrokenTreesRotationsAndTimes) {
    const auto twoJoints = [](int32_t firstParent, int32_t secondParent, float w) {
        MeshBytes file;
        file.i32(1).i32(2).vec(0, 0, 0).f32(w).vec(0, 0, 0).vec(0, 0, 0).f32(1).vec(0, 0, 0);
        return file.i32(firstParent).i32(secondParent).string("a").string("b").i32(0).bytes;
    };
    EXPECT_TRUE(readSkeleton(twoJoints(-1, -1, 1)));
    EXPECT_FALSE(readSkeleton(twoJoints(1, 0, 1)));  // a cycle
    EXPECT_FALSE(readSkeleton(twoJoints(1, -1, 1))); // a child before its parent
    EXPECT_FALSE(readSkeleton(twoJoints(0, -1, 1))); // its own parent
    EXPECT_FALSE(readSkeleton(twoJoints(-2, -1, 1)));
    EXPECT_FALSE(readSkeleton(twoJoints(-1, 2, 1)));
    EXPECT_FALSE(readSkeleton(twoJoints(-1, -1, 0)));

    MeshBytes backwards;
    backwards.i32(1).i32(1).vec(0, 0, 0).f32(1).vec(0, 0, 0).i32(-1).string("a");
    backwards.i32(1).string("clip").i32(1).i32(2).key(1, {}, {}).key(0.5f, {}, {});
    EXPECT_FALSE(readSkeleton(backwards.bytes));
}

} // namespace
