// Programs, textures and render targets in a real context.
#include "RenderTest.h"

namespace Zelkor {

namespace {

class ResourceTest : public RenderTest {
  protected:
    // The colour that a program paints the picture in.
    Pixel painted(int shader) {
        gl().bindRenderTarget(0, true);
        gl().setViewport(0, 0, 1, 1);
        gl().useShader(shader);
        glRectf(-1, -1, 1, 1);
        return pixel(5, 5);
    }
    static std::string painting(const std::string& colour) {
        return "VERTEX\nvoid main()\n{\n    gl_Position = gl_Vertex;\n}\nPIXEL\nvoid main()\n{\n"
               "    gl_FragColor =\n" +
               colour + "\n;\n}\n";
    }
    static constexpr Pixel red{255, 0, 0}, green{0, 255, 0}, blue{0, 0, 255};
};

TEST_F(ResourceTest, ProgramsAreReadOnceAndFoundByPrefix) {
    write("shaders/s.shader", painting("INCLUDE\ncolour"));
    write("shaders/colour.shader", "vec4(1.0, 0.0, 0.0, 1.0)");
    const int s = gl().loadShader("s");
    EXPECT_EQ(gl().loadShader("s"), s);
    EXPECT_EQ(painted(s), red);

    write("shaders/post/colour.shader", "vec4(0.0, 1.0, 0.0, 1.0)");
    Material& material = *materials().findMaterial("m");
    MaterialManager::setShaderParam(material, "p", 1);
    material.shaderParams[0].location = 3;
    gl().reloadShaders("post");
    EXPECT_FALSE(gl().shaders()[s].loaded);
    EXPECT_EQ(material.shaderParams[0].location, ShaderParam::unresolved);
    EXPECT_EQ(painted(s), green)
        << "the file itself is found in the plain folder, its include in the sub-folder";
    gl().reloadShaders("direct");
    EXPECT_EQ(painted(s), red);
    gl().useShader(99);
    EXPECT_EQ(gl().currentProgram, 0u);
}

TEST_F(ResourceTest, BrokenProgramsSetTheFlagAndAreTriedAgain) {
    const std::string good = painting("vec4(0.0, 0.0, 1.0, 1.0)");
    write("shaders/novertex.shader", "oops\n" + good);
    write("shaders/nopixel.shader", painting("oops"));
    write("shaders/nolink.shader",
          "varying vec2 a;\n" + painting("vec4(0.0);\n} varying vec4 a; void f() { gl_FragColor = a"));
    for (const char* name : {"missing", "novertex", "nopixel", "nolink"}) {
        gl().shaderCompileFailed = false;
        EXPECT_EQ(gl().loadShader(name), -1) << name;
        EXPECT_TRUE(gl().shaderCompileFailed) << name;
    }
    write("shaders/nopixel.shader", good);
    const int mended = gl().loadShader("nopixel");
    EXPECT_EQ(painted(mended), blue);

    // Broken while it is released: drawn without, reported once, and mended at the next use.
    write("shaders/nopixel.shader", "oops");
    gl().reloadShaders("");
    gl().shaderCompileFailed = false;
    gl().useShader(mended);
    EXPECT_EQ(gl().currentProgram, 0u);
    EXPECT_TRUE(std::exchange(gl().shaderCompileFailed, false));
    gl().useShader(mended);
    EXPECT_FALSE(gl().shaderCompileFailed);
    write("shaders/nopixel.shader", good);
    EXPECT_EQ(painted(mended), blue);
}

TEST_F(ResourceTest, VariantFollowsTheShadowCasters) {
    write("shaders/s.shader",
          "VERTEX\nconst int numShadows=0;\nconst int numLights=0;\nvarying vec4 colour;\n"
          "void main()\n{\n    gl_Position = gl_Vertex;\n"
          "    colour = vec4(float(numShadows) / 5.0, float(numLights) / 10.0, 0.0, 1.0);\n}\n"
          "PIXEL\nvarying vec4 colour;\nvoid main()\n{\n    gl_FragColor = colour;\n}\n");
    const int s = gl().loadShader("s");
    ASSERT_GE(s, 0);
    EXPECT_TRUE(near(painted(s), {0, 51, 0}));
    Scene scene;
    Mesh mesh = square("nothing", 1);
    Unit unit(mesh, 0);
    for (int i = 0; i < 3; ++i) {
        scene.lights.emplace_back().castsShadows = true;
        scene.lights.back().shadowIndex = i;
    }
    gl().setupLights(scene, unit);
    EXPECT_TRUE(near(painted(s), {153, 102, 0}));
}

TEST_F(ResourceTest, GeometryStageRunsWithTheCorePath) {
    if (!GLEW_EXT_geometry_shader4 && !GLEW_VERSION_3_2) GTEST_SKIP() << "no geometry stages here";
    write("shaders/s.shader",
          "VERTEX\nvoid main()\n{\n    gl_Position = gl_Vertex;\n    gl_FrontColor = vec4(0.0, 1.0, 0.0, "
          "1.0);\n}\n"
          "GEOMETRY\nSTRIP_OUT(3)\nvoid main()\n{\n    for (int i = 0; i < 3; i++)\n    {\n"
          "        gl_FrontColor = FRONT_COLOR_IN(i);\n        gl_Position = POSITION_IN(i) * vec4(1.0, "
          "-1.0, 1.0, 1.0);\n"
          "        EmitVertex();\n    }\n    EndPrimitive();\n}\n"
          "PIXEL\nvoid main()\n{\n    gl_FragColor = gl_Color;\n}\n");
    const int s = gl().loadShader("s");
    ASSERT_GE(s, 0);
    gl().bindRenderTarget(0, true);
    gl().useShader(s);
    glDisable(GL_CULL_FACE);
    glBegin(GL_TRIANGLES); // the upper half, which the stage turns into the lower one
    glVertex2f(-1, 0);
    glVertex2f(1, 0);
    glVertex2f(0, 1);
    glEnd();
    EXPECT_EQ(pixel(width / 2, height * 3 / 4), green);
    EXPECT_EQ(pixel(width / 2, height / 4), (Pixel{255, 255, 255}));

    write("shaders/broken.shader", painting("vec4(1.0)") + "");
    write("shaders/broken.shader", "VERTEX\nvoid main()\n{\n    gl_Position = gl_Vertex;\n}\nGEOMETRY\noops\n"
                                   "PIXEL\nvoid main()\n{\n}\n");
    EXPECT_EQ(gl().loadShader("broken"), -1);
}

TEST_F(ResourceTest, TexturesLoadOnceAndComeBackAfterRelease) {
    writeTexture("pic", tgaBytes(2, 2, 24, {0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255}));
    EXPECT_EQ(gl().getTexture("missing"), -1);
    const int first = gl().createTexture("empty", 0, 5, 6);
    const int pic = gl().getTexture("pic");
    EXPECT_EQ(gl().getTextureByName("pic"), pic);
    EXPECT_EQ(first, 0);

    const auto pixels = [&] {
        std::vector<uint8_t> read(12);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, read.data());
        return read;
    };
    const std::vector<uint8_t> expected{0, 0, 255, 255, 255, 255, 255, 0, 0, 0, 255, 0};
    gl().bindTexture(pic);
    EXPECT_EQ(pixels(), expected) << "the top row first";
    gl().textures().release();
    EXPECT_FALSE(gl().textures()[pic].loaded);
    gl().bindTexture(pic);
    EXPECT_EQ(pixels(), expected);
    gl().bindTexture(first);
    EXPECT_TRUE(gl().textures()[first].loaded) << "a texture without a file is made again, empty";
}

TEST_F(ResourceTest, CubeMapsAreSixFacesFromTheTop) {
    std::vector<uint8_t> strip;
    for (int row = 0; row < 12; ++row) // from the bottom, so face 5 first
        for (int x = 0; x < 2; ++x)
            strip.insert(strip.end(), {0, 0, static_cast<uint8_t>(50 - row / 2 * 10), 255});
    writeTexture("sky", tgaBytes(2, 12, 32, strip));
    writeTexture("flat", tgaBytes(2, 12, 24, std::vector<uint8_t>(72)));
    EXPECT_EQ(gl().loadTexture("flat", TextureKind::cubeMap, -1), -1) << "only with alpha";
    const int sky = gl().getTexture("sky", TextureKind::cubeMap);
    for (int round = 0; round < 2; ++round) {
        gl().bindTexture(sky);
        for (unsigned face = 0; face < 6; ++face) {
            uint8_t read[16] = {};
            glGetTexImage(GL_TEXTURE_CUBE_MAP_POSITIVE_X + face, 0, GL_RGBA, GL_UNSIGNED_BYTE, read);
            EXPECT_EQ(read[0], 10 * face);
        }
        gl().textures().release(); // comes back as a cube map
    }
}

TEST_F(ResourceTest, RenderTargetsAreDrawnIntoAndSampled) {
    const int target = gl().createRenderTarget("framebuffer", 32, 16);
    ASSERT_EQ(target, 1);
    const int colour = gl().renderTarget(target).colourTexture;
    gl().bindRenderTarget(target, true);
    gl().setViewport(0.5f, 0, 0.5f, 0);
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[0], 16);
    EXPECT_EQ(viewport[3], 1) << "a height of 0 becomes 1";

