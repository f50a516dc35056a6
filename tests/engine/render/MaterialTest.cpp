#include "render/MaterialReader.h"

#include "RenderTest.h"
#include "io/TokenReader.h"

#include <deque>

namespace Zelkor {

namespace {

struct ReadMaterials {
    std::deque<Material> materials;
    std::vector<std::pair<std::string, TextureKind>> textures;
};

ReadMaterials read(const std::string& text) {
    ReadMaterials result;
    TokenReader reader(std::vector<char>(text.begin(), text.end()));
    const MaterialResources resources{[&](const std::string& name, TextureKind kind) {
                                          result.textures.emplace_back(name, kind);
                                          return static_cast<int>(result.textures.size()) + 9;
                                      },
                                      [](const std::string& name) { return name == "none" ? -1 : 7; }};
    readMaterials(reader, resources, [&](const std::string& name) -> Material& {
        result.materials.emplace_back().name = name;
        return result.materials.back();
    });
    return result;
}

Material readOne(const std::string& body) {
    const ReadMaterials result = read("material m { " + body + " }");
    EXPECT_EQ(result.materials.size(), 1u) << body;
    return result.materials.at(0);
}

TEST(MaterialReaderTest, DefinitionsWithNestedBlocks) {
    const ReadMaterials result =
        read("stray material a\n{ technique { pass { shader s texture_unit { cube texture sky scale 2 4 }\n"
             "texture_unit { texture rock filtering none scroll_anim 1 2 } } } outlines }\n"
             "} material b { ambient 0.1 0.2 0.3 0.4");
    ASSERT_EQ(result.materials.size(), 2u);
    const Material& a = result.materials[0];
    EXPECT_TRUE(a.outlines) << "keywords after the nested blocks";
    ASSERT_EQ(a.textureUnits.size(), 2u);
    EXPECT_EQ(a.textureUnits[0].scaleY, 4);
    EXPECT_EQ(a.textureUnits[1].texture, 11);
    ASSERT_EQ(a.textureUnits[1].animations.size(), 1u);
    EXPECT_EQ(a.textureUnits[1].animations[0].p2, 2);
    EXPECT_EQ(result.textures[0], std::make_pair(std::string("sky"), TextureKind::cubeMap));
    EXPECT_EQ(result.textures[1], std::make_pair(std::string("rock"), TextureKind::flat));
    EXPECT_EQ(result.materials[1].ambient, (Vec4{0.1f, 0.2f, 0.3f, 0.4f}));
}

TEST(MaterialReaderTest, BlendModes) {
    const Material twoWords = readOne("scene_blend src_alpha one_minus_src_alpha outlines");
    EXPECT_EQ(twoWords.blendMode, BlendMode::alphaBlend);
    EXPECT_TRUE(twoWords.outlines);
    EXPECT_EQ(readOne("scene_blend add scene_blend odd").blendMode, BlendMode::add);

    const Material special = readOne("scene_blend specialalpha alpha_rejection greater 128");
    EXPECT_EQ(special.blendMode, BlendMode::specialAlpha);
    EXPECT_TRUE(special.specialAlphaTest);
    EXPECT_FLOAT_EQ(special.alphaRef, 128.0f / 255);
    EXPECT_FALSE(readOne("alpha_rejection greater 128 scene_blend specialalpha").specialAlphaTest);
}

TEST(MaterialReaderTest, ParametersAndAnimations) {
    const Material m = readOne("shadow_shader none shader_param size 2 "
                               "shader_param4 tint 1 2 3 4 shader_param size 3");
    ASSERT_EQ(m.shaderParams.size(), 2u);
    EXPECT_EQ(m.shaderParams[0].value, 3);
    EXPECT_EQ(m.shaderParams[1].location, ShaderParam::unresolved);

    const Material units = readOne("texture_unit { tex_coord_set 1 wave_xform scale_y sine 1 2 3 4 "
                                   "wave_xform sideways sine 1 2 3 4 colour_op add }");
    ASSERT_EQ(units.textureUnits[0].animations.size(), 1u);
    EXPECT_EQ(units.textureUnits[0].animations[0].p4, 4);
    EXPECT_TRUE(readOne("texture_unit { tex_coord_set normal }").normalTexCoords);
}

TEST(MaterialReaderTest, SurvivesBrokenText) {
    EXPECT_TRUE(readOne("texture x scale 1 2 cube scroll_anim 1 1").textureUnits.empty())
        << "before any unit";
    std::string deep = "material m ";
    for (int i = 0; i < 100000; ++i)
        deep += "pass { ";
    EXPECT_EQ(read(deep).materials.size(), 1u);
}

class MaterialManagerTest : public RenderTest {};

TEST_F(MaterialManagerTest, FindsCopiesAndSets) {
    writeTexture("rock", tgaBytes(1, 1, 24, {0, 0, 0}));
    write("materials/robot.material", "material tin { } material tin { outlines }");
    materials().loadMaterialFile("robot");
    Material* tin = materials().findMaterial("tin");
    EXPECT_FALSE(tin->outlines) << "the first of a name";

    Material* rock = materials().findMaterial("rock");
    ASSERT_EQ(rock->textureUnits.size(), 1u);
    EXPECT_EQ(rock->textureUnits[0].texture, gl().getTexture("rock"));

    rock->shader = tin->shader = 3;
    Material* copy = materials().copyMaterial(*rock);
    materials().setSketchOffset(3, 1, 2, 0, 0);
    ASSERT_EQ(copy->shaderParams.size(), 1u) << "copies take part";
    EXPECT_EQ(copy->shaderParams[0].vec, (Vec4{1, 2, 0, 0}));
    materials().removeCopy(copy);
    materials().setSketchOffset(3, 0, 0, 0, 0);
}

} // namespace

} // namespace Zelkor
