// Writes mesh and skeleton files byte by byte, as their readers expect them.
#pragma once

#include "math/Math.h"

#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

struct MeshBytes {
    std::vector<uint8_t> bytes;

    template <class T>
    MeshBytes& put(const T& value) {
        const auto* from = reinterpret_cast<const uint8_t*>(&value);
        bytes.insert(bytes.end(), from, from + sizeof(T));
        return *this;
    }
    MeshBytes& i32(int32_t value) { return put(value); }
    MeshBytes& u8(uint8_t value) { return put(value); }
    MeshBytes& f32(float value) { return put(value); }
    MeshBytes& vec(float x, float y, float z) { return f32(x).f32(y).f32(z); }
    MeshBytes& string(std::string_view text) {
        i32(static_cast<int32_t>(text.size()));
        bytes.insert(bytes.end(), text.begin(), text.end());
        return *this;
    }
    // Everything before the vertex block.
    MeshBytes& meshHead(std::string_view skeleton, int32_t submeshes) {
        return i32(1).string("head").string(skeleton).vec(4, 5, 6).vec(-2, -3, -4).i32(submeshes);
    }
    MeshBytes& key(float time, const Zelkor::Vec3& position, const Zelkor::Quat& rotation) {
        f32(time).put(position).f32(rotation.x).f32(rotation.y).f32(rotation.z).f32(rotation.w);
        return vec(1, 1, 1);
    }
};

// Three vertices with everything, one drawn triangle and one of collision.
inline MeshBytes wholeMesh(std::string_view skeleton = "figure.skel") {
    MeshBytes file;
    file.meshHead(skeleton, 2);
    file.i32(3).vec(0, 0, 0).vec(1, 0, 0).vec(0, 1, 0);
    file.u8(1).vec(0, 0, 1).vec(0, 1, 0).vec(1, 0, 0);
    file.u8(1).u8(10).u8(20).u8(30).u8(40).u8(50).u8(60).u8(70).u8(80).u8(90);
    file.u8(2);
    for (int i = 0; i < 12; ++i)
        file.f32(static_cast<float>(i) / 8);
    file.i32(4).i32(0).i32(0).i32(1).i32(0).i32(1).i32(1).i32(2).i32(1);
    file.f32(1).f32(0.5f).f32(0.5f).f32(1);
    file.string("skin").i32(1).i32(0).i32(1).i32(2);
    return file.string("collision").i32(1).i32(2).i32(1).i32(0);
}

// A root and its child, and one clip that turns the child.
inline MeshBytes wholeSkeleton() {
    MeshBytes file;
    file.i32(1).i32(2);
    file.vec(0, 0, 0).f32(1).vec(0, 0, 0);
    file.vec(0, 2, 0).f32(1).vec(0, 0, 0);
    file.i32(-1).i32(0).string("root").string("root|head");
    file.i32(1).string("nod").i32(2).i32(0).i32(3);
    file.key(0, {}, {}).key(0.5f, {1, 0, 0}, Zelkor::quatFromAxisAngle(1, {1, 0, 0}));
    return file.key(1, {}, {});
}
