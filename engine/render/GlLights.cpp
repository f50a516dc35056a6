// Fixed-function lights, which the programs read as well.
#include "render/GlApi.h"
#include "render/GlRenderer.h"
#include "render/LightChoice.h"

namespace Zelkor {

namespace {

constexpr float black[4] = {0, 0, 0, 1};
constexpr float dark[4] = {0, 0, 0, 0};
// A light that shines from a direction is placed this far away, for programs that look at its position.
constexpr float farAway = 10000;
constexpr int noCutoff = 180; // degrees: shines all around

void setVector(GLenum light, GLenum what, const Vec3& v, float w) {
    const float values[4] = {v.x, v.y, v.z, w};
    glLightfv(light, what, values);
}

Vec3 unitLength(Vec3 v) {
    normalize(v);
    return v;
}

// position and orientation are the camera's. The view transform is current, so that what is given here in
// world space ends up in view space; the camera-relative types turn it once more.
void placeLight(GLenum gl, const Light& light, const Vec3& position, const Quat& orientation) {
    Quat inverse;
    Vec3 turned;
    quatInverse(inverse, orientation);
    switch (light.type) {
    case Light::directional:
        setVector(gl, GL_POSITION, -light.direction * farAway, 0);
        break;
    case Light::point:
        setVector(gl, GL_POSITION, light.position, 1);
        break;
    case Light::spot:
        setVector(gl, GL_POSITION, quatRotate(turned, inverse, light.position - position), 1);
        setVector(gl, GL_SPOT_DIRECTION, unitLength(quatRotate(turned, inverse, light.direction)), 0);
        glLighti(gl, GL_SPOT_CUTOFF, static_cast<int>(light.spotCutoff));
        break;
    case Light::viewHighlight:
        setVector(gl, GL_POSITION, unitLength(-quatRotate(turned, inverse, light.direction)) * farAway, 0);
        break;
    case Light::pointHighlight:
        setVector(gl, GL_POSITION, quatRotate(turned, inverse, light.position) - position, 1);
        break;
    default:
        break;
    }
}

} // namespace

void GlRenderer::setupLights(const Scene& scene, Unit& unit) {
    const LightChoice choice = chooseLights(scene, unit.worldBoxMin, unit.worldBoxMax);
    lightCount_ = choice.count;
    shadowCasterCount_ = choice.shadowCasters;
    for (int i = 0; i < choice.count; ++i) {
        const Light& light = *choice.lights[i];
        const GLenum gl = GL_LIGHT0 + static_cast<GLenum>(i);
        const float colour[4] = {light.red, light.green, light.blue, 1};
        const bool highlight = light.type == Light::viewHighlight || light.type == Light::pointHighlight;
        glLightfv(gl, GL_AMBIENT, black);
        glLightfv(gl, GL_DIFFUSE, highlight ? black : colour);
        glLightfv(gl, GL_SPECULAR, highlight ? colour : dark);
        glLightf(gl, GL_CONSTANT_ATTENUATION, light.constantAttenuation);
        glLightf(gl, GL_LINEAR_ATTENUATION, light.linearAttenuation);
        glLightf(gl, GL_QUADRATIC_ATTENUATION, light.quadraticAttenuation);
        glLighti(gl, GL_SPOT_CUTOFF, noCutoff);
        placeLight(gl, light, cameraPosition_, cameraOrientation_);
        glEnable(gl);
    }
    for (int i = choice.count; i < LightChoice::maxLights; ++i) {
        glDisable(GL_LIGHT0 + static_cast<GLenum>(i));
        glLightfv(GL_LIGHT0 + static_cast<GLenum>(i), GL_DIFFUSE, black);
    }
    glEnable(GL_LIGHTING);
}

} // namespace Zelkor
