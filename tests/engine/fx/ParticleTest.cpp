// Effects from their text to the picture.
#include "fx/ParticleManager.h"

#include "core/Random.h"
#include "io/TokenReader.h"
#include "engine/render/RenderTest.h"

#include <functional>

namespace Zelkor {

namespace {

EffectDesc read(const std::string& text) {
    TokenReader reader(std::vector<char>(text.begin(), text.end()));
    return readEffect(reader, [](const std::string& name) { return static_cast<int>(name.size()); });
}

// One set played in even steps.
struct Played {
    explicit Played(const std::string& set, const SolidTiles* ground = nullptr)
        : effect(read("Effect{ ParticleSet{ " + set + " } }")),
          system(effect.sets.at(0), nullptr, {}, {}, 0), tiles(ground) {}
    bool step(float dt) { return system.update(time += static_cast<double>(dt), dt, tiles); }
    Particle operator[](int slot) const { return system.particle(slot); }

    EffectDesc effect;
    ParticleSystem system;
    const SolidTiles* tiles;
    double time = 0;
};

TEST(EffectFile, KeywordsDefaultsAndWhatIsSkipped) {
    const EffectDesc effect = read(
        "junk Effect{ Sound boom nonsense 5 ParticleSet{ speed_aligned 2 rot_speed -3 4 num_particles 70000 "
        "texture t material m shader s blend_mode 1 size 1 2 3 4 color .1 .2 .3 .4 .5 .6 pivot 7 8 9 alpha .5 .75 "
        "Emitter{ spawn_rate 5 init_spawn 6 speed 7 8 dir 1 2 3 spread 9 offset 4 5 6 radius 2 } "
        "Affector{ start_time 1 end_time 2 lin_alpha 3 lin_force 4 5 6 } } ParticleSet { Affector{ collision x } } }");
    ASSERT_EQ(effect.sets.size(), 2u);
    EXPECT_EQ(effect.sounds, std::vector<int>{4});
    const ParticleSetDesc &set = effect.sets[0], &plain = effect.sets[1];
    EXPECT_FALSE(set.speedAligned) << "only 1 is true";
    EXPECT_EQ(set.numParticles, EffectDesc::maxParticles);
    EXPECT_EQ(set.texture + set.material + set.shader, "tms");
    EXPECT_EQ((std::vector<float>{set.rotSpeedMin, set.rotSpeedMax, set.widthMin, set.heightMin, set.widthMax,
                                  set.heightMax, set.alphaMin, set.alphaMax, static_cast<float>(set.blendMode)}),
              (std::vector<float>{-3, 4, 1, 2, 3, 4, 0.5f, 0.75f, 1}));
    EXPECT_EQ(set.pivot, (Vec3{7, 8, 9}));
    EXPECT_FLOAT_EQ(set.colourMin.z, 0.3f);
    EXPECT_FLOAT_EQ(set.colourMax.x, 0.4f);
    const EmitterDesc& emitter = set.emitters.at(0);
    EXPECT_EQ((std::vector<float>{emitter.spawnRate, static_cast<float>(emitter.initSpawn), emitter.speedMin,
                                  emitter.speedMax, emitter.spread, emitter.radius}),
              (std::vector<float>{5, 6, 7, 8, 9, 2}));
    EXPECT_EQ(emitter.direction, (Vec3{1, 2, 3}));
    EXPECT_EQ(emitter.offset, (Vec3{4, 5, 6}));
    const AffectorDesc& affector = set.affectors.at(0);
    EXPECT_EQ(affector.kind, AffectorDesc::linForce) << "the later kind counts";
    EXPECT_EQ(affector.parameters[2], 6);
    EXPECT_EQ(affector.endTime, 2);
    EXPECT_TRUE(plain.speedAligned);
    EXPECT_EQ(plain.numParticles, 0) << "nothing is left of what one effect may have";
    EXPECT_EQ(plain.blendMode, 3);
    EXPECT_EQ(plain.affectors.at(0).kind, AffectorDesc::collision);
}

TEST(Particles, DrawsComeInTheirOrder) {
    seedRandom(5);
    const EffectDesc effect = read("Effect{ ParticleSet{ num_particles 1 speed_aligned 0 rot_speed -90 90 size 1 2 3 4 "
                                   "color 0 .2 .4 .5 .6 .7 alpha .2 .8 Emitter{ init_spawn 1 speed 2 5 dir 0 1 0 "
                                   "spread 60 offset 3 0 0 radius 2 } } }");
    const Quat quarter = quatFromAxisAngle(pi / 2, {0, 0, 1});
    const Particle p = ParticleSystem(effect.sets[0], nullptr, {10, 20, 30}, quarter, 0).particle(0);
    seedRandom(5);
    const auto draw = [](float lo, float hi) { return lo + randomFraction() * (hi - lo); };
    const float drawn[][3] = {{p.colour.x, 0, 0.5f},     {p.colour.y, 0.2f, 0.6f}, {p.colour.z, 0.4f, 0.7f},
                              {p.alpha, 0.2f, 0.8f},     {p.width, 1, 3},          {p.height, 2, 4}};
    for (const auto& [value, lo, hi] : drawn)
        EXPECT_FLOAT_EQ(value, draw(lo, hi)) << lo;
    EXPECT_FLOAT_EQ(p.position.z, 30 + draw(-2, 2));
    EXPECT_NEAR(p.position.y, 23 + draw(-2, 2), 1e-4) << "the offset turns with the effect";
    EXPECT_NEAR(p.position.x, 10 + draw(-2, 2), 1e-4);
    EXPECT_FLOAT_EQ(p.angle, draw(0, 2 * pi));
    EXPECT_FLOAT_EQ(p.rotationSpeed, draw(-90, 90) * pi / 180);
    Vec3 axis{draw(-1, 1), 0, 0};
    axis.y = draw(-1, 1);
    axis.z = draw(-1, 1);
    normalize(axis);
    Vec3 velocity;
    quatRotate(velocity, quatFromAxisAngle(draw(0, 30) * pi / 180, axis), {0, 1, 0});
    velocity = velocity * draw(2, 5);
    EXPECT_LT(distance(p.velocity, velocity), 1e-4f);
}

TEST(Particles, EmissionDropsFractionsAndPauses) {
    const std::string emitter = "num_particles 100 Emitter{ spawn_rate ";
    Played ten(emitter + "10 }"), thirty(emitter + "30 }");
    std::vector<int> tens, thirties;
    for (int i = 0; i < 6; ++i) {
        EXPECT_TRUE(ten.step(0.05f));
        thirty.step(0.05f);
        tens.push_back(ten.system.live());
        thirties.push_back(thirty.system.live());
    }
    EXPECT_EQ(tens, (std::vector<int>{0, 1, 1, 2, 2, 3}));
    EXPECT_EQ(thirties, (std::vector<int>{1, 2, 3, 4, 5, 6})) << "the half that is due too is dropped";
    ten.system.setEmitting(0);
    ten.step(1);
    ten.system.setEmitting(1);
    ten.step(0.05f);
    EXPECT_EQ(ten.system.live(), 3) << "a pause is not made up for";
    EXPECT_TRUE(Played("num_particles 4 Emitter{ spawn_rate 1 }").step(0.1f)) << "may still emit";
    EXPECT_FALSE(Played("num_particles 0 Emitter{ init_spawn 9 }").step(0.1f));

    Played ended("num_particles 4 Emitter{ init_spawn 1 spawn_rate 8 } Affector{ lin_alpha -2 }");
    ended.system.setEmitting(-1);
    ended.system.setEmitting(1);
    int steps = 0;
    while (ended.step(0.25f))
        ++steps;
    EXPECT_EQ(steps, 2) << "the last particle lives out, and no other comes";
}

TEST(Particles, FullPoolsDropAndSlotsGoRound) {
    Played full("num_particles 3 Emitter{ init_spawn 5 spawn_rate 8 }");
    EXPECT_EQ(full.system.live(), 3);
    full.step(1);
    EXPECT_EQ(full.system.live(), 3);
    // One a step, each alive for two: the newest goes on around the pool, past slots that are free again.
    Played round("num_particles 5 Emitter{ spawn_rate 4 } Affector{ lin_alpha -2 }");
    for (int i = 0; i < 12; ++i) {
        round.step(0.25f);
        EXPECT_EQ(round[i % 5].age, 0.25f) << i;
        EXPECT_EQ(round.system.live(), std::min(i + 1, 2)) << i;
    }
}

TEST(Particles, AffectorsActInTheirWindowsAndOnNothingElse) {
    struct Case {
        const char* affector;
        int steps; // of a quarter of a second
        std::function<float(const Particle&)> value;
        float expected;
    };
    const auto vy = [](const Particle& p) { return p.velocity.y; };
    const auto alpha = [](const Particle& p) { return p.alpha; };
    const auto alive = [](const Particle& p) { return p.alive ? 1.0f : 0.0f; };
    const Case cases[] = {
        {"lin_force 0 8 0", 1, vy, 4},
        {"lin_force 0 8 0", 5, vy, 12},
        {"start_time .5 lin_force 0 8 0", 3, vy, 4},
        {"start_time .5 lin_force 0 8 0", 4, vy, 6},
        {"start_time .25 end_time .75 lin_force 0 8 0", 9, vy, 6},
        {"start_time 1 end_time .5 lin_force 0 8 0", 6, vy, 6},
        {"lin_speed_change -2", 3, vy, 1},
        {"lin_alpha -2", 2, alpha, 0.5f},
        {"lin_alpha -2", 2, alive, 1},
        {"lin_alpha -2", 3, alive, 0},
        {"end_time .375 lin_alpha -2", 9, alpha, 0.75f},
        {"end_time .25 lin_alpha -2", 9, alpha, 1},
        {"lin_alpha 3", 3, alpha, 1},
        {"lin_alpha 3", 3, alive, 1},
        {"lin_size -1 4", 4, [](const Particle& p) { return p.width + 10 * p.height; }, 40.25f},
        {"lin_size -1 4", 5, alive, 0},
        {"lin_size 0 -4", 2, alive, 0},
        {"lin_color 0 .5 0", 3, [](const Particle& p) { return p.colour.y + p.colour.x; }, 2.25f},
        {"collision tiles", 4, [](const Particle& p) { return p.position.y; }, 4},
    };
    for (const Case& c : cases) {
        Played played(std::string("num_particles 1 Emitter{ init_spawn 1 dir 0 1 0 speed 4 4 } Affector{ ") + c.affector +
                      " }");
        for (int i = 0; i < c.steps; ++i)
            played.step(0.25f);
        EXPECT_FLOAT_EQ(c.value(played[0]), c.expected) << c.affector << " after " << c.steps;
    }
}

TEST(Particles, AngleFollowsTheFlightOrSpins) {
    for (const char* aligned : {"", "speed_aligned 1 "}) {
        Played p(std::string(aligned) + "num_particles 1 rot_speed 90 90 Emitter{ init_spawn 1 dir -1 -1 5 speed 3 3 }");
        p.step(0.25f);
        EXPECT_FLOAT_EQ(p[0].angle, -0.75f * pi);
    }
    for (const char* free : {"0 ", "2 "}) {
        Played p(std::string("speed_aligned ") + free +
                 "num_particles 1 rot_speed 90 90 Emitter{ init_spawn 1 dir 1 0 0 speed 3 3 }");
        const float before = p[0].angle;
        p.step(0.5f);
        EXPECT_FLOAT_EQ(p[0].angle, before + pi / 4);
    }
}

// Tiles of 2 x 3 cells whose lowest left one is centred on (0, 0), and a block wherever `also` says.
struct Block : SolidTiles {
    Vec3 also{1000, 0, 0};
    bool solidTileAt(const Vec3& p, SolidTile& tile) const override {
        const bool inTile = p.x > -5 && p.x < 15 && p.y > -5 && p.y < 25;
        tile = {{0, 0, 0}, 2, 3};
        return inTile || (std::abs(p.x - also.x) < 5 && std::abs(p.y - also.y) < 5);
    }
};

TEST(Particles, BounceOffTheFourSides) {
    struct Case {
        Vec3 place, velocity, also, placeAfter, velocityAfter;
    };
    const Vec3 nowhere{1000, 0, 0};
    const Case cases[] = {
        {{3, 24, 1}, {0, -8, 2}, nowhere, {3, 25, 1}, {0, 4, 2}},
        {{3, 24, 1}, {0, -8, 2}, {3, 30, 0}, {3, 24, 1}, {0, -8, 2}}, // covered from above
        {{3, -4, 1}, {0, 8, 0}, nowhere, {3, -2, 1}, {0, -4, 0}},
        {{-4, 3, 1}, {8, 0, 0}, nowhere, {-3, 3, 1}, {-4, 0, 0}},
        {{-4, 3, 1}, {8, 0, 0}, {-10, 3, 0}, {-4, 3, 1}, {8, 0, 0}},
        {{30, 3, 1}, {8, -8, 0}, nowhere, {30, 3, 1}, {8, -8, 0}},     // in the open
        {{3, 24, 1}, {0, 8, 0}, nowhere, {3, 24, 1}, {0, 8, 0}},       // on its way out
        {{14, 3, 1}, {-8, 0, 0}, nowhere, {14, 3, 1}, {-8, 0, 0}},     // its right neighbour is the tile itself
    };
    for (const Case& c : cases) {
        Block tiles;
        tiles.also = c.also;
        const float speed = length(c.velocity);
        const Vec3 d = c.velocity * (1 / speed);
        char set[256];
        std::snprintf(set, sizeof set,
                      "num_particles 1 Emitter{ init_spawn 1 offset %f %f %f dir %f %f %f speed %f %f } Affector{ "
                      "start_time -.5 collision tiles }",
                      c.place.x, c.place.y, c.place.z, d.x, d.y, d.z, speed, speed);
        Played played(set, &tiles);
        played.step(0);
        EXPECT_LT(distance(played[0].position, c.placeAfter), 1e-4f) << set;
        EXPECT_LT(distance(played[0].velocity, c.velocityAfter), 1e-4f) << set;
    }
}

class EffectTest : public RenderTest {
  protected:
    ParticleManager& effects() { return *managers->particleManager; }
    void step(float seconds) {
        TimerManager::instance().stepSeconds = seconds;
        TimerManager::instance().stepTimers();
        effects().update();
    }
};

TEST_F(EffectTest, InstancesEndByThemselvesAndStayAddressable) {
    write("effects/pop.effect", "Effect{ ParticleSet{ num_particles 2 Emitter{ init_spawn 2 } Affector{ lin_alpha -4 } } }");
    write("effects/smoke.effect", "Effect{ ParticleSet{ num_particles 9 Emitter{ spawn_rate 100 } } }");
    EffectInstance* missing = effects().createEffect("gone", {});
    EffectInstance* pop = effects().createEffect("pop", {});
    EffectInstance* smoke = effects().createEffect("smoke", {1, 0, 0});
    EXPECT_EQ(effects().playing(), 3);
    EXPECT_EQ(effects().liveParticles(), 2);
    step(0.25f);
    EXPECT_EQ(effects().playing(), 2) << "there is nothing in a missing effect";
    step(0.25f);
    EXPECT_EQ(effects().playing(), 1);
    for (EffectInstance* spent : {missing, pop}) {
        spent->setTransform({}, {});
        spent->setEmitting(1);
        effects().release(spent);
    }
    smoke->setPosition({7, 8, 9});
    EXPECT_EQ(smoke->sets()[0]->particle(8).position, (Vec3{1, 0, 0})) << "live ones stay where they are";
    effects().clear();
    EXPECT_EQ(effects().playing(), 0);
    EXPECT_EQ(effects().liveParticles(), 0);
}

TEST_F(EffectTest, QuadsAreDrawnWhereTheyAreInTheirColour) {
    writeTexture("white", tgaBytes(1, 1, 24, {255, 255, 255}));
    write("shaders/defaultParticle.shader",
          "VERTEX\nvarying vec4 c;\nvoid main() { c = gl_Color; gl_Position = ftransform(); }\n"
          "PIXEL\nvarying vec4 c;\nvoid main() { gl_FragColor = c; }\n");
    const auto draw = [&](const std::string& set, const std::string& texture = "white") {
        static int number = 0;
        const std::string name = "e" + std::to_string(++number);
        write("effects/" + name + ".effect", "Effect{ ParticleSet{ num_particles 1 texture " + texture + " " + set +
                                                 " Emitter{ init_spawn 1 dir 0 1 0 speed 1 1 } } }");
        effects().clear();
        effects().createEffect(name, {});
        beginFrame(camera());
        effects().render(gl());
    };
    const Pixel white{255, 255, 255}, red{255, 0, 0}, half{128, 0, 128};
    // 3.2 pixels a unit, the middle at (48, 32). It flies upwards: its width runs along y.
    draw("size 12 4 12 4 color 1 0 0 1 0 0");
    EXPECT_TRUE(near(pixel(48, 16), red) && near(pixel(48, 48), red)) << "6 units up and down";
    EXPECT_TRUE(near(pixel(48, 10), white) && near(pixel(57, 32), white)) << "and no farther, 2 to the side";
    draw("size 12 4 12 4 color 1 0 0 1 0 0 pivot -.5 0 0");
    EXPECT_TRUE(near(pixel(48, 2), red) && near(pixel(48, 34), white)) << "its rear end lies on the particle";
    draw("size 8 8 8 8 color .5 0 .5 .5 0 .5 alpha .5 .5");
    EXPECT_TRUE(near(pixel(48, 32), {192, 128, 192}, 3)) << "blended";
    draw("size 8 8 8 8 blend_mode 0 color .5 0 .5 .5 0 .5 alpha .5 .5");
    EXPECT_TRUE(near(pixel(48, 32), half, 3));
    draw("size 8 8 8 8 blend_mode 2 color 1 0 0 1 0 0");
    EXPECT_TRUE(near(pixel(48, 32), red));
    draw("size 8 8 8 8", "gone");
    EXPECT_TRUE(near(pixel(48, 32), white)) << "no square for a missing picture";
}

} // namespace

} // namespace Zelkor
