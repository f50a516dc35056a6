#include "render/MaterialManager.h"

#include "core/EngineManagers.h"
#include "core/ProfileSections.h"
#include "io/DataFiles.h"
#include "io/TokenReader.h"
#include "render/MaterialReader.h"
#include "render/Renderer.h"

#include <algorithm>

namespace Zelkor {

namespace {

ShaderParam& param(Material& material, std::string_view name) {
    const auto found = std::find_if(material.shaderParams.begin(), material.shaderParams.end(),
                                    [name](const ShaderParam& each) { return each.name == name; });
    if (found != material.shaderParams.end()) return *found;
    ShaderParam& added = material.shaderParams.emplace_back();
    added.name = name;
    return added;
}

} // namespace

Material& MaterialManager::add(const std::string& name) {
    Material& material = *materials_.emplace_back(std::make_unique<Material>());
    material.name = name;
    byName_.emplace(name, &material); // the first of a name stays the one that is found
    return material;
}

void MaterialManager::loadMaterialFile(const std::string& file) {
    const auto reader = openDataTokens("materials/" + file + ".material");
    if (!reader) return;
    Renderer& renderer = *engineManagers()->renderer;
    const MaterialResources resources{
        [&renderer](const std::string& name, TextureKind kind) { return renderer.getTexture(name, kind); },
        [&renderer](const std::string& name) { return renderer.loadShader(name); }};
    readMaterials(*reader, resources, [this](const std::string& name) -> Material& {
        defined_.insert(name);
        return add(name);
    });
}

Material* MaterialManager::findMaterial(const std::string& name) {
    const auto found = byName_.find(name);
    Material& material = found != byName_.end() ? *found->second : add(name);
    if (found == byName_.end()) {
        TextureUnit& unit = material.textureUnits.emplace_back();
        unit.textureName = name;
        unit.texture = engineManagers()->renderer->getTexture(name);
    }
    ++material.refCount;
    return &material;
}

bool MaterialManager::isDefined(const std::string& name) const {
    return defined_.contains(name);
}

void MaterialManager::setShaderParam(Material& material, std::string_view name, float value) {
    ShaderParam& set = param(material, name);
    set.value = value;
    set.isVec4 = false;
    set.values.clear();
}

void MaterialManager::setShaderParam4(Material& material, std::string_view name, float x, float y, float z,
                                      float w) {
    ShaderParam& set = param(material, name);
    set.vec = {x, y, z, w};
    set.isVec4 = true;
    set.values.clear();
}

template <class Visit>
void MaterialManager::forEach(Visit visit) {
    for (const auto& material : materials_)
        visit(*material);
    for (const auto& material : copies_)
        visit(*material);
}

void MaterialManager::setSketchOffset(int shaderIndex, float x, float y, float z, float w) {
    forEach([=](Material& material) {
        if (material.shader == shaderIndex) setShaderParam4(material, "sketchOffset", x, y, z, w);
    });
}

void MaterialManager::forgetUniformLocations() {
    forEach([](Material& material) {
        for (ShaderParam& each : material.shaderParams)
            each.location = ShaderParam::unresolved;
    });
}

Material* MaterialManager::copyMaterial(const Material& source) {
    copies_.push_back(std::make_unique<Material>(source));
    Material* copy = copies_.back().get();
    copyPlaces_[copy] = std::prev(copies_.end());
    return copy;
}

void MaterialManager::removeCopy(Material* copy) {
    const auto place = copyPlaces_.find(copy);
    if (place == copyPlaces_.end()) return;
    copies_.erase(place->second);
    copyPlaces_.erase(place);
}

void MaterialManager::loadFonts(const std::string& path) {
    const auto reader = openDataTokens(path);
    if (!reader) return;
    for (Font& read : readFonts(*reader)) {
        if (!read.textureName.empty()) read.texture = engineManagers()->renderer->getTexture(read.textureName);
        const int known = findFont(read.name);
        if (known == 0) fonts_.push_back(std::make_unique<Font>());
        *fonts_[known > 0 ? static_cast<std::size_t>(known) - 1 : fonts_.size() - 1] = std::move(read);
    }
}

int MaterialManager::findFont(const std::string& name) const {
    const auto found =
        std::find_if(fonts_.begin(), fonts_.end(), [&](const auto& font) { return font->name == name; });
    return found == fonts_.end() ? 0 : static_cast<int>(found - fonts_.begin()) + 1;
}

const Font* MaterialManager::font(int handle) const {
    const bool exists = handle > 0 && handle <= static_cast<int>(fonts_.size());
    return exists ? fonts_[static_cast<std::size_t>(handle) - 1].get() : nullptr;
}

GlyphRect MaterialManager::glyphRect(int handle, char character) const {
    const Font* found = font(handle);
    return found ? found->glyph(character) : GlyphRect{};
}

void MaterialManager::applyMaterial(Material& material) {
    ProfileSection section(ProfileId::setMaterial);
    engineManagers()->renderer->applyMaterialState(material);
}

} // namespace Zelkor
