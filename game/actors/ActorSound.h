#pragma once

#include "math/Math.h"

// A sound made at a place in the stage: at its full level (times volume) inside the picture, fading beside it.
void playSoundAt(const char* name, const Zelkor::Vec3& position, float volume = 1);
