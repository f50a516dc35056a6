#include "GuiSheet.h"

#include "core/EngineManagers.h"
#include "gui/GuiSprite.h"
#include "gui/GuiWorkspace.h"
#include "io/TokenReader.h"
#include "render/GlRenderer.h"
#include "render/GuiDrawing.h"
#include "render/MaterialManager.h"

#include <algorithm>
#include <cstdio>

using namespace Zelkor;

namespace viewer {

namespace {

constexpr float aspect = static_cast<float>(guiSheetWidth) / guiSheetHeight;
constexpr Vec4 graphite{0.16f, 0.16f, 0.2f, 1}, white{1, 1, 1, 1};
constexpr float margin = 0.02f;

class GuiSheet {
  public:
    explicit GuiSheet(Studio& studio) : studio_(studio) {
        engineManagers()->materialManager->loadFonts("sample.fnt");
    }

    GuiObject& text(const std::string& words, const std::string& font, float x, float y, float height,
                    const Vec4& colour) {
        GuiObject& made = *workspace.root.createChild(GuiKind::text, x, y, 1, 0, 0);
        made.setFont(font);
        made.setTextParam(height);
        made.setCharHeight(1 / aspect);
        made.setText(words);
        made.colour = colour;
        return made;
    }

    bool write(const std::string& file) {
        GlRenderer& renderer = studio_.renderer();
        renderer.present(); // clears
        studio_.draw();
        renderer.clearDepth();
        drawBothPasses(workspace, false);
        if (renderer.readFramebuffer().writePng(file)) return true;
        std::fprintf(stderr, "rustpike-viewer: cannot write %s\n", file.c_str());
        return false;
    }

    GuiScreenWorkspace workspace{false};

  private:
    Studio& studio_;
};

// Every letter of the font, in lines no wider than so many heights.
std::string allLetters(const Font& font, float lineWidth) {
    std::string letters;
    float width = 0;
    for (std::size_t code = '!'; code < font.glyphs.size(); ++code) {
        const char letter = static_cast<char>(code);
        const float step = font.glyph(letter).aspect() + font.glyph('_').aspect();
        if (font.glyph(letter).aspect() == 0 || letter == '_') continue;
        if (width + step > lineWidth) {
            letters += '\n';
            width = 0;
        }
        letters += letter;
        letters += '_';
        width += step;
    }
    return letters;
}

std::unique_ptr<TokenReader> openFile(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    return file ? TokenReader::open(file) : nullptr;
}

// The sprites of one animation, each played on to the middle of a frame, in cells so wide.
void addFrames(GuiSheet& sheet, const SpriteDef& def, const SpriteAnimation& animation, float y, float cell) {
    const float high = cell * aspect, shrink = std::min(cell / def.width, high / def.height);
    float seconds = 0;
    for (std::size_t i = 0; i < animation.frames.size(); ++i) {
        const float x = 0.2f + static_cast<float>(i) * (cell + 0.01f), length = animation.frames[i].duration;
        auto& sprite = static_cast<GuiSprite&>(*sheet.workspace.root.createChild(GuiKind::sprite, x, y, 0, 0, 0));
        sprite.setDefinition(&def);
        sprite.setAnimation(animation.name);
        sprite.advance(seconds + length / 2);
        sprite.width = def.width * shrink;
        sprite.height = def.height * shrink;
        char label[32];
        std::snprintf(label, sizeof label, "%d_%.2f", sprite.cell(), static_cast<double>(length));
        sheet.text(label, "FONT2", x, y + sprite.height, 0.025f, graphite);
        seconds += length;
    }
}

} // namespace

bool writeFontSheet(Studio& studio, const std::string& name, const std::string& file) {
    GuiSheet sheet(studio);
    const MaterialManager& materials = *engineManagers()->materialManager;
    const Font* font = materials.font(materials.findFont(name));
    if (!font) {
        std::fprintf(stderr, "rustpike-viewer: there is no font %s\n", name.c_str());
        return false;
    }
    const std::string sentence = "Corvan_rides_on_at_7:45,_with_12_shells_and_(no)_water.";
    sheet.text(sentence, name, margin, 0.02f, 0.04f, graphite);
    sheet.text(sentence, name, margin, 0.07f, 0.05f, {0.788f, 0.294f, 0.153f, 1});
    sheet.text("START_Options", name, margin, 0.13f, 0.15f, graphite);
    sheet.workspace.root.createChild(GuiKind::rect, 0, 0.3f, 0, 1, 0.14f)->colour = {0, 0, 0, 0.6f};
    sheet.text("Press_the_button_you_wish_to_assign", name, margin, 0.345f, 0.05f, white);
    sheet.text("Loading...", name, 0.75f, 0.345f, 0.04f, {1, 0.7f, 0.7f, 1});
    constexpr float letterHeight = 0.085f;
    sheet.text(allLetters(*font, (1 - 2 * margin) * aspect / letterHeight), name, margin, 0.46f, letterHeight,
               graphite);
    return sheet.write(file);
}

bool writeSpriteSheet(Studio& studio, const std::string& definition, const std::string& file) {
    const auto reader = openFile(definition);
    if (!reader) {
        std::fprintf(stderr, "rustpike-viewer: cannot read %s\n", definition.c_str());
        return false;
    }
    SpriteDef def = readSpriteDef(*reader);
    def.texture = studio.renderer().getTexture(def.textureName);
    if (def.texture < 0 || !(def.width > 0 && def.height > 0)) {
        std::fprintf(stderr, "rustpike-viewer: %s shows nothing: texture '%s'\n", definition.c_str(),
                     def.textureName.c_str());
        return false;
    }
    if (def.animations.empty()) def.animations.push_back({"(none)", {{0, 1}}, false, ""});

    GuiSheet sheet(studio);
    std::size_t longest = 1;
    for (const SpriteAnimation& animation : def.animations)
        longest = std::max(longest, animation.frames.size());
    const float rows = static_cast<float>(def.animations.size());
    const float cell = std::min({0.2f, 0.76f / static_cast<float>(longest) - 0.01f,
                                 ((1 - 2 * margin) / rows - 0.04f) / aspect});
    float y = margin;
    for (const SpriteAnimation& animation : def.animations) {
        std::string name = animation.name;
        if (animation.loop) name += "\n_loops";
        if (!animation.redirect.empty()) name += "\n_then_" + animation.redirect;
        sheet.text(name, "FONT2", margin, y, 0.035f, graphite);
        addFrames(sheet, def, animation, y, std::max(cell, 0.005f));
        y += cell * aspect + 0.04f;
    }
    return sheet.write(file);
}

} // namespace viewer
