#include "Exhibit.h"

#include "animation/SkeletonInstance.h"
#include "core/EngineManagers.h"
#include "render/Material.h"
#include "resources/Scene.h"
#include "resources/Unit.h"
#include "resources/UnitManager.h"

#include <algorithm>
#include <cstdio>

using namespace Zelkor;

namespace viewer {

namespace {

constexpr float figureScale = 1.3f; // the scale the game gives its hero

float radians(float degrees) {
    return degrees * pi / 180;
}

} // namespace

Exhibit::Exhibit(Scene& scene, const ExhibitOptions& options) : unit_(scene.createUnit(options.unit)) {
    const float scale = options.scale > 0 ? options.scale : unit_->skeleton ? figureScale : 1;
    unit_->scale = {scale, scale, scale};
    for (const std::string& description : options.held)
        hold(scene, description);
    turn(options.yaw, 0);
}

void Exhibit::hold(Scene& scene, const std::string& description) {
    const std::size_t at = description.find('@');
    const std::string name = description.substr(0, at);
    const std::string joint = at == std::string::npos ? "" : description.substr(at + 1);
    const auto& names =
        unit_->mesh->skeleton ? unit_->mesh->skeleton->jointNames : std::vector<std::string>{};
    for (std::size_t i = 0; i < names.size(); ++i)
        if (names[i].ends_with(joint)) {
            Unit* unit = scene.createUnit(name);
            unit->scale = unit_->scale;
            held_.push_back({unit, static_cast<int>(i)});
            return;
        }
    std::fprintf(stderr, "rustpike-viewer: %s has no joint %s\n", unit_->name().c_str(), joint.c_str());
}

bool Exhibit::drawable() const {
    return !unit_->items.empty();
}

std::vector<std::string> Exhibit::clips() const {
    std::vector<std::string> names;
    if (unit_->skeleton)
        for (const AnimationClip& clip : unit_->skeleton->data->clips)
            names.push_back(clip.name);
    return names;
}

float Exhibit::length(const std::string& clip) const {
    const Animation* animation = unit_->skeleton ? unit_->skeleton->animation(clip) : nullptr;
    return animation ? animation->duration : 0;
}

bool Exhibit::play(const std::string& clip, float seconds) {
    Animation* playing = unit_->skeleton ? unit_->skeleton->play(clip, 0) : nullptr;
    if (!playing) return false;
    playing->setTime(seconds);
    playing->restarted = true; // the cursors start again from the first key
    return true;
}

void Exhibit::update() {
    unit_->frameUpdate(++engineManagers()->unitManager->frameNumber);
    for (const Held& held : held_) {
        const JointState& joint = unit_->skeleton->joints[static_cast<std::size_t>(held.joint)];
        Vec3 offset;
        quatRotate(offset, unit_->orientation, scaled(joint.worldPosition, unit_->scale));
        held.unit->position = unit_->position + offset;
        quatMultiply(held.unit->orientation, unit_->orientation, joint.worldRotation);
        held.unit->updateWorldBox();
    }
    unit_->updateWorldBox();
}

void Exhibit::turn(float yaw, float pitch) {
    const Quat about = quatFromAxisAngle(radians(yaw), {0, 1, 0});
    const Quat towards = quatFromAxisAngle(radians(pitch), {1, 0, 0});
    quatMultiply(unit_->orientation, towards, about);
}

void Exhibit::show(bool visible) {
    unit_->visible = visible;
    for (const Held& held : held_)
        held.unit->visible = visible;
}

void Exhibit::blacken() {
    const auto blackenUnit = [](Unit& unit) {
        for (RenderItem& item : unit.items)
            item.setColour({0, 0, 0, 1});
    };
    blackenUnit(*unit_);
    for (const Held& held : held_)
        blackenUnit(*held.unit);
}

Vec3 Exhibit::centre() const {
    return scaled(unit_->boundingCentre, unit_->scale);
}

float Exhibit::radius() const {
    const Vec3 half = scaled(unit_->mesh->boxMax, unit_->scale) - centre();
    return std::max({half.x, half.y, half.z});
}

} // namespace viewer
