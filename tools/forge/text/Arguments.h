// The words of one statement matched to the names it takes.
#pragma once

#include "math/Math.h"
#include "text/Expression.h"

#include <map>
#include <string>
#include <vector>

namespace forge {

// The signature lists the names a statement takes, blank-separated. Those before ';' may also be given by
// position, in that order; a name ending in '?' is a flag, given as the bare word. A word that fits nothing
// is refused at once, so a misspelt parameter never passes silently.
class Arguments {
  public:
    Arguments(const Statement& statement, const Scope& scope, const std::string& signature);

    bool has(const std::string& name) const { return given.count(name) > 0; }
    bool flag(const std::string& name) const;

    // Without a fallback the parameter is required.
    float number(const std::string& name) const;
    float number(const std::string& name, float fallback) const;
    int integer(const std::string& name, int fallback) const;
    Zelkor::Vec3 vec3(const std::string& name) const;
    Zelkor::Vec3 vec3(const std::string& name, const Zelkor::Vec3& fallback) const;
    // One number stands for both.
    Zelkor::Vec2 pair(const std::string& name, const Zelkor::Vec2& fallback) const;
    std::vector<Zelkor::Vec2> points2(const std::string& name) const;
    // Tuples of exactly `size` numbers, or of `size` - 1 with `missing` for the last.
    std::vector<std::vector<float>> tuples(const std::string& name, std::size_t size, float missing) const;
    std::string name(const std::string& name) const;
    std::string name(const std::string& name, const std::string& fallback) const;
    Value value(const std::string& name) const { return evaluate(require(name), scope); }
    // Comma-separated names.
    std::vector<std::string> names(const std::string& name) const;

    // Where a parameter stands, or the statement when it is not given.
    Place place(const std::string& name) const;
    [[noreturn]] void fail(const std::string& name, const std::string& reason) const;

  private:
    const Word& require(const std::string& name) const;
    std::vector<float> tuple(const std::string& name) const;

    const Statement& statement;
    const Scope& scope;
    std::map<std::string, Word> given;
};

} // namespace forge
