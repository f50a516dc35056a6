// An axis-aligned box that grows around points.
#pragma once

#include "math/Math.h"

#include <algorithm>

namespace forge {

struct Box {
    Zelkor::Vec3 lo{1e30f, 1e30f, 1e30f}, hi{-1e30f, -1e30f, -1e30f};

    bool empty() const { return lo.x > hi.x; }
    Zelkor::Vec3 size() const { return empty() ? Zelkor::Vec3{} : hi - lo; }
    void add(const Zelkor::Vec3& p) {
        lo = {std::min(lo.x, p.x), std::min(lo.y, p.y), std::min(lo.z, p.z)};
        hi = {std::max(hi.x, p.x), std::max(hi.y, p.y), std::max(hi.z, p.z)};
    }
    void add(const Box& b) {
        if (b.empty()) return;
        add(b.lo);
        add(b.hi);
    }
    void grow(float by) {
        lo -= {by, by, by};
        hi += {by, by, by};
    }
};

} // namespace forge
