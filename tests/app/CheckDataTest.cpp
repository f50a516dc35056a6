#include "check/CheckEffects.h"
#include "check/CheckGui.h"
#include "check/CheckMaterials.h"
#include "check/CheckSounds.h"
#include "check/CheckStages.h"
#include "engine/audio/WavBytes.h"
#include "support/TempData.h"

#include <gtest/gtest.h>

namespace {

// "line: reason" of each finding, for comparing.
std::vector<std::string> lines(const Findings& findings) {
    std::vector<std::string> result;
    for (const Finding& finding : findings)
        result.push_back(std::to_string(finding.line) + ": " + finding.reason);
    return result;
}

TEST(CheckData, MaterialsNameLineAndReason) {
    TempData data;
    data.write("textures/hatch.tga", "");
    data.write("shaders/post/sketch.shader", "");
    data.write("materials/good.material",
               "material a\n{\n technique { pass { shader sketch\n texture_unit {\n"
               " texture hatch scroll_anim 0.5 -1 } scene_blend src_alpha one_minus } }\n}\n");
    data.write("materials/bad.material",
               "material a\n{\n shader gone\n texture hatch\n texture_unit { texture lost }\n"
               " depht_bias 1\n alpha_rejection greater 1.5\n shader_param x 1e3\n}\n"
               "materail b\n");
    std::set<std::string> defined;
    Findings findings;
    checkMaterialFile("materials/good.material", findings, defined);
    EXPECT_EQ(lines(findings), std::vector<std::string>());
    defined.clear();
    checkMaterialFile("materials/bad.material", findings, defined);
    const std::vector<std::string> expected = {
        "3: missing shader 'gone'",
        "4: 'texture' before any texture_unit",
        "5: missing texture 'lost'",
        "6: unknown keyword 'depht_bias'",
        "6: unknown keyword '1'",
        "7: alpha_rejection is no integer: '1.5'",
        "8: shader_param is no number: '1e3'",
        "10: expected 'material', found 'materail'",
        "10: expected 'material', found 'b'",
    };
    EXPECT_EQ(lines(findings), expected);
}

TEST(CheckData, UnclosedMaterialIsNamedWhereItBegins) {
    TempData data;
    data.write("materials/m.material", "\nmaterial a {\n outlines\n");
    std::set<std::string> defined;
    Findings findings;
    checkMaterialFile("materials/m.material", findings, defined);
    EXPECT_EQ(lines(findings), std::vector<std::string>{"2: material 'a' is not closed"});
}

TEST(CheckData, SpritesAndFontsNameLineAndReason) {
    TempData data;
    data.write("textures/sheet.tga", "");
    std::string letters;
    for (char c = '!'; c <= '~'; ++c)
        if (c != 'q') letters += std::string("glyph ") + c + " 1 1 8 16\n";
    data.write("spritedef/good.spritedef", "texture sheet size 1 0.5 numframes 2 2\nanimation a loop frame 3 0.1\n"
                                           "animation b redirect a frame 0 1");
    data.write("spritedef/bad.spritedef", "size 0 1\nnumframes 2 1 speed\nanimation a redirect c\nframe 2 0.1\n"
                                          "frame 1 0\nanimation a loop redirect a\n");
    data.write("good.fnt", "F { type file source sheet base 64 glyph q 1 1 8 16 " + letters + " }");
    data.write("bad.fnt", "F {\nsource gone base 64\nglyph ab 1 1 8 16\nglyph A 60 1 8 16\nglyph ! 1 1 0 16\n}\n"
                          "G { source sheet base 64\n" +
                              letters);
    Findings findings;
    checkSpriteDefFile("spritedef/good.spritedef", findings);
    EXPECT_EQ(lines(findings), std::vector<std::string>());
    checkFontFile("good.fnt", findings);
    EXPECT_EQ(lines(findings), std::vector<std::string>());
    checkSpriteDefFile("spritedef/bad.spritedef", findings);
    EXPECT_EQ(lines(findings),
              (std::vector<std::string>{"1: a size without extent", "2: unknown keyword 'speed'",
                                        "5: a frame of no duration", "6: animation 'a' is defined twice",
                                        "6: animation 'a' has no frames",
                                        "6: animation 'a' loops and is never redirected",
                                        "6: there is no texture", "4: frame 2 of 2",
                                        "3: redirect to 'c', which does not exist"}));
    findings.clear();
    checkFontFile("bad.fnt", findings);
    ASSERT_EQ(findings.size(), 7u);
    findings[4].reason.resize(std::string("font 'F' lacks").size());
    EXPECT_EQ(lines(findings),
              (std::vector<std::string>{"2: missing texture 'gone'", "3: 'ab' is no single letter",
                                        "4: glyph 'A' reaches over the edge of the texture",
                                        "5: glyph '!' has no extent", "1: font 'F' lacks",
                                        "7: font 'G' is not closed", "7: font 'G' lacks q"}));
}

TEST(CheckData, EventsAreCheckedFieldByField) {
    TempData data;
    data.write("units/corvan.mesh", "");
    data.write("levels/good.event", "{\nSpawnPlayer{ pos 0 5 0 rot 0 0 1 0 mesh corvan triggers 1 1 }\n"
                                    "Delay{ pos 0 0 0 time 1.5 param 2 3.0 }\nStartupTriggers 1 0 \n}\n");
    data.write("levels/bad.event", "{\nSpawnPlayer{ pos 0 5 rot 0 0 1 0 mesh gone }\n"
                                   "PlayerRect{ min 5 5 max 0 9 triggers 2 0 7 }\nDealy{ }\n");
    Findings findings;
    checkEventFile("levels/good.event", findings);
    EXPECT_EQ(lines(findings), std::vector<std::string>());
    checkEventFile("levels/bad.event", findings);
    const auto found = lines(findings);
    const auto has = [&](const std::string& line) {
        return std::find(found.begin(), found.end(), line) != found.end();
    };
    EXPECT_TRUE(has("2: pos is no number: 'rot'")) << ::testing::PrintToString(found);
    EXPECT_TRUE(has("3: the box is empty"));
    EXPECT_TRUE(has("3: a trigger to event 7 of 2"));
    EXPECT_TRUE(has("4: unknown word 'Dealy{'"));
}

TEST(CheckData, SoundsAndTracks) {
    TempData data;
    data.write("sound/hit.wav", wavFile(wavFormat() + riffChunk("data", "abcd")));
    data.write("sound/hit_2.wav", wavFile(wavFormat(1, 1, 22050, 24) + riffChunk("data", "abcd")));
    data.write("sound/lone_5.wav", wavFile(wavFormat() + riffChunk("data", "abcd", 9)));
    data.write("sound/area_51.wav", wavFile(wavFormat() + riffChunk("data", "abcd")));
    data.write("sound/song.ogg", "OggS");
    Findings findings;
    for (const char* file : {"sound/hit.wav", "sound/hit_2.wav", "sound/lone_5.wav", "sound/area_51.wav"})
        checkWavFile(file, findings);
    checkOggFile("sound/song.ogg", findings);
    const std::vector<std::string> expected = {
        "0: not 1 or 2 channels of 8 or 16 bits at 1000 to 192000 samples a second",
        "0: the data is cut short", "0: a variant of sound/lone.wav, which is missing",
        "0: no Ogg Vorbis file"};
    EXPECT_EQ(lines(findings), expected);
}

TEST(CheckData, LevelsAndTileDefinitions) {
    TempData data;
    data.write("units/tiles/area1/ground.mesh", "");
    data.write("levels/l.level", "0 0 4 4\ntiles/area1/ground 0 0 0\ntiles/area1/gruond 10 0 0\n"
                                 "tiles/area1/gruond 20 0 0\ntiles/area1/ground 1 x");
    data.write("units/tiles/area1/tiledef.txt",
               "ground size 1 1 1 type 1 scaleX ;\nlost type 9 ;\nground typ 1");
    Findings findings;
    checkLevelFile("levels/l.level", findings);
    EXPECT_EQ(lines(findings), (std::vector<std::string>{"3: missing mesh 'tiles/area1/gruond'",
                                                         "5: y is no number: 'x'", "5: z is no number: ''"}))
        << "a missing mesh is named once";
    findings.clear();
    checkTileDefFile("units/tiles/area1/tiledef.txt", findings);
    EXPECT_EQ(lines(findings), (std::vector<std::string>{"2: missing mesh 'tiles/area1/lost'",
                                                         "3: unknown word 'typ'", "3: unknown word '1'",
                                                         "3: entry 'ground' has no ';' and is not used"}));
}

TEST(CheckData, EffectsNameLineAndReason) {
    TempData data;
    data.write("textures/fx/puff.tga", "");
    data.write("sound/boom.wav", "");
    data.write("effects/good.effect", "Effect{\n Sound boom\n ParticleSet {\n texture fx/puff num_particles 3\n"
                                      " Emitter{ dir 0 1 0 }\n Affector{ collision x } }\n}\n");
    data.write("effects/bad.effect", "Efect{\nEffect{\n Sound bang\n ParticleSet{\n texture fx/lost material m\n"
                                     " num_particles 70000 blend_mode 7 lin_alpha\n Emitter{ dir 0 1 up }\n");
    Findings findings;
    checkEffectFile("effects/good.effect", findings, {});
    EXPECT_EQ(lines(findings), std::vector<std::string>());
    checkEffectFile("effects/bad.effect", findings, {"particle"});
    EXPECT_EQ(lines(findings),
              (std::vector<std::string>{
                  "1: expected 'Effect{', found 'Efect{'", "3: missing sound 'bang'", "5: missing texture 'fx/lost'",
                  "5: missing material 'm'", "6: unknown blend mode 7", "6: unknown keyword 'lin_alpha' in ParticleSet",
                  "7: dir is no number: 'up'", "4: ParticleSet is not closed", "2: Effect is not closed",
                  "7: all sets together have more than 65536 particles"}));
}

} // namespace
