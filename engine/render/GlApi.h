// OpenGL for the files that draw. Entry points beyond OpenGL 1.1 may be missing: each is called only where
// the context was found to offer it.
#pragma once

#include <GL/glew.h>

#include <GL/glu.h>

namespace Zelkor {

// Texture coordinates of units past this one are not used by any program.
inline constexpr int maxTextureUnits = 8;

// Later texture calls go to this unit. Without multitexture there is only unit 0.
inline void selectTextureUnit(int unit) {
    if (glActiveTexture) glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
}

} // namespace Zelkor
