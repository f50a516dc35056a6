// Off-screen pictures that can be drawn into and then used as textures. Target 0 is the window itself.
#pragma once

#include <string>
#include <vector>

namespace Zelkor {

class TextureList;

struct RenderTarget {
    unsigned framebuffer = 0; // none for target 0
    int colourTexture = -1;   // in the texture list, whose record points back here
    unsigned depthTexture = 0;
    int width = 0, height = 0; // pixels
    bool created = false;      // the GL objects exist
    std::string name;
};

class RenderTargets {
  public:
    // Adds a target and makes its GL objects; leaves framebuffer 0 bound.
    int add(const std::string& name, int width, int height, TextureList& textures);
    // Makes the GL objects of a target. Target 0 has none.
    void create(int index, TextureList& textures);
    // Deletes them.
    void destroy(RenderTarget& target, TextureList& textures);
    // Deletes those of every target.
    void release(TextureList& textures);

    bool contains(int index) const { return index >= 0 && index < static_cast<int>(targets_.size()); }
    RenderTarget& operator[](int index) { return targets_[static_cast<std::size_t>(index)]; }
    RenderTarget& screen() { return targets_.front(); }

  private:
    std::vector<RenderTarget> targets_{1};
};

} // namespace Zelkor
