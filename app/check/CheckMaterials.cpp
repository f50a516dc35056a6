#include "check/CheckMaterials.h"

#include <map>
#include <string_view>

namespace {

// What follows a keyword: 'w' any word, 'f' a number, 'i' an integer, 's' a shader, 't' a texture. A '*'
// before it says that the keyword needs a texture unit.
const std::map<std::string, std::string, std::less<>>& keywordArguments() {
    static const std::map<std::string, std::string, std::less<>> table = {
        {"normal_map", "*"},      {"cube", "*"},
        {"texture", "*t"},        {"shader", "s"},
        {"normalmaps", ""},       {"alpha_rejection", "wi"},
        {"outlines", ""},         {"alpha_as_spec_map", ""},
        {"fog_override", "w"},    {"cast_shadows", ""},
        {"recieve_shadows", ""},  {"use_vertex_colors", ""},
        {"depth_bias", "f"},      {"shadow_shader", "s"},
        {"shader_param", "wf"},   {"shader_param4", "wffff"},
        {"scale", "*ff"},         {"scroll_anim", "*ff"},
        {"ambient", "ffff"},      {"diffuse", "ffff"},
        {"specular", "ffff"},     {"emissive", "ffff"},
        {"scene_blend", "w"},     {"cull_hardware", "w"},
        {"tex_coord_set", "*w"},  {"lighting", "w"},
        {"colour_op", "*w"},      {"filtering", "*w"},
        {"wave_xform", "*wwffff"}};
    return table;
}

// The words that mean something after a keyword; others are skipped in silence by the game.
bool wordHasEffect(std::string_view keyword, std::string_view word) {
    const auto among = [&](std::initializer_list<std::string_view> words) {
        for (const auto& candidate : words)
            if (candidate == word) return true;
        return false;
    };
    if (keyword == "scene_blend")
        return among({"add", "modulate", "alpha_blend", "src_alpha", "specialalpha"});
    if (keyword == "cull_hardware") return among({"none", "front", "back"});
    if (keyword == "lighting") return among({"off", "on"});
    if (keyword == "colour_op") return among({"add", "modulate"});
    if (keyword == "filtering") return among({"none", "bilinear"});
    return true;
}

void checkKeyword(StrictTokens& tokens, const std::string& keyword, bool hasUnit) {
    const auto& table = keywordArguments();
    const auto found = table.find(keyword);
    if (found == table.end()) {
        tokens.report("unknown keyword '" + keyword + "'");
        return;
    }
    for (const char kind : found->second) {
        if (kind == '*') {
            if (!hasUnit) tokens.report("'" + keyword + "' before any texture_unit");
            continue;
        }
        if (kind == 'f') {
            tokens.number(keyword.c_str());
            continue;
        }
        if (kind == 'i') {
            tokens.integer(keyword.c_str());
            continue;
        }
        const std::string word = tokens.word();
        if (word.empty()) tokens.report("'" + keyword + "' is cut off by the end of the file");
        if (kind == 's' && !shaderExists(word)) tokens.report("missing shader '" + word + "'");
        if (kind == 't' && !textureExists(word)) tokens.report("missing texture '" + word + "'");
        if (kind == 'w' && !wordHasEffect(keyword, word))
            tokens.report("'" + keyword + " " + word + "' has no effect");
        if (keyword == "scene_blend" && word == "src_alpha") tokens.word();
    }
}

} // namespace

void checkMaterialFile(const std::string& file, Findings& findings, std::set<std::string>& defined) {
    StrictTokens tokens(file, findings);
    while (!tokens.atEnd()) {
        const std::string top = tokens.word();
        if (top != "material") {
            tokens.report("expected 'material', found '" + top + "'");
            continue;
        }
        const std::string name = tokens.word();
        if (!defined.insert(name).second) tokens.report("material '" + name + "' is defined twice");
        const int start = tokens.line();
        int depth = 0;
        bool hasUnit = false, closed = false;
        while (!tokens.atEnd() && !closed) {
            const std::string word = tokens.word();
            if (word == "{") {
                ++depth;
            } else if (word == "}") {
                closed = --depth <= 0;
            } else if (word == "texture_unit") {
                hasUnit = true;
            } else if (word != "technique" && word != "pass") {
                checkKeyword(tokens, word, hasUnit);
            }
        }
        if (!closed) tokens.report(start, "material '" + name + "' is not closed");
    }
}
