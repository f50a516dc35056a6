#include "text/Arguments.h"

#include <cmath>
#include <sstream>

namespace forge {
namespace {

struct Signature {
    std::vector<std::string> positional;
    std::vector<std::string> all;
    std::vector<std::string> flags;
    std::string text;
};

Signature parseSignature(const std::string& source) {
    Signature result;
    std::istringstream words(source);
    bool byPosition = true;
    for (std::string word; words >> word;) {
        if (word == ";") {
            byPosition = false;
            continue;
        }
        if (word.back() == '?') {
            word.pop_back();
            result.flags.push_back(word);
        } else if (byPosition) {
            result.positional.push_back(word);
        }
        result.all.push_back(word);
        result.text += (result.text.empty() ? "" : " ") + word;
    }
    return result;
}

bool contains(const std::vector<std::string>& list, const std::string& item) {
    for (const std::string& each : list)
        if (each == item) return true;
    return false;
}

// The length of `name` in a leading `name=`, else 0. `==` is a comparison.
std::size_t nameLength(const std::string& text) {
    std::size_t n = 0;
    while (n < text.size() && (std::isalnum(static_cast<unsigned char>(text[n])) || text[n] == '_'))
        ++n;
    const bool named =
        n > 0 && n < text.size() && text[n] == '=' && (n + 1 >= text.size() || text[n + 1] != '=');
    return named ? n : 0;
}

} // namespace

Arguments::Arguments(const Statement& of, const Scope& names, const std::string& signatureText)
    : statement(of), scope(names) {
    const Signature signature = parseSignature(signatureText);
    std::size_t position = 0;
    for (const Word& word : of.words) {
        std::string name;
        Word value = word;
        if (const std::size_t length = nameLength(word.text)) {
            name = word.text.substr(0, length);
            value.text = word.text.substr(length + 1);
            value.place.column += static_cast<int>(length) + 1;
            if (!contains(signature.all, name))
                throw SourceError(word.place, "'" + of.keyword + "' has no parameter '" + name +
                                                  "'; it takes: " + signature.text);
            if (value.text.empty()) throw SourceError(word.place, "'" + name + "=' has no value");
        } else if (contains(signature.flags, word.text)) {
            name = word.text;
        } else {
            while (position < signature.positional.size() && given.count(signature.positional[position]))
                ++position;
            if (position == signature.positional.size())
                throw SourceError(word.place, "'" + of.keyword + "' has no place for '" + word.text +
                                                  "'; it takes: " + signature.text);
            name = signature.positional[position++];
        }
        if (!given.emplace(name, value).second)
            throw SourceError(word.place, "'" + name + "' is given twice");
    }
}

bool Arguments::flag(const std::string& name) const {
    const auto found = given.find(name);
    return found != given.end() && (found->second.text == name || evaluateNumber(found->second, scope) != 0);
}

const Word& Arguments::require(const std::string& name) const {
    const auto found = given.find(name);
    if (found == given.end())
        throw SourceError(statement.place, "'" + statement.keyword + "' needs " + name + "=");
    return found->second;
}

std::vector<float> Arguments::tuple(const std::string& name) const {
    const Value value = evaluate(require(name), scope);
    if (value.kind == Value::Kind::Word) fail(name, "'" + value.word + "' is not a known name");
    if (value.kind == Value::Kind::List) fail(name, "a list is not expected here");
    return {value.tuple.begin(), value.tuple.end()};
}

float Arguments::number(const std::string& name) const {
    const std::vector<float> values = tuple(name);
    if (values.size() != 1) fail(name, name + " is one number");
    if (!std::isfinite(values[0])) fail(name, name + " is not a finite number");
    return values[0];
}

float Arguments::number(const std::string& name, float fallback) const {
    return has(name) ? number(name) : fallback;
}

int Arguments::integer(const std::string& name, int fallback) const {
    if (!has(name)) return fallback;
    const float value = number(name);
    if (value != std::floor(value) || std::fabs(value) > 1e6f) fail(name, name + " is a whole number");
    return static_cast<int>(value);
}

Zelkor::Vec3 Arguments::vec3(const std::string& name) const {
    const std::vector<float> values = tuple(name);
    if (values.size() != 3) fail(name, name + " is three numbers, x,y,z");
    return {values[0], values[1], values[2]};
}

Zelkor::Vec3 Arguments::vec3(const std::string& name, const Zelkor::Vec3& fallback) const {
    return has(name) ? vec3(name) : fallback;
}

Zelkor::Vec2 Arguments::pair(const std::string& name, const Zelkor::Vec2& fallback) const {
    if (!has(name)) return fallback;
    const std::vector<float> values = tuple(name);
    if (values.size() == 1) return {values[0], values[0]};
    if (values.size() != 2) fail(name, name + " is one number or two");
    return {values[0], values[1]};
}

std::vector<std::vector<float>> Arguments::tuples(const std::string& name, std::size_t size,
                                                  float missing) const {
    const Value value = evaluate(require(name), scope);
    if (value.kind != Value::Kind::List) fail(name, name + " is a list, [a,b c,d ...]");
    std::vector<std::vector<float>> result;
    for (const Value& each : value.list) {
        if (each.kind == Value::Kind::Word) fail(name, "'" + each.word + "' is not a known name");
        if (each.tuple.size() != size && each.tuple.size() + 1 != size)
            fail(name, "element " + std::to_string(result.size() + 1) + " of " + name + " has " +
                           std::to_string(each.tuple.size()) + " numbers");
        result.emplace_back(each.tuple.begin(), each.tuple.end());
        result.back().resize(size, missing);
    }
    return result;
}

std::vector<Zelkor::Vec2> Arguments::points2(const std::string& name) const {
    const Value value = evaluate(require(name), scope);
    if (value.kind != Value::Kind::List) fail(name, name + " is a list of points, [x,y x,y ...]");
    std::vector<Zelkor::Vec2> result;
    for (const Value& each : value.list) {
        if (each.kind == Value::Kind::Word) fail(name, "'" + each.word + "' is not a known name");
        if (each.tuple.size() != 2)
            fail(name, "point " + std::to_string(result.size() + 1) + " of " + name + " is not x,y");
        result.push_back({static_cast<float>(each.tuple[0]), static_cast<float>(each.tuple[1])});
    }
    return result;
}

std::string Arguments::name(const std::string& key) const {
    return evaluateName(require(key), scope);
}

std::string Arguments::name(const std::string& key, const std::string& fallback) const {
    return has(key) ? name(key) : fallback;
}

std::vector<std::string> Arguments::names(const std::string& key) const {
    std::vector<std::string> result;
    if (!has(key)) return result;
    std::istringstream parts(name(key));
    for (std::string part; std::getline(parts, part, ',');)
        result.push_back(part);
    return result;
}

Place Arguments::place(const std::string& name) const {
    const auto found = given.find(name);
    return found == given.end() ? statement.place : found->second.place;
}

void Arguments::fail(const std::string& name, const std::string& reason) const {
    throw SourceError(place(name), reason);
}

} // namespace forge
