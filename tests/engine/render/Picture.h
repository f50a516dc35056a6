// Pictures compared with those kept in tests/pictures/.
#pragma once

#include "render/Image.h"

#include <string>

namespace Zelkor {

// Fails the test unless image looks like tests/pictures/NAME.png: of the same size, and on the whole and in
// each place close enough for another driver. On failure writes NAME.actual.png and NAME.diff.png beside it
// (red: darker than it should be, blue: lighter). With RUSTPIKE_UPDATE_PICTURES set it writes NAME.png
// instead and fails, so that someone looks.
void expectPicture(const Image& image, const std::string& name);

} // namespace Zelkor
