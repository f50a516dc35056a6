// Particle effects on show: as filmstrips, a row an effect, or in a window, one after the other.
#pragma once

#include "Studio.h"

#include "Platform.h"
#include "fx/ParticleSystem.h"

#include <string>
#include <vector>

namespace Zelkor {
class EffectInstance;
}

namespace viewer {

struct EffectOptions {
    std::vector<std::string> effects;
    float zoom = 0;      // 0: as in the game
    float drift = 0;     // units per second that an effect moves to the right; the camera goes along
    int moments = 12;    // of a strip
    int size = 200;      // pixels of a cell
    std::string file;    // of the strip
};

class EffectShow {
  public:
    EffectShow(Studio& studio, const EffectOptions& options);
    ~EffectShow();
    EffectShow(const EffectShow&) = delete;

    // False, with a word on standard error, when an effect is missing or the file cannot be written.
    bool writeStrips();
    // Until the window is closed, or for so many frames; below 0: no end. Space starts the effect again, left
    // and right choose, the wheel moves closer, escape ends. Returns the exit code.
    int run(platform::Platform& system, int frames);

  private:
    bool allThere() const;
    void start();
    void step();
    void draw(int redraw);
    // False: the program ends.
    bool handle(const platform::Message& message);

    // Ground for what bounces, a little below the effect.
    struct Floor : Zelkor::SolidTiles {
        bool solidTileAt(const Zelkor::Vec3& point, Zelkor::SolidTile& tile) const override;
    };

    Studio& studio_;
    EffectOptions options_;
    Floor floor_;
    Zelkor::EffectInstance* instance_ = nullptr;
    Zelkor::Vec3 place_;
    int effect_ = 0;
    float age_ = 0; // seconds since its start
    int exitCode_ = 0;
};

} // namespace viewer
