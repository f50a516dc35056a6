#include "write/MeshFile.h"

#include <bit>
#include <stdexcept>

namespace forge {

using Zelkor::Quat;
using Zelkor::Vec2;
using Zelkor::Vec3;

namespace {

constexpr std::int32_t formatVersion = 1;

class Writer {
  public:
    void byte(std::uint8_t value) { bytes.push_back(value); }
    void integer(std::int32_t value) {
        const auto bits = static_cast<std::uint32_t>(value);
        for (int shift = 0; shift < 32; shift += 8)
            byte(static_cast<std::uint8_t>(bits >> shift));
    }
    void count(std::size_t value) { integer(static_cast<std::int32_t>(value)); }
    void real(float value) { integer(std::bit_cast<std::int32_t>(value)); }
    void vec3(const Vec3& v) {
        real(v.x);
        real(v.y);
        real(v.z);
    }
    void text(const std::string& value) {
        count(value.size());
        bytes.insert(bytes.end(), value.begin(), value.end());
    }

    Bytes bytes;
};

class Reader {
  public:
    explicit Reader(const Bytes& source) : bytes(source) {}

    std::uint8_t byte() {
        need(1);
        return bytes[next++];
    }
    std::int32_t integer() {
        need(4);
        std::uint32_t bits = 0;
        for (int shift = 0; shift < 32; shift += 8)
            bits |= static_cast<std::uint32_t>(bytes[next++]) << shift;
        return static_cast<std::int32_t>(bits);
    }
    // A count of things that take at least `size` bytes each.
    std::size_t count(std::size_t size) {
        const std::int32_t value = integer();
        if (value < 0 || static_cast<std::size_t>(value) > (bytes.size() - next) / size)
            throw std::runtime_error("a count of " + std::to_string(value) + " runs past the end, at byte " +
                                     std::to_string(next - 4));
        return static_cast<std::size_t>(value);
    }
    float real() { return std::bit_cast<float>(integer()); }
    Vec3 vec3() {
        const float x = real(), y = real();
        return {x, y, real()};
    }
    std::string text() {
        const std::size_t n = count(1);
        std::string value(bytes.begin() + static_cast<std::ptrdiff_t>(next),
                          bytes.begin() + static_cast<std::ptrdiff_t>(next + n));
        next += n;
        return value;
    }
    void end() const {
        if (next != bytes.size())
            throw std::runtime_error(std::to_string(bytes.size() - next) + " bytes are left over");
    }

  private:
    void need(std::size_t n) const {
        if (bytes.size() - next < n) throw std::runtime_error("the file ends too early");
    }

