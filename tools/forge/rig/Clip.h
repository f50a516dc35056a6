// A clip as its author writes it: poses at times, and movements laid over them.
#pragma once

#include "rig/Easing.h"
#include "rig/Pose.h"

#include <string>
#include <vector>

namespace forge {

struct ClipKey {
    float time = 0;
    Pose pose;
    Easing easing = Easing::Smooth; // of the way that ends here
};

// Turns one joint on top of its pose; degrees, so that it may go round more than once.
struct Overlay {
    struct Key {
        float time = 0;
        Zelkor::Vec3 degrees;
        Easing easing = Easing::Smooth;
    };
    int joint = 0;
    std::vector<Key> keys;
    // Or a sine instead of keys.
    Zelkor::Vec3 sway;
    float cycles = 0, phase = 0; // phase in cycles
};

// Keeps a hand or foot at a place for some of the time.
struct HeldReach {
    Reach reach;
    Zelkor::Vec3 travel;      // how far the place moves from begin to end
    float begin = 0, end = 0; // seconds; beyond the length of a loop they come round again
    float fade = 0;           // seconds of getting there and letting go, within begin and end
};

struct Clip {
    std::string name;
    float length = 1;
    bool loop = false;
    std::vector<ClipKey> keys; // by time; at least one
    std::vector<Overlay> overlays;
    std::vector<HeldReach> reaches;
    std::vector<bool> allowed; // joints it may move; empty: all
};

// The clip's pose at a time within its length. `touched` tells the joints the clip moves, the same at all
// times.
Pose sampleClip(const Rig& rig, const Clip& clip, float time);

} // namespace forge
