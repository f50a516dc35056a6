#include "render/RenderTarget.h"

#include "core/Log.h"
#include "render/GlApi.h"
#include "render/Texture.h"

namespace Zelkor {

namespace {

void setSampling(GLint filter) {
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

} // namespace

int RenderTargets::add(const std::string& name, int width, int height, TextureList& textures) {
    const int index = static_cast<int>(targets_.size());
    RenderTarget& target = targets_.emplace_back();
    target.name = name;
    target.width = width;
    target.height = height;
    target.colourTexture = textures.addForTarget(name, index);
    create(index, textures);
    return index;
}

void RenderTargets::create(int index, TextureList& textures) {
    RenderTarget& target = targets_[static_cast<std::size_t>(index)];
    if (index == 0 || target.created) return;
    Texture& colour = textures[target.colourTexture];
    colour.width = target.width;
    colour.height = target.height;
    glGenTextures(1, &colour.glName);
    glBindTexture(GL_TEXTURE_2D, colour.glName);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, target.width, target.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 nullptr);
    setSampling(GL_LINEAR);
    colour.loaded = true;

    glGenTextures(1, &target.depthTexture);
    glBindTexture(GL_TEXTURE_2D, target.depthTexture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_DEPTH_COMPONENT, target.width, target.height, 0, GL_DEPTH_COMPONENT,
                 GL_UNSIGNED_SHORT, nullptr);
    setSampling(GL_NEAREST);

    glGenFramebuffersEXT(1, &target.framebuffer);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, target.framebuffer);
    glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT, GL_TEXTURE_2D, colour.glName, 0);
    glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, GL_DEPTH_ATTACHMENT_EXT, GL_TEXTURE_2D, target.depthTexture,
                              0);
    if (glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT) != GL_FRAMEBUFFER_COMPLETE_EXT)
        logLine("render target " + target.name + " is incomplete");
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    target.created = true;
}

void RenderTargets::destroy(RenderTarget& target, TextureList& textures) {
    if (!target.created) return;
    glDeleteFramebuffersEXT(1, &target.framebuffer);
    glDeleteTextures(1, &target.depthTexture);
    Texture& colour = textures[target.colourTexture];
    if (colour.loaded) glDeleteTextures(1, &colour.glName);
    colour.glName = target.framebuffer = target.depthTexture = 0;
    colour.loaded = target.created = false;
}

void RenderTargets::release(TextureList& textures) {
    for (std::size_t i = 1; i < targets_.size(); ++i)
        destroy(targets_[i], textures);
}

} // namespace Zelkor