    const Bytes& bytes;
    std::size_t next = 0;
};

void writeVertices(Writer& out, const MeshRecord& mesh) {
    out.count(mesh.positions.size());
    if (!mesh.positions.empty()) {
        for (const Vec3& p : mesh.positions)
            out.vec3(p);
        out.byte(!mesh.normals.empty());
        for (const Vec3& n : mesh.normals)
            out.vec3(n);
        out.byte(!mesh.colours.empty());
        for (const auto& colour : mesh.colours)
            for (const std::uint8_t channel : colour)
                out.byte(channel);
        out.byte(static_cast<std::uint8_t>(mesh.texCoords.size()));
        for (const auto& set : mesh.texCoords)
            for (const Vec2& t : set) {
                out.real(t.x);
                out.real(t.y);
            }
    }
    out.count(mesh.influences.size());
    for (const auto& [vertex, joint] : mesh.influences) {
        out.integer(vertex);
        out.integer(joint);
    }
    for (const float weight : mesh.weights)
        out.real(weight);
}

void readVertices(Reader& in, MeshRecord& mesh) {
    const std::size_t n = in.count(12);
    if (n > 0) {
        for (std::size_t i = 0; i < n; ++i)
            mesh.positions.push_back(in.vec3());
        if (in.byte())
            for (std::size_t i = 0; i < n; ++i)
                mesh.normals.push_back(in.vec3());
        if (in.byte())
            for (std::size_t i = 0; i < n; ++i) {
                const std::uint8_t r = in.byte(), g = in.byte();
                mesh.colours.push_back({r, g, in.byte()});
            }
        mesh.texCoords.resize(in.byte());
        for (auto& set : mesh.texCoords)
            for (std::size_t i = 0; i < n; ++i) {
                const float u = in.real();
                set.push_back({u, in.real()});
            }
    }
    const std::size_t influences = in.count(12);
    for (std::size_t i = 0; i < influences; ++i) {
        const int vertex = in.integer();
        mesh.influences.emplace_back(vertex, in.integer());
        if (vertex < 0 || static_cast<std::size_t>(vertex) >= n)
            throw std::runtime_error("an influence of no vertex");
    }
    for (std::size_t i = 0; i < influences; ++i)
        mesh.weights.push_back(in.real());
}

} // namespace

Bytes encodeMesh(const MeshRecord& mesh) {
    Writer out;
    out.integer(formatVersion);
    out.text(mesh.name);
    out.text(mesh.skeletonFile);
    out.vec3(mesh.boxMax);
    out.vec3(mesh.boxMin);
    out.count(mesh.submeshes.size());
    if (!mesh.submeshes.empty()) writeVertices(out, mesh);
    for (const MeshRecord::Submesh& submesh : mesh.submeshes) {
        out.text(submesh.material);
        out.count(submesh.triangles.size());
        for (const auto& triangle : submesh.triangles)
            for (const int index : triangle)
                out.integer(index);
    }
    return std::move(out.bytes);
}

MeshRecord decodeMesh(const Bytes& bytes) {
    Reader in(bytes);
    MeshRecord mesh;
    in.integer();
    mesh.name = in.text();
    mesh.skeletonFile = in.text();
    mesh.boxMax = in.vec3();
    mesh.boxMin = in.vec3();
    mesh.submeshes.resize(in.count(8));
    if (!mesh.submeshes.empty()) readVertices(in, mesh);
    for (MeshRecord::Submesh& submesh : mesh.submeshes) {
        submesh.material = in.text();
        submesh.triangles.resize(in.count(12));
        for (auto& triangle : submesh.triangles)
            for (int& index : triangle) {
                index = in.integer();
                if (index < 0 || static_cast<std::size_t>(index) >= mesh.positions.size())
                    throw std::runtime_error("a triangle of no vertex");
            }
    }
    in.end();
    return mesh;
}

Bytes encodeSkeleton(const SkeletonRecord& skeleton) {
    Writer out;
    out.integer(formatVersion);
    out.count(skeleton.joints.size());
    for (const SkeletonRecord::Joint& joint : skeleton.joints) {
        out.vec3(joint.position);
        out.real(joint.rotation.w); // scalar first here, last in the keys
        out.vec3({joint.rotation.x, joint.rotation.y, joint.rotation.z});
    }
    for (const SkeletonRecord::Joint& joint : skeleton.joints)
        out.integer(joint.parent);
    for (const SkeletonRecord::Joint& joint : skeleton.joints)
        out.text(joint.path);
    out.count(skeleton.clips.size());
    for (const ClipRecord& clip : skeleton.clips) {
        out.text(clip.name);
        out.count(clip.tracks.size());
        for (const auto& track : clip.tracks) {
            out.count(track.size());
            for (const KeyRecord& key : track) {
                out.real(key.time);
                out.vec3(key.position);
                out.vec3({key.rotation.x, key.rotation.y, key.rotation.z});
                out.real(key.rotation.w);
                out.vec3(key.scale);
            }
        }
    }
    return std::move(out.bytes);
}

SkeletonRecord decodeSkeleton(const Bytes& bytes) {
    Reader in(bytes);
    SkeletonRecord skeleton;
    in.integer();
    skeleton.joints.resize(in.count(36));
    const auto quat = [&](bool scalarFirst) {
        Quat q;
        if (scalarFirst) q.w = in.real();
        const Vec3 v = in.vec3();
        if (!scalarFirst) q.w = in.real();
        return Quat{q.w, v.x, v.y, v.z};
    };
    for (SkeletonRecord::Joint& joint : skeleton.joints) {
        joint.position = in.vec3();
        joint.rotation = quat(true);
    }
    for (std::size_t i = 0; i < skeleton.joints.size(); ++i) {
        skeleton.joints[i].parent = in.integer();
        if (skeleton.joints[i].parent < -1 || skeleton.joints[i].parent >= static_cast<int>(i))
            throw std::runtime_error("a joint comes before its parent");
    }
    for (SkeletonRecord::Joint& joint : skeleton.joints)
        joint.path = in.text();
    skeleton.clips.resize(in.count(8));
    for (ClipRecord& clip : skeleton.clips) {
        clip.name = in.text();
        clip.tracks.resize(in.count(4));
        for (auto& track : clip.tracks) {
            track.resize(in.count(44));
            for (KeyRecord& key : track) {
                key.time = in.real();
                key.position = in.vec3();
                key.rotation = quat(false);
                key.scale = in.vec3();
            }
        }
    }
    in.end();
    return skeleton;
}

} // namespace forge
