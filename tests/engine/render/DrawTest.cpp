// Units drawn into a real context, looked at pixel by pixel.
#include "Picture.h"
#include "RenderTest.h"
#include "animation/SkeletonInstance.h"
#include "resources/UnitManager.h"

namespace Zelkor {

namespace {

class DrawTest : public RenderTest {
  protected:
    // The material of a name, drawn by the plain program in one colour.
    Material& plain(const std::string& name, const Vec4& colour) {
        Material& material = *materials().findMaterial(name);
        material.textureUnits.clear();
        material.shader = gl().loadShader("plain");
        material.ambient = colour;
        return material;
    }
    unsigned trianglesDrawn(Unit& unit, bool special = false) {
        unsigned query = 0, count = 0;
        glGenQueries(1, &query);
        glBeginQuery(GL_PRIMITIVES_GENERATED, query);
        renderUnit(unit, scene, view, special);
        glEndQuery(GL_PRIMITIVES_GENERATED);
        glGetQueryObjectuiv(query, GL_QUERY_RESULT, &count);
        glDeleteQueries(1, &query);
        return count;
    }
    Pixel middle() { return pixel(width / 2, height / 2); }

    static constexpr Pixel white{255, 255, 255};
    Scene scene;
    Camera view = camera();
};

TEST_F(DrawTest, OutlinesDrawTwiceWithTheEdge) {
    Material& edge = plain("edge", {0, 0, 0, 1});
    plain("tin", {1, 0, 0, 1}).outlines = true;
    Mesh mesh = square("tin", 4);
    Unit unit(mesh, 0);
    unit.scale = {0.5f, 0.5f, 0.5f};
    beginFrame(view);
    EXPECT_EQ(trianglesDrawn(unit), 4u);
    EXPECT_EQ(edge.ambient, (Vec4{1, 0, 0, 1})) << "the outline takes the colour of what it surrounds";

    materials().findMaterial("tin")->outlines = false;
    EXPECT_EQ(trianglesDrawn(unit), 2u);
    materials().findMaterial("tin")->enabled = false;
    EXPECT_EQ(trianglesDrawn(unit), 0u);
}

TEST_F(DrawTest, WithoutShadersEverythingIsASilhouette) {
    start([] {
        probeContext();
        return GlCapabilities{true, false, false};
    });
    ASSERT_FALSE(gl().shadersSupported);
    writeTexture("rock", tgaBytes(1, 1, 24, {0, 255, 0}));
    Material& rock = *materials().findMaterial("rock");
    rock.ambient = {0.2f, 0.4f, 0.6f, 1};
    Mesh mesh = square("rock", 4);
    mesh.vertices.colours.assign(4, {255, 0, 0});
    Unit unit(mesh, 0);
    scene.lights.emplace_back();
    beginFrame(view);
    renderUnit(unit, scene, view, false);
    EXPECT_TRUE(near(middle(), {51, 102, 153})) << "no texture, no light, no vertex colour";
    rock.outlines = true;
    renderUnit(unit, scene, view, false);
    EXPECT_TRUE(near(middle(), {43, 66, 95})) << "the edge over it, times the pencil's tint";
    EXPECT_FALSE(glIsEnabled(GL_FOG)) << "what is drawn afterwards keeps its colour";
}

TEST_F(DrawTest, SkinnedVerticesAndArraysReachTheProgram) {
    write("shaders/shown.shader",
          "VERTEX\nvarying vec4 shown;\nvoid main()\n{\n    gl_Position = ftransform();\n"
          "    shown = vec4(gl_Normal.x, gl_Color.g, gl_MultiTexCoord0.x, 1.0);\n}\n"
          "PIXEL\nvarying vec4 shown;\nvoid main()\n{\n    gl_FragColor = shown;\n}\n");
    plain("tin", {1, 1, 1, 1}).shader = gl().loadShader("shown");
    Mesh mesh = square("tin", 2);
    mesh.vertices.texCoords = {{0.2f, 0}, {0.2f, 0}, {0.2f, 0}, {0.2f, 0}};
    Unit unit(mesh, 0);
    beginFrame(view);
    renderUnit(unit, scene, view, false);
    EXPECT_TRUE(near(middle(), {0, 255, 51})) << "white without vertex colours";
    mesh.vertices.colours.assign(4, {0, 102, 0});
    renderUnit(unit, scene, view, false);
    EXPECT_TRUE(near(middle(), {0, 102, 51}));

    beginFrame(view);
    RenderItem& item = unit.items.at(0);
    item.skinnedPositions = mesh.vertices.positions;
    for (Vec3& position : item.skinnedPositions)
        position.x += 8;
    item.skinnedNormals.assign(4, {1, 0, 0});
    renderUnit(unit, scene, view, false);
    EXPECT_EQ(middle(), white) << "drawn where the joints took it";
    EXPECT_TRUE(near(pixel(width / 2 + static_cast<int>(8 * height / 20), height / 2), {255, 102, 51}));
}

TEST_F(DrawTest, ItemsOnAJointFollowItAndTheNextOneDoesNot) {
    plain("tin", {1, 0, 0, 1});
    Mesh mesh = square("tin", 1);
    mesh.submeshes.push_back(mesh.submeshes[0]);
    SkeletonData bones;
    bones.bindPose.resize(1);
    bones.parents = {-1};
    bones.jointNames = {"root"};
    Unit unit(mesh, 0);
    unit.skeleton = std::make_unique<SkeletonInstance>(bones);
    Mat4& skin = unit.skeleton->skinMatrices.at(0);
    mat4FromTransform(skin, quatFromAxisAngle(pi / 2, {0, 0, 1}), {1, 1, 1}, {0, 3, 0});
    unit.items.at(0).joint = 0;
    unit.scale = {2, 2, 2};
    beginFrame(view);
    renderUnit(unit, scene, view, false);
    const auto at = [this](float y) {
        return pixel(width / 2, static_cast<int>(height / 2 - y * height / 20));
    };
    EXPECT_EQ(at(6), (Pixel{255, 0, 0}));
    EXPECT_EQ(at(0), (Pixel{255, 0, 0}));
    EXPECT_EQ(at(3), white);
}

TEST_F(DrawTest, TestedAndBlendedSurfacesAreDrawnInBothPasses) {
    Material& glass = plain("glass", {1, 0, 0, 0.5f});
    glass.alphaTest = true;
    glass.alphaRef = 0.25f;
    glass.blendMode = BlendMode::alphaBlend;
    Mesh mesh = square("glass", 4);
    Unit unit(mesh, 0);
    beginFrame(view);
    renderUnit(unit, scene, view, false);
    EXPECT_EQ(middle(), (Pixel{255, 0, 0})) << "solid in the main pass";
    beginFrame(view);
    renderUnit(unit, scene, view, true);
    EXPECT_TRUE(near(middle(), {255, 128, 128}));
}

TEST_F(DrawTest, LinesBackgroundAndCapture) {
    Camera sky = view;
    Mesh mesh = square("tin", 3);
    plain("tin", {0, 1, 0, 1});
    writeTexture("sky", tgaBytes(1, 2, 24, {255, 0, 0, 0, 0, 255})); // red above blue
    sky.backgroundTexture = gl().getTexture("sky");
    gl().bindRenderTarget(0, true);
    gl().setViewport(0, 0, 1, 1);
    renderScene(scene, sky);
    gl().drawLine({-15, 0, 0}, {15, 0, 0}, {0, 0, 0});
    const ColouredLine upright{{0, -10, 0}, {0, 10, 0}, {1, 1, 0}};
    gl().drawLines(&upright, 1);
    EXPECT_TRUE(near(pixel(1, height / 4), {255, 0, 0}, 8));
    EXPECT_TRUE(near(pixel(width - 2, height * 3 / 4), {0, 0, 255}, 8));
    const Image image = gl().readFramebuffer();
    int black = 0, yellow = 0;
    for (std::size_t i = 0; i < image.pixels.size(); i += 3) {
        black += image.pixels[i] == 0 && image.pixels[i + 2] == 0;
        yellow += image.pixels[i] == 255 && image.pixels[i + 1] == 255 && image.pixels[i + 2] == 0;
    }
    EXPECT_NEAR(black, width, 3);
    EXPECT_NEAR(yellow, height, 3);
    gl().captureFrame = true;
    gl().present();
    EXPECT_EQ(gl().capturedFrame.pixels, image.pixels) << "kept before the buffers are swapped";
}

// --- Pictures --------------------------------------------------------------------------------------------

// A ring in the x/y plane, with normals.
Mesh ring(const std::string& material) {
    constexpr int around = 32, across = 16;
    constexpr float radius = 5, thickness = 2.4f;
    Mesh mesh;
    mesh.submeshes.emplace_back().materialName = material;
    for (int i = 0; i < around; ++i) {
        for (int j = 0; j < across; ++j) {
            const float u = 2 * pi * static_cast<float>(i) / around,
                        v = 2 * pi * static_cast<float>(j) / across;
            const Vec3 outwards{std::cos(u), std::sin(u), 0};
            const Vec3 normal = std::cos(v) * outwards + Vec3{0, 0, std::sin(v)};
            mesh.vertices.normals.push_back(normal);
            mesh.vertices.positions.push_back(radius * outwards + thickness * normal);
            const int nextI = (i + 1) % around, nextJ = (j + 1) % across;
            for (const auto& [a, b] :
                 {std::pair{i, j}, {nextI, j}, {nextI, nextJ}, {i, j}, {nextI, nextJ}, {i, nextJ}})
                mesh.submeshes[0].indices.push_back(a * across + b);
        }
    }
    const float reach = radius + thickness;
    mesh.boxMin = {-reach, -reach, -thickness};
    mesh.boxMax = {reach, reach, thickness};
    return mesh;
}

TEST_F(DrawTest, PictureOfLitOutlinedRings) {
    write("shaders/lit.shader",
          "VERTEX\nvarying float light;\nvoid main()\n{\n    gl_Position = ftransform();\n"
          "    light = dot(normalize(gl_NormalMatrix * gl_Normal), "
          "normalize(gl_LightSource[0].position.xyz));\n}\n"
          "PIXEL\nvarying float light;\nuniform vec4 basecolor;\nvoid main()\n{\n"
          "    gl_FragColor = basecolor * (0.5 + 0.5 * light);\n}\n");
    write("shaders/hull.shader", "VERTEX\nuniform vec4 resScale;\nvoid main()\n{\n    vec3 n = "
                                 "normalize(gl_NormalMatrix * gl_Normal);\n"
                                 "    gl_Position = ftransform();\n    gl_Position.xy += n.xy * resScale.zw "
                                 "* vec2(1.0, -1.0) * gl_Position.w;\n}\n"
                                 "PIXEL\nvoid main()\n{\n    gl_FragColor = vec4(0.1, 0.1, 0.1, 1.0);\n}\n");
    write("materials/rings.material",
          "material edge { shader hull cull_hardware front } material bronze { shader lit outlines ambient "
          "0.9 0.6 0.3 1 }"
          " material glass { shader plain scene_blend alpha_blend ambient 0.2 0.4 0.9 0.5 }");
    materials().loadMaterialFile("rings");
    scene.lights.emplace_back().direction = {1, -1, -1};
    Mesh bronze = ring("bronze"), glass = square("glass", 5);
    const auto place = [this](Mesh& mesh, const Vec3& position, const Quat& orientation) {
        Unit* unit = scene.createUnit("nothing", position, orientation);
        unit->mesh = &mesh;
        unit->boundingCentre = (mesh.boxMin + mesh.boxMax) * 0.5f;
        unit->boundingRadius = distance(mesh.boxMax, unit->boundingCentre);
        unit->items.emplace_back(mesh.submeshes[0], materials().findMaterial(mesh.submeshes[0].materialName));
        unit->inSpecialList = mesh.submeshes[0].materialName == "glass";
        unit->inMainList = !unit->inSpecialList;
    };
    place(bronze, {-4, 0, 0}, {});
    place(bronze, {4, 0, -2}, quatFromAxisAngle(1.2f, {0, 1, 0}));
    place(glass, {5, -5, 5}, {});
    gl().bindRenderTarget(0, true);
    gl().setViewport(0, 0, 1, 1);
    renderScene(scene, view);
    expectPicture(gl().readFramebuffer(), "rings");
    scene.clear();
}

TEST_F(DrawTest, OverlayCoordinatesRunFromTheTopLeft) {
    beginFrame(view);
    for (int round = 0; round < 40; ++round)
        gl().begin2D(); // the matrix stack does not overflow
    gl().useShader(-1);
    gl().disableTexturing();
    glDisable(GL_CULL_FACE);
    glColor3f(1, 0, 0);
    glRectf(0, 0, 0.25f, 0.25f);
    glColor3f(0, 0, 1);
    glRectf(0.75f, 0.75f, 1, 1);
    EXPECT_EQ(pixel(0, 0), (Pixel{255, 0, 0}));
    EXPECT_EQ(pixel(width / 4 - 1, height / 4 - 1), (Pixel{255, 0, 0}));
    EXPECT_EQ(pixel(width / 4, height / 4), white);
    EXPECT_EQ(pixel(width - 1, height - 1), (Pixel{0, 0, 255}));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

} // namespace

} // namespace Zelkor