    gl().resizeRenderTarget(target, 1, 1 << 30);
    EXPECT_EQ(gl().renderTarget(target).width, 8);
    EXPECT_EQ(gl().renderTarget(target).height, gl().getMaxTextureSize());
    gl().resizeRenderTarget(target, 16, 16);
    gl().bindRenderTarget(target, true);
    write("shaders/red.shader", painting("vec4(1.0, 0.0, 0.0, 1.0)"));
    gl().setViewport(0, 0, 1, 1);
    gl().useShader(gl().loadShader("red"));
    glRectf(-1, -1, 1, 0); // the lower half

    Material post;
    post.textureUnits.emplace_back().texture = colour;
    write("shaders/copy.shader",
          "VERTEX\nvarying vec2 at;\nvoid main()\n{\n    gl_Position = ftransform();\n"
          "    at = gl_MultiTexCoord0.xy;\n}\nPIXEL\nvarying vec2 at;\nuniform sampler2D tex;\n"
          "void main()\n{\n    gl_FragColor = texture2D(tex, at);\n}\n");
    post.shader = gl().loadShader("copy");
    gl().bindRenderTarget(0, true);
    gl().renderPostEffect({&post, 0, 0, 1, 1});
    EXPECT_TRUE(near(pixel(10, height - 5), red));
    EXPECT_TRUE(near(pixel(10, 5), {255, 255, 255}));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

} // namespace

} // namespace Zelkor
