// Flat pictures in the world that actors place themselves, such as bullets: a named list for each texture, drawn
// in one call.
#pragma once

#include "fx/Billboards.h"
#include "math/Math.h"

#include <list>
#include <map>
#include <string>
#include <vector>

namespace Zelkor {

class Renderer;
struct Material;

struct WorldSprite {
    Vec3 middle;
    Vec3 halfRight, halfUp; // from the middle to the right side and to the upper side, world units
    Vec4 colour{1, 1, 1, 1};
    float left = 0, top = 0, right = 1, bottom = 1; // of the texture
};

class SpriteLists {
  public:
    class Handle;

    // Loads what the list is drawn with, before its first sprite flies. name: of the texture.
    void registerList(const std::string& name);
    // In the list of that name, for as long as the handle lives; the lists must outlive it.
    Handle add(const std::string& name);
    // Every list with the camera's view current.
    void render(Renderer& renderer);
    int count() const;

  private:
    struct List {
        Material* material = nullptr;
        std::list<WorldSprite> sprites; // each stays where it is
    };

    std::map<std::string, List> lists_;
    std::vector<BillboardVertex> vertices_;
};

// One sprite, for as long as the handle lives.
class SpriteLists::Handle {
  public:
    Handle() = default;
    Handle(std::list<WorldSprite>& list, std::list<WorldSprite>::iterator sprite)
        : list_(&list), sprite_(sprite) {}
    ~Handle() { remove(); }
    Handle(Handle&& other) noexcept { *this = std::move(other); }
    Handle& operator=(Handle&& other) noexcept;
    explicit operator bool() const { return list_ != nullptr; }
    WorldSprite* operator->() const { return &*sprite_; }

  private:
    void remove();

    std::list<WorldSprite>* list_ = nullptr;
    std::list<WorldSprite>::iterator sprite_;
};

} // namespace Zelkor
