// A renderer with a real off-screen context and a data folder of its own.
#pragma once

#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "render/GlApi.h"
#include "render/GlRenderer.h"
#include "render/MaterialManager.h"
#include "render/SceneDrawing.h"
#include "sdl/SdlPlatform.h"
#include "support/TempData.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace Zelkor {

// An uncompressed picture: rows from the bottom, each pixel's bytes as the file holds them.
inline std::vector<uint8_t> tgaBytes(int width, int height, int bits, const std::vector<uint8_t>& data,
                                     const std::vector<uint8_t>& palette = {}) {
    std::vector<uint8_t> bytes(18);
    bytes[1] = palette.empty() ? 0 : 1;
    bytes[16] = static_cast<uint8_t>(bits);
    for (const std::size_t byte : {0u, 1u}) {
        bytes[12 + byte] = static_cast<uint8_t>(width >> 8 * byte);
        bytes[14 + byte] = static_cast<uint8_t>(height >> 8 * byte);
    }
    bytes.insert(bytes.end(), palette.begin(), palette.end());
    bytes.insert(bytes.end(), data.begin(), data.end());
    return bytes;
}

class RenderTest : public ::testing::Test {
  protected:
    static constexpr int width = 96, height = 64;
    using Pixel = std::array<int, 3>;

    void SetUp() override { start(probeContext); }

    void start(GlRenderer::Probe probe) {
        managers.reset();
        platform::setCurrent(&system);
        TimerManager::reset();
        managers = std::make_unique<EngineManagers>();
        managers->renderer = std::make_unique<GlRenderer>(probe);
        ASSERT_TRUE(gl().init("", width, height, 32, false));
        write("shaders/plain.shader", plainShader);
    }

    void TearDown() override {
        managers.reset();
        platform::setCurrent(nullptr);
    }

    GlRenderer& gl() { return static_cast<GlRenderer&>(*managers->renderer); }
    MaterialManager& materials() { return *managers->materialManager; }

    void write(const std::string& name, const std::string& text) { data.write(name, text); }
    void writeTexture(const std::string& name, const std::vector<uint8_t>& bytes) {
        data.write("textures/" + name + ".tga", bytes);
    }

    // Flat white, ready for what a test draws.
    void beginFrame(const Camera& camera) {
        gl().bindRenderTarget(0, true);
        gl().setViewport(0, 0, 1, 1);
        gl().beginScene(camera);
        gl().applyCamera(camera);
    }
    Pixel pixel(int x, int y) {
        const Image image = gl().readFramebuffer();
        const uint8_t* at = &image.pixels[static_cast<std::size_t>(3 * (y * image.width + x))];
        return {at[0], at[1], at[2]};
    }
    static bool near(const Pixel& a, const Pixel& b, int tolerance = 2) {
        for (std::size_t i = 0; i < 3; ++i)
            if (std::abs(a[i] - b[i]) > tolerance) return false;
        return true;
    }

    // A camera whose view is 20 units high at the plane z = 0.
    static Camera camera() {
        Camera c;
        c.fieldOfView = 30;
        c.aspect = static_cast<float>(width) / height;
        c.position = {0, 0, 10 / std::tan(pi / 12)};
        c.nearDistance = 5;
        c.farDistance = 200;
        return c;
    }

    // A square of half size h facing the camera, in one submesh.
    static Mesh square(const std::string& material, float h) {
        Mesh mesh;
        mesh.vertices.positions = {{-h, -h, 0}, {h, -h, 0}, {h, h, 0}, {-h, h, 0}};
        mesh.vertices.normals.assign(4, {0, 0, 1});
        mesh.vertices.texCoords = {{0, 1}, {1, 1}, {1, 0}, {0, 0}};
        mesh.vertices.texCoordSetCount = 1;
        mesh.submeshes.emplace_back().materialName = material;
        mesh.submeshes[0].indices = {0, 1, 2, 0, 2, 3};
        mesh.boxMin = {-h, -h, 0};
        mesh.boxMax = {h, h, 0};
        return mesh;
    }

    static constexpr const char* plainShader = "VERTEX\nvoid main()\n{\n    gl_Position = ftransform();\n}\n"
                                               "PIXEL\nuniform vec4 basecolor;\nvoid main()\n{\n"
                                               "    gl_FragColor = basecolor;\n}\n";

    platform::SdlPlatform system{{.headless = true}};
    TempData data;
    std::unique_ptr<EngineManagers> managers;
};

} // namespace Zelkor
