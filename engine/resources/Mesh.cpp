#include "resources/Mesh.h"

#include "io/ByteReader.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Zelkor {

// The readers below copy whole arrays of these from the file.
static_assert(sizeof(Vec2) == 8 && sizeof(Vec3) == 12 && sizeof(Quat) == 16);
static_assert(sizeof(SkeletonData::BindPose) == 28);

namespace {

// The bytes and what is wrong with them: the first complaint stays.
class Reading {
  public:
    explicit Reading(std::span<const uint8_t> bytes) : in(bytes) {}

    void complain(std::string what) {
        if (complaint_.empty()) complaint_ = std::move(what) + place();
    }
    // False and a complaint when the data has ended or was refused before.
    bool good() {
        if (in.failed()) complain("the data ends here or a count is wrong");
        return complaint_.empty();
    }
    const std::string& complaint() const { return complaint_; }

    template <class T>
    std::vector<T> finiteArray(std::size_t count, const char* what) {
        const auto values = in.array<T>(count);
        const auto* numbers = reinterpret_cast<const float*>(values.data());
        if (!std::all_of(numbers, numbers + values.size() * (sizeof(T) / sizeof(float)),
                         [](float x) { return std::isfinite(x); }))
            complain(std::string(what) + " hold a number that is not finite");
        return values;
    }

    ByteReader in;

  private:
    std::string place() const { return " (before byte " + std::to_string(in.position()) + ")"; }

