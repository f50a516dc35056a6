#include "sdf/Shape.h"

#include "mesh/Angles.h"

#include <algorithm>
#include <cmath>

namespace forge {

using Zelkor::Vec2;
using Zelkor::Vec3;
using Zelkor::Vec4;

namespace {

// The signed distance to |p.x| <= w, |p.y| <= h, by its two excesses.
float boxed(float overX, float overY) {
    return std::min(std::max(overX, overY), 0.0f) + std::hypot(std::max(overX, 0.0f), std::max(overY, 0.0f));
}

Box around(const Vec3& centre, const Vec3& half) {
    Box box;
    box.add(centre - half);
    box.add(centre + half);
    return box;
}

class Capsule : public Shape {
  public:
    Capsule(const Vec3& a, const Vec3& b, float ra, float rb) : from(a), to(b), fromRadius(ra), toRadius(rb) {
        span = Zelkor::distance(a, b);
        engulfed = span <= std::fabs(ra - rb) + 1e-6f;
        if (!engulfed) {
            axis = (b - a) * (1 / span);
            sine = (ra - rb) / span;
            cosine = std::sqrt(1 - sine * sine);
        }
    }
    // In the half-plane through the axis the side is a line tangent to both circles, tilted by asin(sine).
    float distance(const Vec3& p) const override {
        if (engulfed)
            return fromRadius > toRadius ? Zelkor::distance(p, from) - fromRadius
                                         : Zelkor::distance(p, to) - toRadius;
        const Vec3 q = p - from;
        const float along = Zelkor::dot(q, axis);
        const float off = std::sqrt(std::max(Zelkor::dot(q, q) - along * along, 0.0f));
        const float onSide = along * cosine - off * sine;
        if (onSide < 0) return std::hypot(along, off) - fromRadius;
        if (onSide > span * cosine) return std::hypot(along - span, off) - toRadius;
        return off * cosine + along * sine - fromRadius;
    }
    Box bounds() const override {
        Box box = around(from, Vec3{1, 1, 1} * fromRadius);
        box.add(around(to, Vec3{1, 1, 1} * toRadius));
        return box;
    }

  private:
    Vec3 from, to, axis;
    float fromRadius, toRadius, span, sine = 0, cosine = 1;
    bool engulfed;
};

class Ellipsoid : public Shape {
  public:
    Ellipsoid(const Vec3& c, const Vec3& r) : centre(c), radii(r) {}
    // First-order distance: the implicit function over its gradient's length.
    float distance(const Vec3& p) const override {
        const Vec3 q = p - centre;
        const Vec3 s{q.x / radii.x, q.y / radii.y, q.z / radii.z};
        const Vec3 g{s.x / radii.x, s.y / radii.y, s.z / radii.z};
        const float k = Zelkor::length(s), steep = Zelkor::length(g);
        if (steep < 1e-9f) return -std::min({radii.x, radii.y, radii.z});
        return k * (k - 1) / steep;
    }
    Box bounds() const override { return around(centre, radii); }

  private:
    Vec3 centre, radii;
};

class RoundBox : public Shape {
  public:
    RoundBox(const Vec3& c, const Vec3& size, float r) : centre(c), half(size * 0.5f), round(r) {}
    float distance(const Vec3& p) const override {
        const Vec3 q = p - centre;
        const Vec3 over{std::fabs(q.x) - half.x + round, std::fabs(q.y) - half.y + round,
                        std::fabs(q.z) - half.z + round};
        const Vec3 out{std::max(over.x, 0.0f), std::max(over.y, 0.0f), std::max(over.z, 0.0f)};
        return Zelkor::length(out) + std::min(std::max({over.x, over.y, over.z}), 0.0f) - round;
    }
    Box bounds() const override { return around(centre, half); }

  private:
    Vec3 centre, half;
    float round;
};

class Cone : public Shape {
  public:
    Cone(const Vec3& a, const Vec3& b, float ra, float rb, float r)
        : from(a), to(b), fromRadius(ra), toRadius(rb), round(r) {
        const float span = Zelkor::distance(a, b);
        axis = (b - a) * (1 / span);
        // The whole section, both sides of the axis, so that no side of it lies on the axis.
        const float inA = std::max(ra - r, 0.0f), inB = std::max(rb - r, 0.0f);
        section = {{-inA, r}, {inA, r}, {inB, span - r}, {-inB, span - r}};
    }
    float distance(const Vec3& p) const override {
        const Vec3 q = p - from;
        const float along = Zelkor::dot(q, axis);
        const float off = std::sqrt(std::max(Zelkor::dot(q, q) - along * along, 0.0f));
        return signedDistance(section, {off, along}) - round;
    }
    Box bounds() const override {
        Box box = around(from, Vec3{1, 1, 1} * fromRadius);
        box.add(around(to, Vec3{1, 1, 1} * toRadius));
        return box;
    }

