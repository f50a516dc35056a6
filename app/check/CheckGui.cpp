#include "check/CheckGui.h"

#include "io/DataFiles.h"
#include "render/Tga.h"

#include <set>
#include <utility>
#include <vector>

namespace {

struct NumberedWord {
    int line;
    std::string text;
};

class SpriteDefCheck {
  public:
    SpriteDefCheck(const std::string& file, Findings& findings) : tokens_(file, findings) {}

    void run() {
        while (!tokens_.atEnd())
            keyword(tokens_.word());
        if (!textured_) tokens_.report("there is no texture");
        for (const auto& [line, cell] : cells_)
            if (cell < 0 || cell >= framesX_ * framesY_)
                tokens_.report(line, "frame " + std::to_string(cell) + " of " +
                                         std::to_string(framesX_ * framesY_));
        for (const NumberedWord& redirect : redirects_)
            if (!animations_.contains(redirect.text))
                tokens_.report(redirect.line, "redirect to '" + redirect.text + "', which does not exist");
    }

  private:
    void keyword(const std::string& word) {
        if (word == "texture") {
            textured_ = true;
            const std::string name = tokens_.word();
            if (!textureExists(name)) tokens_.report("missing texture '" + name + "'");
        } else if (word == "size") {
            const float width = tokens_.number("size"), height = tokens_.number("size");
            if (!(width > 0 && height > 0)) tokens_.report("a size without extent");
        } else if (word == "numframes") {
            framesX_ = tokens_.integer("numframes");
            framesY_ = tokens_.integer("numframes");
            constexpr int largest = 4096;
            if (framesX_ >= 1 && framesY_ >= 1 && framesX_ <= largest && framesY_ <= largest) return;
            tokens_.report("numframes is 1 to 4096, twice");
            framesX_ = framesY_ = 1;
        } else if (word == "animation") {
            animation();
        } else {
            tokens_.report("unknown keyword '" + word + "'");
        }
    }

    void animation() {
        const std::string name = tokens_.word();
        const int line = tokens_.line();
        if (!animations_.insert(name).second) tokens_.report("animation '" + name + "' is defined twice");
        std::size_t frames = 0;
        bool loops = false, redirected = false;
        for (std::string_view next = tokens_.peek();
             next == "loop" || next == "redirect" || next == "frame"; next = tokens_.peek()) {
            const std::string word = tokens_.word();
            if (word == "loop") {
                loops = true;
            } else if (word == "redirect") {
                redirected = true;
                const int at = tokens_.line();
                redirects_.push_back({at, tokens_.word()});
            } else {
                const int at = tokens_.line();
                cells_.emplace_back(at, tokens_.integer("frame"));
                if (!(tokens_.number("duration") > 0)) tokens_.report("a frame of no duration");
                ++frames;
            }
        }
        if (frames == 0) tokens_.report(line, "animation '" + name + "' has no frames");
        if (loops && redirected) tokens_.report("animation '" + name + "' loops and is never redirected");
    }

    StrictTokens tokens_;
    bool textured_ = false;
    int framesX_ = 1, framesY_ = 1;
    std::set<std::string> animations_;
    std::vector<NumberedWord> redirects_;
    std::vector<std::pair<int, int>> cells_; // line and cell of each frame
};

class FontCheck {
  public:
    explicit FontCheck(StrictTokens& tokens) : tokens_(tokens) {}

    void run() {
        name_ = tokens_.word();
        const int start = tokens_.line();
        while (!tokens_.atEnd() && tokens_.peek() != "source")
            tokens_.word();
        if (tokens_.atEnd()) {
            tokens_.report(start, "font '" + name_ + "' has no source");
            return;
        }
        source();
        bool closed = false;
        while (!tokens_.atEnd() && !closed) {
            const std::string word = tokens_.word();
            closed = word == "}";
            if (word == "glyph")
                glyph();
            else if (!closed)
                tokens_.report("unknown keyword '" + word + "'");
        }
        if (!closed) tokens_.report(start, "font '" + name_ + "' is not closed");
        std::string missing;
        for (char letter = '!'; letter <= '~'; ++letter)
            if (!letters_.contains(letter)) missing += letter;
        if (!missing.empty()) tokens_.report(start, "font '" + name_ + "' lacks " + missing);
    }

  private:
    void source() {
        tokens_.word();
        const std::string texture = tokens_.word();
        if (!textureExists(texture)) tokens_.report("missing texture '" + texture + "'");
        tokens_.word();
        size_ = tokens_.number("the size of the texture");
        const auto bytes = Zelkor::readDataFile("textures/" + texture + ".tga");
        const auto image = bytes ? Zelkor::decodeTga(*bytes) : std::nullopt;
        if (image && size_ > 1 &&
            (static_cast<float>(image->width) != size_ || static_cast<float>(image->height) != size_))
            tokens_.report("the texture is " + std::to_string(image->width) + " x " +
                           std::to_string(image->height));
    }

    void glyph() {
        const std::string letter = tokens_.word();
        if (letter.size() != 1) tokens_.report("'" + letter + "' is no single letter");
        if (!letter.empty() && !letters_.insert(letter[0]).second)
            tokens_.report("glyph '" + letter + "' is listed twice");
        float v[4];
        for (float& each : v)
            each = tokens_.number("glyph");
        const bool pixels = size_ > 1;
        const float right = pixels ? v[0] + v[2] : v[2], bottom = pixels ? v[1] + v[3] : v[3];
        const float edge = pixels ? size_ : 1;
        if (!(right > v[0] && bottom > v[1]))
            tokens_.report("glyph '" + letter + "' has no extent");
        else if (v[0] < -0.5f || v[1] < -0.5f || right > edge || bottom > edge)
            tokens_.report("glyph '" + letter + "' reaches over the edge of the texture");
    }

    StrictTokens& tokens_;
    std::string name_;
    float size_ = 1;
    std::set<char> letters_;
};

} // namespace

void checkSpriteDefFile(const std::string& file, Findings& findings) {
    SpriteDefCheck(file, findings).run();
}

void checkFontFile(const std::string& file, Findings& findings) {
    StrictTokens tokens(file, findings);
    while (!tokens.atEnd())
        FontCheck(tokens).run();
}
