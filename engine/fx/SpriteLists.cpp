#include "fx/SpriteLists.h"

#include "fx/ParticleManager.h"
#include "render/Material.h"
#include "render/Renderer.h"

namespace Zelkor {

SpriteLists::Handle& SpriteLists::Handle::operator=(Handle&& other) noexcept {
    if (this == &other) return *this;
    remove();
    list_ = other.list_;
    sprite_ = other.sprite_;
    other.list_ = nullptr;
    return *this;
}

void SpriteLists::Handle::remove() {
    if (list_) list_->erase(sprite_);
    list_ = nullptr;
}

void SpriteLists::registerList(const std::string& name) {
    List& list = lists_[name];
    if (!list.material) list.material = particleMaterial("", name);
}

SpriteLists::Handle SpriteLists::add(const std::string& name) {
    registerList(name);
    std::list<WorldSprite>& sprites = lists_[name].sprites;
    return {sprites, sprites.emplace(sprites.end())};
}

int SpriteLists::count() const {
    std::size_t count = 0;
    for (const auto& [name, list] : lists_)
        count += list.sprites.size();
    return static_cast<int>(count);
}

void SpriteLists::render(Renderer& renderer) {
    for (auto& [name, list] : lists_) {
        if (!list.material || !list.material->enabled || list.sprites.empty()) continue;
        vertices_.clear();
        for (const WorldSprite& s : list.sprites) {
            const std::uint32_t colour = billboardColour(s.colour);
            vertices_.push_back({s.middle - s.halfRight + s.halfUp, {s.left, s.top}, colour});
            vertices_.push_back({s.middle - s.halfRight - s.halfUp, {s.left, s.bottom}, colour});
            vertices_.push_back({s.middle + s.halfRight - s.halfUp, {s.right, s.bottom}, colour});
            vertices_.push_back({s.middle + s.halfRight + s.halfUp, {s.right, s.top}, colour});
        }
        renderer.drawBillboards(vertices_.data(), static_cast<int>(list.sprites.size()), *list.material,
                                BlendMode::alphaBlend);
    }
}

} // namespace Zelkor