  private:
    Vec3 from, to, axis;
    float fromRadius, toRadius, round;
    Outline section;
};

class Torus : public Shape {
  public:
    Torus(const Vec3& c, float major, float minor, Axis a)
        : centre(c), majorRadius(major), minorRadius(minor), axis(a) {}
    float distance(const Vec3& p) const override {
        const Vec3 q = p - centre;
        const float up = axis == Axis::X ? q.x : axis == Axis::Y ? q.y : q.z;
        const float flat = std::sqrt(std::max(Zelkor::dot(q, q) - up * up, 0.0f));
        return std::hypot(flat - majorRadius, up) - minorRadius;
    }
    Box bounds() const override { return around(centre, Vec3{1, 1, 1} * (majorRadius + minorRadius)); }

  private:
    Vec3 centre;
    float majorRadius, minorRadius;
    Axis axis;
};

class Extrusion : public Shape {
  public:
    Extrusion(const Outline& o, float d, float r) : outline(o), half(d / 2), round(r) {}
    float distance(const Vec3& p) const override {
        return boxed(signedDistance(outline, {p.x, p.y}) + round, std::fabs(p.z) - half + round) - round;
    }
    Box bounds() const override {
        Box box;
        for (const Vec2& point : outline) {
            box.add(Vec3{point.x, point.y, -half});
            box.add(Vec3{point.x, point.y, half});
        }
        return box;
    }

  private:
    Outline outline;
    float half, round;
};

class Lathe : public Shape {
  public:
    Lathe(const Outline& o, float r) : outline(o), round(r) {
        for (Vec2& point : outline)
            point.x = std::max(point.x, 0.0f);
    }
    float distance(const Vec3& p) const override {
        const float off = std::hypot(p.x, p.z);
        float nearest = 1e30f;
        bool inside = false;
        for (std::size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
            const Vec2 a = outline[j], b = outline[i];
            if ((a.y > p.y) != (b.y > p.y) && off < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x))
                inside = !inside;
            if (a.x < 1e-5f && b.x < 1e-5f) continue; // a side on the axis is no surface
            const Vec2 side{b.x - a.x, b.y - a.y}, to{off - a.x, p.y - a.y};
            const float t = std::clamp((to.x * side.x + to.y * side.y) /
                                           std::max(side.x * side.x + side.y * side.y, 1e-12f),
                                       0.0f, 1.0f);
            nearest = std::min(nearest, std::hypot(to.x - side.x * t, to.y - side.y * t));
        }
        return (inside ? -nearest : nearest) - round;
    }
    Box bounds() const override {
        Box box;
        for (const Vec2& point : outline) {
            box.add(Vec3{-point.x, point.y, -point.x});
            box.add(Vec3{point.x, point.y, point.x});
        }
        box.grow(round);
        return box;
    }

  private:
    Outline outline;
    float round;
};

class Tube : public Shape {
  public:
    explicit Tube(const std::vector<Vec4>& knots) {
        for (std::size_t i = 0; i + 1 < knots.size(); ++i)
            pieces.emplace_back(Vec3{knots[i].x, knots[i].y, knots[i].z},
                                Vec3{knots[i + 1].x, knots[i + 1].y, knots[i + 1].z}, knots[i].w,
                                knots[i + 1].w);
    }
    float distance(const Vec3& p) const override {
        float nearest = 1e30f;
        for (const Capsule& piece : pieces)
            nearest = std::min(nearest, piece.distance(p));
        return nearest;
    }
    Box bounds() const override {
        Box box;
        for (const Capsule& piece : pieces)
            box.add(piece.bounds());
        return box;
    }

  private:
    std::vector<Capsule> pieces;
};

class HalfSpace : public Shape {
  public:
    HalfSpace(const Vec3& p, const Vec3& n) : point(p), normal(normalized(n)) {}
    float distance(const Vec3& p) const override { return Zelkor::dot(p - point, normal); }
    Box bounds() const override { return {}; }

  private:
    Vec3 point, normal;
};

} // namespace

ShapePointer capsuleShape(const Vec3& from, const Vec3& to, float fromRadius, float toRadius) {
    return std::make_unique<Capsule>(from, to, fromRadius, toRadius);
}
ShapePointer ellipsoidShape(const Vec3& centre, const Vec3& radii) {
    return std::make_unique<Ellipsoid>(centre, radii);
}
ShapePointer boxShape(const Vec3& centre, const Vec3& size, float round) {
    return std::make_unique<RoundBox>(centre, size, round);
}
ShapePointer coneShape(const Vec3& from, const Vec3& to, float fromRadius, float toRadius, float round) {
    return std::make_unique<Cone>(from, to, fromRadius, toRadius, round);
}
ShapePointer torusShape(const Vec3& centre, float majorRadius, float minorRadius, Axis axis) {
    return std::make_unique<Torus>(centre, majorRadius, minorRadius, axis);
}
ShapePointer extrusionShape(const Outline& outline, float depth, float round) {
    return std::make_unique<Extrusion>(outline, depth, round);
}
ShapePointer latheShape(const Outline& outline, float round) {
    return std::make_unique<Lathe>(outline, round);
}
ShapePointer tubeShape(const std::vector<Vec4>& knots) {
    return std::make_unique<Tube>(knots);
}
ShapePointer halfSpaceShape(const Vec3& point, const Vec3& normal) {
    return std::make_unique<HalfSpace>(point, normal);
}

} // namespace forge
