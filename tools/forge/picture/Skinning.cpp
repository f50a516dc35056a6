#include "picture/Draw.h"

#include "mesh/Angles.h"

#include <algorithm>
#include <stdexcept>

namespace forge {

using Zelkor::Quat;
using Zelkor::Vec3;

namespace {

struct Place {
    Quat rotation;
    Vec3 position;
};

Place compose(const Place& parent, const Place& local) {
    return {parent.rotation * local.rotation, parent.position + rotate(parent.rotation, local.position)};
}

Place keyAt(const std::vector<KeyRecord>& track, float time) {
    if (track.size() < 3) return {}; // too short to animate its joint
    std::size_t k = 0;
    while (k + 2 < track.size() && track[k + 1].time < time)
        ++k;
    const KeyRecord &a = track[k], &b = track[k + 1];
    const float u = std::clamp((time - a.time) / std::max(b.time - a.time, 1e-6f), 0.0f, 1.0f);
    Place place;
    Zelkor::quatSlerp(place.rotation, a.rotation, b.rotation, u, true);
    place.position = a.position + (b.position - a.position) * u;
    return place;
}

} // namespace

float clipLength(const ClipRecord& clip) {
    float length = 0;
    for (const auto& track : clip.tracks)
        if (!track.empty()) length = std::max(length, track.back().time);
    return length;
}

Posed posedAt(const MeshRecord& mesh, const SkeletonRecord& skeleton, const std::string& name, float time) {
    const auto clip = std::find_if(skeleton.clips.begin(), skeleton.clips.end(),
                                   [&](const ClipRecord& each) { return each.name == name; });
    if (clip == skeleton.clips.end()) throw std::runtime_error("there is no clip '" + name + "'");
    std::vector<Place> rest, moved;
    for (std::size_t j = 0; j < skeleton.joints.size(); ++j) {
        const SkeletonRecord::Joint& joint = skeleton.joints[j];
        const Place bind{joint.rotation, joint.position};
        const Place key = keyAt(clip->tracks[j], time);
        const Place local{bind.rotation * key.rotation, bind.position + key.position};
        const bool root = joint.parent < 0;
        rest.push_back(root ? bind : compose(rest[static_cast<std::size_t>(joint.parent)], bind));
        moved.push_back(root ? local : compose(moved[static_cast<std::size_t>(joint.parent)], local));
    }
    Posed posed{std::vector<Vec3>(mesh.positions.size()), std::vector<Vec3>(mesh.positions.size())};
    for (std::size_t i = 0; i < mesh.influences.size(); ++i) {
        const auto vertex = static_cast<std::size_t>(mesh.influences[i].first);
        const auto joint = static_cast<std::size_t>(mesh.influences[i].second);
        const Quat turn = moved[joint].rotation * inverse(rest[joint].rotation);
        const Vec3 at = moved[joint].position + rotate(turn, mesh.positions[vertex] - rest[joint].position);
        posed.positions[vertex] += at * mesh.weights[i];
        posed.normals[vertex] += rotate(turn, mesh.normals[vertex]) * mesh.weights[i];
    }
    for (Vec3& n : posed.normals)
        Zelkor::normalize(n);
    return posed;
}

} // namespace forge
