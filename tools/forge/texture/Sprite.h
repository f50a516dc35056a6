// A small picture on transparent ground, drawn mark by mark as with pencil and scissors: shapes lay paper over
// what is there, lines lay ink over it. Places and lengths: x to the right and y upwards, the picture runs from
// -1 to 1; angles in degrees.
#pragma once

#include "mesh/Noise.h"
#include "mesh/Outline.h"
#include "texture/Image.h"

#include <vector>

namespace forge {

struct Pen {
    float width = 0.05f; // of the line at full pressure
    float ink = 0.9f;    // 1 is black
    float taper = 0.3f;  // share of the line that thins out, at each end
    float broken = 0;    // share of the line where the pencil leaves the paper
};

class Sprite {
  public:
    Sprite(int size, int seed);

    // A closed shape of paper, `tone` light; where worn is above 0 the paper has holes as if rubbed.
    void shape(const Outline& outline, float tone, float worn = 0);
    void line(const Outline& path, const Pen& pen, bool closed = false);
    // Parallel strokes in a disc, only on what is covered.
    void hatch(const Zelkor::Vec2& at, float radius, float angle, float gap, const Pen& pen);
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

    // Grey and alpha; what is transparent is dark, so that edges stay ink.
    Image image() const;

  private:
    void layPaper(int x, int y, float cover, float tone);
    void layInk(int x, int y, float ink);
    void dab(const Zelkor::Vec2& at, float radius, float ink);
    Zelkor::Vec2 texelOf(const Zelkor::Vec2& p) const;

    int size_;
    Random random_;
    std::vector<float> light_, alpha_; // light times alpha
};

} // namespace forge
