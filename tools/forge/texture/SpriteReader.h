// The marks of a `sprite { ... }` statement. docs/formats/texture-source.md describes them.
#pragma once

#include "text/Interpreter.h"
#include "texture/Image.h"

namespace forge {

// Throws SourceError.
Image readSprite(Interpreter& interpreter, const Statement& statement, Scope& scope, int size, int seed);

} // namespace forge
