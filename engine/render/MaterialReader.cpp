#include "render/MaterialReader.h"

#include "io/TokenReader.h"
#include "render/MaterialManager.h"

#include <string_view>
#include <unordered_map>

namespace Zelkor {

namespace {

constexpr int normalsAsCoordinates = 255;

class MaterialParser {
  public:
    MaterialParser(TokenReader& reader, const MaterialResources& resources)
        : reader_(reader), resources_(resources) {}

    // The body of one definition, up to the "}" that ends it or the end of the data.
    void parse(Material& material);

  private:
    using Keyword = void (*)(MaterialParser&);
    static const std::unordered_map<std::string_view, Keyword>& keywords();

    std::string word() { return reader_.atEnd() ? std::string() : reader_.readWord(); }
    float number() { return reader_.readFloat(); }
    Vec4 vector() {
        Vec4 v;
        for (float* component : {&v.x, &v.y, &v.z, &v.w})
            *component = number();
        return v;
    }
    Material& material() { return *material_; }
    // A unit of no material takes what stands before the first one.
    TextureUnit& unit() {
        return material_->textureUnits.empty() ? nowhere_ : material_->textureUnits.back();
    }

    void texture();
    void sceneBlend();
    void waveAnimation();
    void scrollAnimation();

    TokenReader& reader_;
    const MaterialResources& resources_;
    Material* material_ = nullptr;
    TextureUnit nowhere_;
    int depth_ = 0; // of open blocks
};

void MaterialParser::texture() {
    unit().textureName = word();
    unit().texture = resources_.texture(unit().textureName, unit().kind);
}

void MaterialParser::sceneBlend() {
    const std::string mode = word();
    if (mode == "add")
        material().blendMode = BlendMode::add;
    else if (mode == "modulate")
        material().blendMode = BlendMode::modulate;
    else if (mode == "alpha_blend")
        material().blendMode = BlendMode::alphaBlend;
    else if (mode == "src_alpha") {
        word();
        material().blendMode = BlendMode::alphaBlend;
    } else if (mode == "specialalpha") {
        material().blendMode = BlendMode::specialAlpha;
        material().specialAlpha = true;
        material().specialAlphaTest = false;
    }
}

void MaterialParser::scrollAnimation() {
    TexAnim anim;
    anim.p1 = number();
    anim.p2 = number();
    unit().animations.push_back(anim);
}

void MaterialParser::waveAnimation() {
    const std::string target = word();
    word(); // the waveform: always a sine
    TexAnim anim;
    anim.p1 = number();
    anim.p2 = number();
    anim.p3 = number();
    anim.p4 = number();
    if (target == "scroll_x")
        anim.type = TexAnim::waveScrollX;
    else if (target == "scroll_y")
        anim.type = TexAnim::waveScrollY;
    else if (target == "scale_x")
        anim.type = TexAnim::waveScaleX;
    else if (target == "scale_y")
        anim.type = TexAnim::waveScaleY;
    else
        return;
    unit().animations.push_back(anim);
}

const std::unordered_map<std::string_view, MaterialParser::Keyword>& MaterialParser::keywords() {
    using P = MaterialParser;
    static const std::unordered_map<std::string_view, Keyword> table = {
        {"technique", [](P& p) { ++p.depth_; }},
        {"pass", [](P& p) { ++p.depth_; }},
        {"texture_unit",
         [](P& p) {
             p.material().textureUnits.emplace_back();
             ++p.depth_;
         }},
        {"}", [](P& p) { --p.depth_; }},

        {"texture", [](P& p) { p.texture(); }},
        {"normal_map", [](P& p) { p.unit().kind = TextureKind::normalMap; }},
        {"cube", [](P& p) { p.unit().kind = TextureKind::cubeMap; }},
        {"scale",
         [](P& p) {
             p.unit().scaleX = p.number();
             p.unit().scaleY = p.number();
         }},
        {"filtering",
         [](P& p) {
             if (p.word() == "none") p.unit().filtering = 0;
         }},
        {"colour_op",
         [](P& p) {
             const std::string operation = p.word();
             if (operation == "add") p.unit().colourOp = 1;
             if (operation == "modulate") p.unit().colourOp = 2;
         }},
        {"tex_coord_set",
         [](P& p) {
             if (p.word() != "normal") return;
             p.unit().texCoordSet = normalsAsCoordinates;
             p.material().normalTexCoords = true;
         }},
        {"scroll_anim", [](P& p) { p.scrollAnimation(); }},
        {"wave_xform", [](P& p) { p.waveAnimation(); }},

        {"shader", [](P& p) { p.material().shader = p.resources_.shader(p.word()); }},
        {"shadow_shader", [](P& p) { p.material().shadowShader = p.resources_.shader(p.word()); }},
        {"shader_param",
         [](P& p) {
             const std::string name = p.word();
             MaterialManager::setShaderParam(p.material(), name, p.number());
         }},
        {"shader_param4",
         [](P& p) {
             const std::string name = p.word();
             const Vec4 v = p.vector();
             MaterialManager::setShaderParam4(p.material(), name, v.x, v.y, v.z, v.w);
         }},

        {"scene_blend", [](P& p) { p.sceneBlend(); }},
        {"alpha_rejection",
         [](P& p) {
             p.word(); // the comparison: always greater
             p.material().alphaRef = static_cast<float>(p.reader_.readInt()) / 255;
             p.material().alphaTest = true;
             p.material().specialAlphaTest = true;
         }},
        {"cull_hardware",
         [](P& p) {
             const std::string faces = p.word();
             if (faces == "none") p.material().cullNone = true;
             if (faces == "front") p.material().cullFront = true;
         }},
        {"fog_override",
         [](P& p) {
             p.word();
             p.material().fogOverride = true;
         }},
        {"lighting",
         [](P& p) {
             if (p.word() == "off") p.material().lightingOff = true;
         }},
        {"depth_bias", [](P& p) { p.material().depthBias = p.number(); }},
        {"ambient", [](P& p) { p.material().ambient = p.vector(); }},
        {"diffuse", [](P& p) { p.material().diffuse = p.vector(); }},
        {"specular", [](P& p) { p.material().specular = p.vector(); }},
        {"emissive", [](P& p) { p.material().emissive = p.vector(); }},

        {"normalmaps", [](P& p) { p.material().normalMaps = true; }},
        {"outlines", [](P& p) { p.material().outlines = true; }},
        {"alpha_as_spec_map", [](P& p) { p.material().alphaAsSpecMap = true; }},
        {"cast_shadows", [](P& p) { p.material().castShadows = true; }},
        {"recieve_shadows", [](P& p) { p.material().receiveShadows = true; }},
        {"use_vertex_colors", [](P& p) { p.material().useVertexColours = true; }},
    };
    return table;
}

void MaterialParser::parse(Material& material) {
    material_ = &material;
    depth_ = 1;
    while (depth_ > 0 && !reader_.atEnd()) {
        const std::string found = reader_.readWord();
        // What is no keyword is skipped, opening braces included.
        if (const auto keyword = keywords().find(found); keyword != keywords().end()) keyword->second(*this);
    }
}

} // namespace

void readMaterials(TokenReader& reader, const MaterialResources& resources,
                   const std::function<Material&(const std::string& name)>& create) {
    MaterialParser parser(reader, resources);
    while (!reader.atEnd()) {
        if (reader.readWord() != "material" || reader.atEnd()) continue;
        parser.parse(create(reader.readWord()));
    }
}

} // namespace Zelkor
