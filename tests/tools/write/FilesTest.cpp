// The binary files, written and read back, and how files reach the disk.
#include "texture/Image.h"
#include "tools/Workshop.h"
#include "write/OutputFile.h"

#include <filesystem>

namespace forge {
namespace {

class Files : public Workshop {
  protected:
    static MeshRecord smallMesh() {
        MeshRecord mesh;
        mesh.name = "crate";
        mesh.skeletonFile = "a/crate.skel";
        mesh.boxMin = {-1, -2, -3};
        mesh.boxMax = {4, 5, 6};
        mesh.positions = {{0, 0, 0}, {1, 0.5f, 0}, {0, 1, -2}};
        mesh.normals = {{0, 0, 1}, {0, 1, 0}, {1, 0, 0}};
        mesh.colours = {{1, 2, 3}, {4, 5, 255}, {7, 8, 9}};
        mesh.texCoords = {{{0, 0}, {1, 0}, {0, 1}}, {{2, 2}, {3, 3}, {4, 4}}};
        mesh.influences = {{0, 1}, {0, 0}, {1, 1}, {2, 0}};
        mesh.weights = {0.25f, 0.75f, 1, 1};
        mesh.submeshes = {{"wood", {{0, 1, 2}}}, {"collision", {{2, 1, 0}, {0, 2, 1}}}};
        return mesh;
    }
    static SkeletonRecord smallSkeleton() {
        SkeletonRecord skeleton;
        skeleton.joints = {{"root", -1, {1, 2, 3}, {0.5f, 0.5f, -0.5f, 0.5f}},
                           {"root|tip", 0, {0, 1, 0}, {1, 0, 0, 0}}};
        skeleton.clips = {
            {"run", {{{0, {1, 2, 3}, {0.6f, 0.8f, 0, 0}, {1, 1, 1}}, {0.5f, {}, {}, {1, 1, 1}}}, {}}},
            {"", {{}, {}}}};
        return skeleton;
    }
};

TEST_F(Files, meshesSurviveTheRoundTrip) {
    const MeshRecord mesh = smallMesh(), back = decodeMesh(encodeMesh(mesh));
    EXPECT_EQ(back.skeletonFile, mesh.skeletonFile);
    EXPECT_EQ(back.boxMax, mesh.boxMax);
    EXPECT_EQ(back.positions, mesh.positions);
    EXPECT_EQ(back.normals, mesh.normals);
    EXPECT_EQ(back.influences, mesh.influences);
    ASSERT_EQ(back.submeshes.size(), 2u);
    EXPECT_EQ(back.submeshes[1].triangles, mesh.submeshes[1].triangles);
    EXPECT_EQ(encodeMesh(back), encodeMesh(mesh));
}

TEST_F(Files, meshBytesStandInTheirAgreedOrder) {
    MeshRecord mesh = smallMesh();
    mesh.colours.clear();
    const Bytes bytes = encodeMesh(mesh);
    const auto byte = [&](std::size_t i) { return static_cast<int>(bytes[i]); };
    // header, "crate", "a/crate.skel", then the maximum before the minimum.
    EXPECT_EQ(byte(4), 5);
    EXPECT_EQ(byte(8), 'c');
    EXPECT_EQ(byte(13), 12);
    const std::size_t boxes = 4 + 4 + 5 + 4 + 12;
    EXPECT_EQ(byte(boxes + 3), 0x40) << "4.0, the largest x, comes first";
    EXPECT_EQ(byte(boxes + 15), 0xbf) << "then -1.0, the smallest";
    EXPECT_EQ(byte(boxes + 24), 2) << "two submeshes";
    EXPECT_EQ(byte(boxes + 28), 3) << "three vertices";
    const std::size_t normals = boxes + 32 + 3 * 12;
    EXPECT_EQ(byte(normals), 1);
    EXPECT_EQ(byte(normals + 1 + 36), 0) << "no colours";
    EXPECT_EQ(byte(normals + 1 + 36 + 1), 2) << "two sets of texture coordinates";
}

TEST_F(Files, skeletonsSurviveTheRoundTripWithBothOrdersOfRotations) {
    const SkeletonRecord skeleton = smallSkeleton();
    const Bytes bytes = encodeSkeleton(skeleton);
    const SkeletonRecord back = decodeSkeleton(bytes);
    EXPECT_EQ(encodeSkeleton(back), bytes);
    EXPECT_EQ(back.joints[0].rotation, skeleton.joints[0].rotation);
    EXPECT_EQ(back.joints[1].path, "root|tip");
    EXPECT_EQ(back.joints[1].parent, 0);
    EXPECT_EQ(back.clips[0].tracks[0][0].rotation, skeleton.clips[0].tracks[0][0].rotation);
    EXPECT_EQ(back.clips[0].tracks[0][1].time, 0.5f);
    // Bind poses begin with w: -0.5 stands in the third place of the second row of the first joint.
    const std::size_t bind = 8 + 12;
    EXPECT_EQ(static_cast<int>(bytes[bind + 3]), 0x3f);
    EXPECT_EQ(static_cast<int>(bytes[bind + 11]), 0xbf);
    // Keys end their rotation with it: 0.6 after 0.8, 0, 0.
    const std::size_t key = 8 + 2 * 28 + 2 * 4 + (4 + 4) + (4 + 8) + 4 + (4 + 3) + 4 + 4;
    EXPECT_EQ(static_cast<int>(bytes[key + 4 + 12 + 3]), 0x3f);
    EXPECT_EQ(static_cast<int>(bytes[key + 4 + 12 + 4 + 3]), 0);
    EXPECT_EQ(static_cast<int>(bytes[key + 4 + 12 + 12 + 3]), 0x3f);
}

TEST_F(Files, everyTruncationIsRefused) {
    const Bytes mesh = encodeMesh(smallMesh()), skeleton = encodeSkeleton(smallSkeleton());
    const auto refuses = [](auto decode, const Bytes& bytes) {
        for (std::ptrdiff_t n = 0; n < std::ssize(bytes); ++n)
            EXPECT_THROW(decode(Bytes(bytes.begin(), bytes.begin() + n)), std::runtime_error) << n;
    };
    refuses(decodeMesh, mesh);
    refuses(decodeSkeleton, skeleton);
    Bytes longer = mesh;
    longer.push_back(0);
    EXPECT_THROW(decodeMesh(longer), std::runtime_error);
    MeshRecord wild = smallMesh();
    wild.submeshes[0].triangles[0][1] = 3;
    EXPECT_THROW(decodeMesh(encodeMesh(wild)), std::runtime_error) << "a triangle of no vertex";
}

TEST_F(Files, targasKeepEveryChannelAndTheirBottomRowFirst) {
    for (const int channels : {1, 3, 4}) {
        Image image(3, 2, channels);
        for (std::size_t i = 0; i < image.pixels.size(); ++i)
            image.pixels[i] = static_cast<std::uint8_t>(17 * i + 3);
        const Bytes bytes = encodeTga(image);
        EXPECT_EQ(bytes.size(), 18 + image.pixels.size());
        EXPECT_EQ(static_cast<int>(bytes[16]), channels * 8);
        EXPECT_EQ(bytes[18], image.at(0, 1, channels >= 3 ? 2 : 0)) << "bottom left, blue first";
        const Image back = decodeTga(bytes);
        EXPECT_EQ(back.width, 3);
        EXPECT_EQ(back.pixels, image.pixels);
        EXPECT_THROW(decodeTga(Bytes(bytes.begin(), bytes.end() - 1)), std::runtime_error);
    }
}

TEST_F(Files, filesAppearWholeAndFoldersAreMade) {
    const std::string target = path("deep/er/a.bin");
    writeFile(target, {1, 2, 3});
    writeFile(target, {4, 5});
    EXPECT_EQ(readFile(target), (Bytes{4, 5}));
    std::size_t entries = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(path("deep/er")))
        ++entries;
    EXPECT_EQ(entries, 1u) << "nothing is left beside it";
    EXPECT_THROW(readFile(path("none")), std::runtime_error);
    writeDepfile(path("a.d"), "out file", {"in", "b c"});
    const Bytes text = readFile(path("a.d"));
    EXPECT_EQ(std::string(text.begin(), text.end()), "out\\ file: \\\n  in \\\n  b\\ c\n");
}

} // namespace
} // namespace forge
