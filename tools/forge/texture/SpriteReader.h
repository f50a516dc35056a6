// The marks of a `sprite { ... }` statement. docs/formats/texture-source.md describes them.
#pragma once

#include "text/Interpreter.h"
#include "texture/Image.h"

namespace forge {

inline constexpr int largestTexture = 2048; // texels a side

// Throws SourceError.
Image readSprite(Interpreter& interpreter, const Statement& statement, Scope& scope);

} // namespace forge
