// The text of ".material" files.
#pragma once

#include "render/Material.h"

#include <functional>
#include <string>

namespace Zelkor {

class TokenReader;

// Where the names of a file lead: to indices, -1 for what cannot be loaded.
struct MaterialResources {
    std::function<int(const std::string& texture, TextureKind kind)> texture;
    std::function<int(const std::string& shader)> shader;
};

// Reads every definition to the end of the data. create makes the material of a name, which is then filled.
// Keywords that act on a texture unit do nothing where the material has none yet.
void readMaterials(TokenReader& reader, const MaterialResources& resources,
                   const std::function<Material&(const std::string& name)>& create);

} // namespace Zelkor
