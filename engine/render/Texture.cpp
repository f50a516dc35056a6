#include "render/Texture.h"

#include "core/Log.h"
#include "io/DataFiles.h"
#include "render/GlApi.h"
#include "render/Tga.h"

#include <utility>

namespace Zelkor {

namespace {

constexpr int cubeFaces = 6;

GLenum pixelFormat(int components) {
    if (components == 1) return GL_LUMINANCE;
    return components == 3 ? GL_RGB : GL_RGBA;
}

void setLinear(GLenum target) {
    glTexParameteri(target, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(target, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
}

void upload(const Image& image, TextureKind kind) {
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    if (kind != TextureKind::cubeMap) {
        glTexImage2D(GL_TEXTURE_2D, 0, image.components, image.width, image.height, 0,
                     pixelFormat(image.components), GL_UNSIGNED_BYTE, image.pixels.data());
        setLinear(GL_TEXTURE_2D);
        return;
    }
    // A vertical strip of six faces, +x at the top.
    const int faceHeight = image.height / cubeFaces;
    const uint8_t* face = image.pixels.data();
    for (unsigned i = 0; i < cubeFaces; ++i) {
        glTexImage2D(GL_TEXTURE_CUBE_MAP_POSITIVE_X + i, 0, GL_RGBA, image.width, faceHeight, 0, GL_RGBA,
                     GL_UNSIGNED_BYTE, face);
        face += static_cast<std::size_t>(image.width) * static_cast<std::size_t>(faceHeight) * 4;
    }
    setLinear(GL_TEXTURE_CUBE_MAP);
}

} // namespace

int TextureList::load(const std::string& name, TextureKind kind, int slot) {
    logLine("loadtexture " + name);
    const auto bytes = readDataFile("textures/" + name + ".tga");
    if (!bytes) return -1;
    const auto image = decodeTga(*bytes);
    if (!image) return -1;
    if (kind == TextureKind::cubeMap && (image->components != 4 || image->height < cubeFaces)) return -1;

    if (!contains(slot)) {
        slot = static_cast<int>(textures_.size());
        textures_.emplace_back().name = name;
    }
    Texture& texture = textures_[slot];
    if (texture.loaded) glDeleteTextures(1, &texture.glName);
    texture.width = image->width;
    texture.height = image->height;
    texture.kind = kind;
    glGenTextures(1, &texture.glName);
    glBindTexture(kind == TextureKind::cubeMap ? GL_TEXTURE_CUBE_MAP : GL_TEXTURE_2D, texture.glName);
    upload(*image, kind);
    texture.loaded = true;
    return slot;
}

int TextureList::get(const std::string& name, TextureKind kind) {
    for (std::size_t i = 0; i < textures_.size(); ++i)
        if (textures_[i].name == name) return static_cast<int>(i);
    return load(name, kind, -1);
}

int TextureList::createEmpty(const std::string& name, int format, int width, int height) {
    Texture& texture = textures_.emplace_back();
    texture.name = name;
    texture.width = width;
    texture.height = height;
    texture.emptyFormat = format;
    makeEmpty(texture);
    return static_cast<int>(textures_.size()) - 1;
}

void TextureList::makeEmpty(Texture& texture) {
    glGenTextures(1, &texture.glName);
    glBindTexture(GL_TEXTURE_2D, texture.glName);
    const auto allocate = [&texture](GLint internal, GLenum format, GLenum type) {
        glTexImage2D(GL_TEXTURE_2D, 0, internal, texture.width, texture.height, 0, format, type, nullptr);
    };
    if (texture.emptyFormat == 1)
        allocate(GL_DEPTH_COMPONENT, GL_DEPTH_COMPONENT, GL_UNSIGNED_INT);
    else if (texture.emptyFormat == 2)
        allocate(GLEW_ARB_texture_float ? GL_RGB16F_ARB : GL_RGB, GL_RGB, GL_FLOAT);
    else
        allocate(4, GL_RGBA, GL_UNSIGNED_BYTE);
    setLinear(GL_TEXTURE_2D);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    texture.loaded = true;
}

int TextureList::addForTarget(const std::string& name, int target) {
    Texture& texture = textures_.emplace_back();
    texture.name = name;
    texture.renderTarget = target;
    return static_cast<int>(textures_.size()) - 1;
}

void TextureList::restore(int index) {
    Texture& texture = textures_[static_cast<std::size_t>(index)];
    if (texture.loaded || texture.renderTarget >= 0) return;
    if (texture.emptyFormat != Texture::fromFile)
        makeEmpty(texture);
    else
        load(std::string(texture.name), texture.kind, index);
}

void TextureList::release() {
    for (Texture& texture : textures_) {
        if (!texture.loaded) continue;
        glDeleteTextures(1, &texture.glName);
        texture.glName = 0;
        texture.loaded = false;
    }
}

} // namespace Zelkor
