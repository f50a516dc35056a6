// A picture on transparent ground, drawn mark by mark as with pencil and scissors: shapes lay paper over what is
// there, lines lay ink over it. Places and lengths in units, x to the right and y upwards; angles in degrees.
#pragma once

#include "mesh/Noise.h"
#include "mesh/Outline.h"
#include "texture/Image.h"

#include <array>
#include <vector>

namespace forge {

// Red, green, blue; 1 is as light as it gets.
using Tint = std::array<float, 3>;

// What a sprite is drawn on.
struct Ground {
    int width = 128, height = 128; // texels
    float left = -1, top = 1;      // units
    float texelsAUnit = 64;

    // From -1 to 1 either way.
    static Ground square(int size);
    // So many units across, their origin in the lower left corner.
    static Ground sheet(int width, int height, float unitsAcross);
};

struct Pen {
    float width = 0.05f; // of the line at full pressure
    float ink = 0.9f;    // 1 is black
    float taper = 0.3f;  // share of the line that thins out, at each end
    float broken = 0;    // share of the line where the pencil leaves the paper
    Tint tint{0, 0, 0};
    float grain = 0; // how much of the line the tooth of the paper takes away, 0..1
};

class Sprite {
  public:
    Sprite(const Ground& ground, int seed);

    // Closed outlines filled with paper, what lies in an even number of them left out; where worn is above 0 the
    // paper has holes as if rubbed.
    void shape(const std::vector<Outline>& outlines, const Tint& tint, float worn = 0);
    void line(const Outline& path, const Pen& pen, bool closed = false);
    // Parallel strokes, only on what is covered: in a disc, or in an outline.
    void hatch(const Zelkor::Vec2& at, float radius, float angle, float gap, const Pen& pen);
    void hatch(const Outline& outline, float angle, float gap, const Pen& pen);
    // Water colour on what is covered: darker where it dried, along its rim.
    void wash(const Outline& outline, const Tint& tint);
    // Round and round, drifting from `at` to `end`.
    void scribble(const Zelkor::Vec2& at, const Zelkor::Vec2& end, const Zelkor::Vec2& radius, float loops,
                  const Pen& pen);
    // Graphite rubbed with a finger, densest in the middle.
    void smudge(const Zelkor::Vec2& at, float radius, float ink);
    void spatter(const Zelkor::Vec2& at, float radius, int count, float size, float ink);

    // The rim of a cloud: rounded lobes that meet in creases.
    Outline puffOutline(const Zelkor::Vec2& at, float radius, int lobes, float depth);
    // Spikes of uneven length around a heart of radius `inner`.
    Outline starOutline(const Zelkor::Vec2& at, float inner, float outer, int spikes);

    // Colour and alpha; what is transparent is dark, so that edges stay ink.
    Image image() const;

  private:
    struct Texel {
        Tint light{}; // times alpha
        float alpha = 0;
    };
    void lay(int x, int y, float cover, const Tint& tint);
    void dab(const Zelkor::Vec2& at, float radius, float ink, const Tint& tint, float grain = 0);
    float tooth(int x, int y) const;
    // In a disc, kept to what is covered and, if there is one, to the outline.
    void strokes(const Zelkor::Vec2& at, float radius, float angle, float gap, const Pen& pen, const Outline* outline);
    template <class Visit>
    void fill(const std::vector<Outline>& outlines, const Visit& visit) const;
    Zelkor::Vec2 texelOf(const Zelkor::Vec2& p) const;
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(ground_.width) + static_cast<std::size_t>(x);
    }

    Ground ground_;
    Random random_;
    std::vector<Texel> texels_;
};

} // namespace forge
