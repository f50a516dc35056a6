// What applying a material and beginning a scene leave in the context.
#include "RenderTest.h"

namespace Zelkor {

namespace {

class StateTest : public RenderTest {
  protected:
    static int integer(GLenum what) {
        GLint value = 0;
        glGetIntegerv(what, &value);
        return value;
    }
    static float real(GLenum what) {
        GLfloat value = 0;
        glGetFloatv(what, &value);
        return value;
    }
    std::vector<float> uniformValue(const char* name, std::size_t count) {
        std::vector<float> values(count, -99);
        glGetUniformfv(gl().currentProgram, gl().getUniformLoc(name), values.data());
        return values;
    }
    static void expectNear(const std::vector<float>& actual, const std::vector<float>& expected) {
        ASSERT_EQ(actual.size(), expected.size());
        for (std::size_t i = 0; i < actual.size(); ++i)
            EXPECT_NEAR(actual[i], expected[i], 1e-5f) << i;
    }
    void apply(Material& material) { materials().applyMaterial(material); }
    // A program that mentions every named uniform.
    int shaderUsing(const std::string& declarations, const std::string& sum) {
        static int number = 0;
        const std::string name = "uses" + std::to_string(number++);
        write("shaders/" + name + ".shader",
              "VERTEX\nvoid main()\n{\n    gl_Position = gl_Vertex;\n}\nPIXEL\n" + declarations +
                  "\nvoid main()\n{\n    gl_FragColor = " + sum + ";\n}\n");
        return gl().loadShader(name);
    }
};

TEST_F(StateTest, BlendModes) {
    struct Row {
        BlendMode mode;
        int source, destination;
        bool lit;
    };
    for (const Row& row :
         {Row{BlendMode::add, GL_ONE, GL_ONE, false}, Row{BlendMode::modulate, GL_DST_COLOR, GL_ZERO, false},
          Row{BlendMode::alphaBlend, GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, true},
          Row{BlendMode::alphaAdd, GL_SRC_ALPHA, GL_ONE, true},
          Row{BlendMode::brighten, GL_DST_COLOR, GL_ONE, true},
          Row{static_cast<BlendMode>(7), GL_DST_COLOR, GL_ONE, true}, // keeps what was there
          Row{BlendMode::specialAlpha, GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, true}}) {
        Material material;
        material.blendMode = row.mode;
        apply(material);
        EXPECT_EQ(integer(GL_BLEND_SRC), row.source) << static_cast<int>(row.mode);
        EXPECT_EQ(integer(GL_BLEND_DST), row.destination) << static_cast<int>(row.mode);
        EXPECT_EQ(glIsEnabled(GL_LIGHTING) == GL_TRUE, row.lit) << static_cast<int>(row.mode);
        EXPECT_TRUE(glIsEnabled(GL_BLEND));
        EXPECT_FALSE(integer(GL_DEPTH_WRITEMASK));
    }
    gl().bindRenderTarget(gl().createRenderTarget("t", 8, 8), false);
    gl().applyBlendState(BlendMode::specialAlpha, false, 0);
    EXPECT_EQ(integer(GL_BLEND_DST), GL_ONE);
    Material opaque;
    apply(opaque);
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_TRUE(integer(GL_DEPTH_WRITEMASK));
}

TEST_F(StateTest, AlphaTestCullingAndBias) {
    Material material;
    material.alphaTest = true;
    material.alphaRef = 128.0f / 255;
    material.blendMode = BlendMode::specialAlpha;
    material.specialAlpha = true;
    apply(material);
    EXPECT_EQ(integer(GL_ALPHA_TEST_FUNC), GL_LESS) << "the second test replaces the first";
    EXPECT_EQ(real(GL_ALPHA_TEST_REF), 1);
    material.specialAlphaTest = false;
    material.cullFront = true;
    material.depthBias = 0.5f;
    apply(material);
    EXPECT_EQ(integer(GL_ALPHA_TEST_FUNC), GL_GREATER);
    EXPECT_NEAR(real(GL_ALPHA_TEST_REF), 128.0f / 255, 1e-4f);
    EXPECT_EQ(real(GL_POLYGON_OFFSET_UNITS), -1000);
    material = {};
    material.cullNone = true;
    apply(material);
    EXPECT_FALSE(glIsEnabled(GL_ALPHA_TEST) || glIsEnabled(GL_CULL_FACE) ||
                 glIsEnabled(GL_POLYGON_OFFSET_FILL));
}

TEST_F(StateTest, ColoursAndParameters) {
    Material material;
    material.shader = shaderUsing("uniform vec4 basecolor, alphaCol, four;\nuniform float one, many[3];",
                                  "basecolor + alphaCol + four * one * many[0] * many[2]");
    ASSERT_GE(material.shader, 0);
    material.ambient = {0.5f, 0.5f, 0.5f, 1};
    MaterialManager::setShaderParam(material, "one", 4);
    MaterialManager::setShaderParam4(material, "four", 1, 2, 3, 4);
    material.shaderParams.emplace_back().name = "many";
    material.shaderParams.back().values = {7, 8, 9};
    apply(material);
    EXPECT_EQ(uniformValue("basecolor", 4), (std::vector<float>{0.5f, 0.5f, 0.5f, 1})) << "white paper";
    EXPECT_EQ(uniformValue("four", 4), (std::vector<float>{1, 2, 3, 4}));
    EXPECT_EQ(uniformValue("one", 1)[0], 4);
    EXPECT_EQ(uniformValue("many[2]", 1)[0], 9);
    gl().clearColour = {1, 1, 0.5f, 1};
    apply(material);
    expectNear(uniformValue("basecolor", 4), {0.57f, 0.57f, 0.285f, 1});
    expectNear(uniformValue("alphaCol", 4), {0.4788f, 0.3705f, 0.1767f, 1});
}

TEST_F(StateTest, BindingSetsViewAndTime) {
    const int shader =
        shaderUsing("uniform vec4 resScale, alphaCol;\nuniform float time;", "resScale + alphaCol * time");
    gl().setViewport(0, 0, 0.5f, 1);
    managers->timerManager->findTimer("main")->total = 2.5;
    gl().useShader(shader);
    expectNear(uniformValue("resScale", 4), {1.75f, -1.3f, 3.5f / (width / 2), -2.6f / height});
    expectNear(uniformValue("alphaCol", 4), {0.84f, 0.65f, 0.62f, 1});
    expectNear(uniformValue("time", 1), {2.5f});
}

TEST_F(StateTest, TextureUnits) {
    writeTexture("a", tgaBytes(1, 1, 24, {0, 0, 0}));
    writeTexture("b", tgaBytes(1, 1, 24, {9, 9, 9}));
    Material material;
    material.shader =
        shaderUsing("uniform sampler2D tex, tex1;", "texture2D(tex, vec2(0.0)) + texture2D(tex1, vec2(0.0))");
    for (const char* name : {"a", "b"})
        material.textureUnits.emplace_back().texture = gl().getTexture(name);
    TextureUnit& unit = material.textureUnits[1];
    unit.scaleX = 2;
    unit.offsetX = 0.25f;
    unit.animations.push_back({TexAnim::scroll, 0.5f, 0, 0, 0});
    unit.animations.push_back({TexAnim::waveScrollY, 1, 0.5f, 0, 2});
    unit.animations.push_back({TexAnim::waveScaleY, 1, 0, 0, 0});
    managers->timerManager->findTimer("main")->total = 1;
    apply(material);
    glActiveTexture(GL_TEXTURE1);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(integer(GL_TEXTURE_BINDING_2D), static_cast<int>(gl().textures()[unit.texture].glName));
    float matrix[16];
    glGetFloatv(GL_TEXTURE_MATRIX, matrix);
    EXPECT_NEAR(matrix[0], 0.5f, 1e-5f);
    EXPECT_NEAR(matrix[5], 0.5f, 1e-5f) << "1 / (1 + a wave of 1)";
    EXPECT_NEAR(matrix[12], 0.75f, 1e-5f);
    EXPECT_NEAR(matrix[13], 12.5f, 1e-4f) << "5 (1 + 0.5 + 1 sin(pi / 2))";
    glActiveTexture(GL_TEXTURE0);

    Material plain;
    apply(plain);
    glActiveTexture(GL_TEXTURE1);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D)) << "units of the material before are off";
    glActiveTexture(GL_TEXTURE0);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(StateTest, FogOfTheScene) {
    Scene scene;
    Camera view = camera();
    view.scene = &scene;
    scene.fogMode = FogMode::exponential;
    scene.fogStart = 0.25f;
    beginFrame(view);
    EXPECT_TRUE(gl().fogEnabled && glIsEnabled(GL_FOG));
    EXPECT_EQ(integer(GL_FOG_MODE), GL_EXP);
    EXPECT_EQ(real(GL_FOG_DENSITY), 0.25f);
    // Additive drawing takes fog off, the next solid one puts it back.
    gl().applyBlendState(BlendMode::add, false, 0);
    EXPECT_FALSE(glIsEnabled(GL_FOG));
    gl().applyBlendState(BlendMode::opaque, false, 0);
    EXPECT_TRUE(glIsEnabled(GL_FOG));
    scene.fogMode = FogMode::none;
    beginFrame(view);
    EXPECT_FALSE(gl().fogEnabled || glIsEnabled(GL_FOG));
}

TEST_F(StateTest, LightsOfEachKind) {
    Scene scene;
    Mesh mesh = square("nothing", 1);
    Unit unit(mesh, 0);
    Light light;
    light.red = 0.5f;
    light.direction = {0, 0, -1};
    light.position = {1, 2, 3};
    for (const int type : {Light::directional, Light::point, Light::spot, Light::viewHighlight}) {
        light.type = type;
        scene.lights.push_back(light);
    }
    Camera view = camera();
    view.orientation = quatFromAxisAngle(pi / 2, {0, 1, 0});
    beginFrame(view);
    gl().setupLights(scene, unit);
    const auto value = [](int index, GLenum what) {
        std::array<float, 4> v{};
        glGetLightfv(GL_LIGHT0 + static_cast<GLenum>(index), what, v.data());
        return v;
    };
    // In view space: what stands at +x of the world is behind a camera that looks along -x.
    EXPECT_NEAR(value(0, GL_POSITION)[0], -10000, 1);
    EXPECT_NEAR(value(1, GL_POSITION)[2], 1, 1e-5f);
    EXPECT_EQ(value(2, GL_SPOT_CUTOFF)[0], 45);
    EXPECT_EQ(value(3, GL_DIFFUSE)[0], 0) << "only a highlight";
    EXPECT_EQ(value(3, GL_SPECULAR)[0], 0.5f);
    scene.lights.resize(1);
    gl().setupLights(scene, unit);
    EXPECT_FALSE(glIsEnabled(GL_LIGHT1));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

} // namespace

} // namespace Zelkor
