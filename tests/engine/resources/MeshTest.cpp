#include "resources/Mesh.h"

#include "engine/resources/MeshBytes.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace Zelkor;

TEST(MeshReader, ReadsFieldsInTheirOrder) {
    std::string reason;
    const auto mesh = readMesh(wholeMesh().bytes, &reason);
    ASSERT_TRUE(mesh) << reason;
    EXPECT_EQ(mesh->boxMax, (Vec3{4, 5, 6})); // the maximum comes first
    const VertexData& vertices = mesh->vertices;
    EXPECT_EQ(vertices.positions.at(2), (Vec3{0, 1, 0}));
    EXPECT_EQ(vertices.normals.at(1), (Vec3{0, 1, 0}));
    EXPECT_EQ(vertices.colours.at(2), (std::array<uint8_t, 3>{70, 80, 90}));
    EXPECT_EQ(vertices.texCoords.at(3).x, 6 / 8.0f); // set 1, vertex 0
    EXPECT_EQ(vertices.influences.at(2).joint, 1);
    EXPECT_EQ(vertices.influences.at(2).weight, 0.5f);
    EXPECT_EQ(mesh->submeshes.at(0).indices, (std::vector<int32_t>{0, 1, 2}));
    EXPECT_TRUE(mesh->submeshes.at(1).isCollision());
}

TEST(MeshReader, AbsentPartsTakeNoBytes) {
    // No vertices: straight on to the influences, whose vertices are not there.
    MeshBytes none;
    none.meshHead("", 1).i32(0).i32(1).i32(0).i32(0).f32(1).string("m").i32(0);
    const auto empty = readMesh(none.bytes);
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->vertices.influences.empty());
    // No normals and no colours: the number of texture coordinate sets follows the two flags.
    MeshBytes bare;
    bare.meshHead("", 1).i32(1).vec(1, 2, 3).u8(0).u8(0).u8(1).f32(0.5f).f32(0.25f);
    const auto coordinates = readMesh(bare.i32(0).string("m").i32(0).bytes);
    ASSERT_TRUE(coordinates);
    EXPECT_EQ(coordinates->vertices.texCoords.at(0).y, 0.25f);
    // No submeshes: no vertex block.
    EXPECT_TRUE(readMesh(MeshBytes().meshHead("", 0).bytes));
}

TEST(MeshReader, CutFilesAreRefusedAtEveryByte) {
    for (const bool isMesh : {true, false}) {
        // Copies of their own length, so that reading past it is seen.
        for (auto cut = isMesh ? wholeMesh().bytes : wholeSkeleton().bytes; !cut.empty();) {
            cut = std::vector<uint8_t>(cut.begin(), cut.end() - 1);
            EXPECT_FALSE(isMesh ? readMesh(cut).has_value() : readSkeleton(cut).has_value()) << cut.size();
        }
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
                        for (const int32_t index : submesh.indices)
                            ASSERT_LT(static_cast<uint32_t>(index), mesh->vertices.positions.size());
                }
            }
    }
    MeshBytes notFinite;
    notFinite.meshHead("", 1).i32(1).vec(1, std::numeric_limits<float>::quiet_NaN(), 3).u8(0).u8(0).u8(0);
    EXPECT_FALSE(readMesh(notFinite.i32(0).string("m").i32(0).bytes));
}

TEST(SkeletonReader, ReadsJointsAndClips) {
    std::string reason;
    const auto skeleton = readSkeleton(wholeSkeleton().bytes, &reason);
    ASSERT_TRUE(skeleton) << reason;
    ASSERT_EQ(skeleton->jointCount(), 2);
    EXPECT_EQ(skeleton->bindPose[1].rotation, Quat{});
    const AnimationClip& clip = skeleton->clips.at(0);
    EXPECT_EQ(clip.duration(), 1);
    ASSERT_EQ(clip.tracks.size(), 2u);
    EXPECT_TRUE(clip.tracks[0].empty());
    // The file stores a key's scalar part last.
    EXPECT_EQ(clip.tracks[1][1].rotation, quatFromAxisAngle(1, {1, 0, 0}));
}

TEST(SkeletonReader, RefusesBrokenTreesRotationsAndTimes) {
    const auto twoJoints = [](int32_t firstParent, int32_t secondParent, float w) {
        MeshBytes file;
        file.i32(1).i32(2).vec(0, 0, 0).f32(w).vec(0, 0, 0).vec(0, 0, 0).f32(1).vec(0, 0, 0);
        return file.i32(firstParent).i32(secondParent).string("a").string("b").i32(0).bytes;
    };
    EXPECT_TRUE(readSkeleton(twoJoints(-1, -1, 1)));
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
