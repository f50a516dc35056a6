// Owns every material: those of the files and those made on demand from a texture, by name, and the copies
// made for single objects.
#pragma once

#include "gui/Font.h"
#include "render/Material.h"

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Zelkor {

class MaterialManager {
  public:
    // "data/materials/" + file + ".material"; nothing when it is missing.
    void loadMaterialFile(const std::string& file);
    // The first material of that name, or a new one textured with the texture of that name. Counts a
    // reference. Named materials live as long as the manager.
    Material* findMaterial(const std::string& name);
    // True when some file has defined it.
    bool isDefined(const std::string& name) const;

    static void setShaderParam(Material& material, std::string_view name, float value);
    static void setShaderParam4(Material& material, std::string_view name, float x, float y, float z,
                                float w);
    // Sets "sketchOffset" on every material that is drawn with the shader.
    void setSketchOffset(int shaderIndex, float x, float y, float z, float w);
    void forgetUniformLocations();

    // A copy for one object, with fields, units and parameters of source.
    Material* copyMaterial(const Material& source);
    void removeCopy(Material* copy);

    // Adds the fonts of a description of the data folder, as "sample.fnt"; those of known names are replaced.
    // Nothing when it is missing.
    void loadFonts(const std::string& path);
    // 1 and above, valid as long as the manager; 0 when there is no font of that name.
    int findFont(const std::string& name) const;
    // Null for 0 and other numbers of no font.
    const Font* font(int handle) const;
    // All zero for letters and fonts that do not exist.
    GlyphRect glyphRect(int font, char character) const;

    // Makes the material the one that draws next: program, parameters, textures and fixed state.
    void applyMaterial(Material& material);

  private:
    Material& add(const std::string& name);
    template <class Visit>
    void forEach(Visit visit);

    std::list<std::unique_ptr<Material>> materials_;
    std::unordered_map<std::string, Material*> byName_;
    std::unordered_set<std::string> defined_; // by files
    std::list<std::unique_ptr<Material>> copies_;
    std::unordered_map<const Material*, std::list<std::unique_ptr<Material>>::iterator> copyPlaces_;
    std::vector<std::unique_ptr<Font>> fonts_;
};

} // namespace Zelkor
