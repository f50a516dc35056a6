// What an expression yields: a tuple of numbers (a plain number is a tuple of one), a list, or a bare word.
#pragma once

#include <string>
#include <vector>

namespace forge {

struct Value {
    enum class Kind { Tuple, List, Word };
    Kind kind = Kind::Tuple;
    std::vector<double> tuple;
    std::vector<Value> list;
    std::string word;

    static Value number(double x) { return {Kind::Tuple, {x}, {}, {}}; }
};

} // namespace forge
