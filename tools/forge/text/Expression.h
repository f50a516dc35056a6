// Arithmetic in sources: + - * / %, comparisons, parentheses, tuples `1,2,3`, lists `[a b c]`, variables and
// the functions sin cos tan atan2 (degrees), sqrt abs floor ceil round min max mix pow, rand(i) in 0..1 and
// jitter(i) in -1..1 (both functions of their argument and the variable `seed`).
#pragma once

#include "text/Scope.h"

namespace forge {

// Throws SourceError, at the very character, on a syntax error or an operation that makes no sense.
Value evaluate(const Word& source, const Scope& scope);
double evaluateNumber(const Word& source, const Scope& scope);

// A name with each {expression} in it replaced by its value: tail{i+1} gives tail3.
std::string evaluateName(const Word& source, const Scope& scope);

} // namespace forge