    std::string complaint_;
};

template <class Record>
std::optional<Record> finish(Reading& from, Record&& record, std::string* reason) {
    if (from.good()) return std::move(record);
    if (reason) *reason = from.complaint();
    return {};
}

Vec3 readVec3(ByteReader& in) {
    const float x = in.f32(), y = in.f32(), z = in.f32();
    return {x, y, z};
}

bool finite(const Vec3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

// Generous enough for rotations that an exporter has rounded, and for none that would scale.
bool unitLength(const Quat& q) {
    const float squared = q.w * q.w + q.x * q.x + q.y * q.y + q.z * q.z;
    return squared > 0.9f && squared < 1.1f;
}

void readInfluences(Reading& from, VertexData& vertices) {
    struct Pair {
        int32_t vertex, joint;
    };
    const auto count = static_cast<std::size_t>(from.in.count(sizeof(Pair) + sizeof(float)));
    const auto pairs = from.in.array<Pair>(count);
    const auto weights = from.finiteArray<float>(count, "the influence weights");
    if (!from.good()) return;
    const auto vertexCount = static_cast<int32_t>(vertices.positions.size());
    vertices.influences.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        if (pairs[i].vertex >= 0 && pairs[i].vertex < vertexCount)
            vertices.influences.push_back({pairs[i].vertex, pairs[i].joint, weights[i]});
}

VertexData readVertices(Reading& from) {
    VertexData vertices;
    ByteReader& in = from.in;
    const auto count = static_cast<std::size_t>(in.count(sizeof(Vec3)));
    if (count > 0) {
        vertices.positions = from.finiteArray<Vec3>(count, "the positions");
        if (in.u8()) vertices.normals = from.finiteArray<Vec3>(count, "the normals");
        if (in.u8()) vertices.colours = in.array<std::array<uint8_t, 3>>(count);
        vertices.texCoordSetCount = in.u8();
        const std::size_t texCoords = count * static_cast<std::size_t>(vertices.texCoordSetCount);
        vertices.texCoords = from.finiteArray<Vec2>(texCoords, "the texture coordinates");
    }
    readInfluences(from, vertices);
    return vertices;
}

Submesh readSubmesh(Reading& from, std::size_t vertexCount) {
    Submesh submesh;
    submesh.materialName = from.in.string();
    const auto triangles = static_cast<std::size_t>(from.in.count(3 * sizeof(int32_t)));
    submesh.indices = from.in.ints(3 * triangles);
    for (const int32_t index : submesh.indices)
        if (index < 0 || static_cast<std::size_t>(index) >= vertexCount) {
            from.complain("an index of submesh '" + submesh.materialName + "' points past the vertices");
            break;
        }
    return submesh;
}

std::vector<Keyframe> readTrack(Reading& from) {
    // As the file has them: the rotation's scalar part comes last.
    struct Key {
        float time;
        Vec3 position;
        float x, y, z, w;
        Vec3 scale;
    };
    static_assert(sizeof(Key) == 11 * sizeof(float));
    const auto keys = from.finiteArray<Key>(static_cast<std::size_t>(from.in.count(sizeof(Key))), "the keys");
    std::vector<Keyframe> track;
    track.reserve(keys.size());
    for (const Key& key : keys) {
        if (!track.empty() && key.time < track.back().time) from.complain("the keys go back in time");
        track.push_back({key.time, key.position, {key.w, key.x, key.y, key.z}, key.scale});
        if (!unitLength(track.back().rotation)) from.complain("a key's rotation is not of unit length");
    }
    return track;
}

AnimationClip readClip(Reading& from, int jointCount) {
    AnimationClip clip;
    clip.name = from.in.string();
    const int32_t tracks = from.in.count(sizeof(int32_t));
    if (tracks > jointCount) from.complain("clip '" + clip.name + "' has more tracks than there are joints");
    for (int32_t i = 0; i < tracks && from.good(); ++i)
        clip.tracks.push_back(readTrack(from));
    return clip;
}

void readJoints(Reading& from, SkeletonData& skeleton) {
    // A joint takes a pose, a parent and at least the length of its name.
    constexpr std::size_t smallestJoint = sizeof(SkeletonData::BindPose) + 2 * sizeof(int32_t);
    const int32_t count = from.in.count(smallestJoint);
    const auto joints = static_cast<std::size_t>(count);
    skeleton.bindPose = from.finiteArray<SkeletonData::BindPose>(joints, "the bind poses");
    skeleton.parents = from.in.ints(joints);
    if (!from.good()) return;
    for (int32_t i = 0; i < count; ++i) {
        if (skeleton.parents[i] < -1 || skeleton.parents[i] >= i)
            from.complain("joint " + std::to_string(i) + " does not stand behind its parent");
        if (!unitLength(skeleton.bindPose[i].rotation))
            from.complain("the rotation of joint " + std::to_string(i) + " is not of unit length");
    }
    for (int32_t i = 0; i < count && from.good(); ++i)
        skeleton.jointNames.push_back(from.in.string());
}

} // namespace

float AnimationClip::duration() const {
    float last = 0;
    for (const auto& track : tracks)
        if (!track.empty()) last = std::max(last, track.back().time);
    return last;
}

std::optional<Mesh> readMesh(std::span<const uint8_t> bytes, std::string* reason) {
    Reading from(bytes);
    ByteReader& in = from.in;
    Mesh mesh;
    in.skip(sizeof(int32_t)); // the header says nothing
    in.string();              // nor does the first name
    mesh.skeletonFile = in.string();
    mesh.boxMax = readVec3(in);
    mesh.boxMin = readVec3(in);
    if (!finite(mesh.boxMax) || !finite(mesh.boxMin)) from.complain("the bounding box is not finite");
    constexpr std::size_t smallestSubmesh = 2 * sizeof(int32_t);
    const int32_t submeshes = in.count(smallestSubmesh);
    if (submeshes > 0) mesh.vertices = readVertices(from);
    for (int32_t i = 0; i < submeshes && from.good(); ++i)
        mesh.submeshes.push_back(readSubmesh(from, mesh.vertices.positions.size()));
    return finish(from, std::move(mesh), reason);
}

std::optional<SkeletonData> readSkeleton(std::span<const uint8_t> bytes, std::string* reason) {
    Reading from(bytes);
    SkeletonData skeleton;
    from.in.skip(sizeof(int32_t)); // the header says nothing
    readJoints(from, skeleton);
    constexpr std::size_t smallestClip = 2 * sizeof(int32_t);
    const int32_t clips = from.in.count(smallestClip);
    for (int32_t i = 0; i < clips && from.good(); ++i)
        skeleton.clips.push_back(readClip(from, skeleton.jointCount()));
    return finish(from, std::move(skeleton), reason);
}

} // namespace Zelkor
