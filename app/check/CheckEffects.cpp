#include "check/CheckEffects.h"

#include "fx/EffectDesc.h"
#include "io/DataFiles.h"

#include <map>

namespace {

// What follows a keyword: 'f' a number, 'i' an integer, 'w' any word, 's' a shader, 't' a texture, 'm' a
// material, 'a' a sound, 'p' the size of a pool, 'b' a blend mode; '{' that it opens a block of its own.
using Keywords = std::map<std::string, std::string, std::less<>>;

const Keywords& keywordsOf(std::string_view block) {
    static const std::map<std::string, Keywords, std::less<>> table = {
        {"Effect", {{"Sound", "a"}, {"ParticleSet", "{"}}},
        {"ParticleSet",
         {{"speed_aligned", "i"},
          {"rot_speed", "ff"},
          {"num_particles", "p"},
          {"texture", "t"},
          {"material", "m"},
          {"shader", "s"},
          {"blend_mode", "b"},
          {"size", "ffff"},
          {"color", "ffffff"},
          {"pivot", "fff"},
          {"alpha", "ff"},
          {"Emitter", "{"},
          {"Affector", "{"}}},
        {"Emitter",
         {{"spawn_rate", "f"},
          {"init_spawn", "i"},
          {"speed", "ff"},
          {"dir", "fff"},
          {"spread", "f"},
          {"offset", "fff"},
          {"radius", "f"}}},
        {"Affector",
         {{"start_time", "f"},
          {"end_time", "f"},
          {"lin_alpha", "f"},
          {"lin_size", "ff"},
          {"lin_color", "fff"},
          {"lin_force", "fff"},
          {"lin_speed_change", "f"},
          {"collision", "w"}}}};
    return table.find(block)->second;
}

class EffectChecker {
  public:
    EffectChecker(const std::string& file, Findings& findings, const std::set<std::string>& materials)
        : tokens_(file, findings), materials_(materials) {}

    void check() {
        while (!tokens_.atEnd()) {
            const int line = tokens_.line();
            const std::string word = tokens_.word();
            if (word == "Effect" || word == "Effect{")
                block("Effect", line);
            else
                tokens_.report("expected 'Effect{', found '" + word + "'");
        }
        if (asked_ > Zelkor::EffectDesc::maxParticles)
            tokens_.report("all sets together have more than " +
                           std::to_string(Zelkor::EffectDesc::maxParticles) + " particles");
    }

  private:
    // start: the line it begins in.
    void block(const std::string& kind, int start) {
        while (!tokens_.atEnd()) {
            const int line = tokens_.line();
            std::string word = tokens_.word();
            if (word.ends_with('}')) return;
            if (word.ends_with('{')) word.pop_back();
            if (word.empty()) continue;
            const auto found = keywordsOf(kind).find(word);
            if (found == keywordsOf(kind).end())
                tokens_.report("unknown keyword '" + word + "' in " + kind);
            else if (found->second == "{")
                block(word, line);
            else
                arguments(word, found->second);
        }
        tokens_.report(start, kind + " is not closed");
    }

    void arguments(const std::string& keyword, const std::string& kinds) {
        for (const char kind : kinds) {
            if (kind == 'f')
                tokens_.number(keyword.c_str());
            else if (kind == 'i' || kind == 'p' || kind == 'b')
                integer(keyword, kind);
            else
                name(keyword, kind);
        }
    }

    void integer(const std::string& keyword, char kind) {
        const int value = tokens_.integer(keyword.c_str());
        if (kind == 'p' && value <= 0) tokens_.report("a set without particles");
        if (kind == 'p' && value > 0) asked_ += value;
        if (kind == 'b' && (value < 0 || (value > 5 && value != 10)))
            tokens_.report("unknown blend mode " + std::to_string(value));
    }

    void name(const std::string& keyword, char kind) {
        const std::string word = tokens_.word();
        if (word.empty()) tokens_.report("'" + keyword + "' is cut off by the end of the file");
        if (kind == 't' && !textureExists(word)) tokens_.report("missing texture '" + word + "'");
        if (kind == 's' && !shaderExists(word)) tokens_.report("missing shader '" + word + "'");
        if (kind == 'm' && !materials_.contains(word)) tokens_.report("missing material '" + word + "'");
        if (kind == 'a' && !Zelkor::dataFileExists("sound/" + word + ".wav"))
            tokens_.report("missing sound '" + word + "'");
    }

    StrictTokens tokens_;
    const std::set<std::string>& materials_;
    long long asked_ = 0; // particles
};

} // namespace

void checkEffectFile(const std::string& file, Findings& findings, const std::set<std::string>& materials) {
    EffectChecker(file, findings, materials).check();
}
