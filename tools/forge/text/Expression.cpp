#include "text/Expression.h"

#include "mesh/Noise.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <functional>

namespace forge {
namespace {

constexpr double degree = 3.14159265358979323846 / 180;

class Evaluator {
  public:
    Evaluator(const Word& word, const Scope& names) : source(word), text(word.text), scope(names) {}

    Value whole() {
        Value result = tuple();
        skipBlanks();
        if (next < text.size()) fail(std::string("unexpected '") + text[next] + "'");
        return result;
    }

  private:
    [[noreturn]] void fail(const std::string& reason) const { failAt(next, reason); }

    [[noreturn]] void failAt(std::size_t offset, const std::string& reason) const {
        Place place = source.place;
        for (std::size_t i = 0; i < offset && i < text.size(); ++i) {
            ++place.column;
            if (text[i] == '\n') {
                ++place.line;
                place.column = 1;
            }
        }
        throw SourceError(place, reason);
    }

    void skipBlanks() {
        while (next < text.size() && std::isspace(static_cast<unsigned char>(text[next])))
            ++next;
    }

    bool take(char c) {
        skipBlanks();
        if (next >= text.size() || text[next] != c) return false;
        ++next;
        return true;
    }

    Value tuple() {
        Value result = comparison();
        skipBlanks();
        while (take(',')) {
            const std::size_t at = next;
            const Value part = comparison();
            if (result.kind != Value::Kind::Tuple || part.kind != Value::Kind::Tuple)
                failAt(at, "only numbers can be joined by ','" + (part.word.empty() ? "" : unknown(part)));
            result.tuple.insert(result.tuple.end(), part.tuple.begin(), part.tuple.end());
        }
        return result;
    }

    static std::string unknown(const Value& value) { return ": '" + value.word + "' is not a known name"; }

    Value comparison() {
        Value left = sum();
        for (;;) {
            skipBlanks();
            const std::size_t at = next;
            const std::string two = text.substr(next, 2);
            if (two == "<=" || two == ">=" || two == "==" || two == "!=") {
                next += 2;
                left = combine(at, left, sum(), [&](double a, double b) {
                    return two == "<=" ? a <= b : two == ">=" ? a >= b : two == "==" ? a == b : a != b;
                });
            } else if (take('<')) {
                left = combine(at, left, sum(), [](double a, double b) { return a < b; });
            } else if (take('>')) {
                left = combine(at, left, sum(), [](double a, double b) { return a > b; });
            } else {
                return left;
            }
        }
    }

    Value sum() {
        Value left = product();
        for (;;) {
            skipBlanks();
            const std::size_t at = next;
            // Inside a list blanks separate: `[1 -2]` is two numbers, `[1 - 2]` and `[1-2]` are one.
            if (listDepth > 0 && next > 0 && next + 1 < text.size() &&
                std::isspace(static_cast<unsigned char>(text[next - 1])) &&
                !std::isspace(static_cast<unsigned char>(text[next + 1])))
                return left;
            if (take('+')) {
                left = combine(at, left, product(), std::plus<double>());
            } else if (take('-')) {
                left = combine(at, left, product(), std::minus<double>());
            } else {
                return left;
            }
        }
    }

    Value product() {
        Value left = unary();
        for (;;) {
            skipBlanks();
            const std::size_t at = next;
            if (take('*')) {
                left = combine(at, left, unary(), std::multiplies<double>());
            } else if (take('/')) {
                const Value right = unary();
                for (const double x : right.tuple)
                    if (x == 0) failAt(at, "division by zero");
                left = combine(at, left, right, std::divides<double>());
            } else if (take('%')) {
                left = combine(at, left, unary(),
                               [](double a, double b) { return b == 0 ? 0 : std::fmod(a, b); });
            } else {
                return left;
            }
        }
    }

    Value unary() {
        if (take('-')) {
            const std::size_t at = next;
            return combine(at, Value::number(-1), unary(), std::multiplies<double>());
        }
        return primary();
    }

    // Element by element; a single number goes with every element of the other side.
    Value combine(std::size_t at, const Value& a, const Value& b,
                  const std::function<double(double, double)>& operation) const {
        if (a.kind == Value::Kind::Word) failAt(at, "cannot calculate" + unknown(a));
        if (b.kind == Value::Kind::Word) failAt(at, "cannot calculate" + unknown(b));
        if (a.kind == Value::Kind::List || b.kind == Value::Kind::List)
            failAt(at, "cannot calculate with a list");
        const std::size_t n = std::max(a.tuple.size(), b.tuple.size());
        if ((a.tuple.size() != n && a.tuple.size() != 1) || (b.tuple.size() != n && b.tuple.size() != 1))
            failAt(at, "the two sides have " + std::to_string(a.tuple.size()) + " and " +
                           std::to_string(b.tuple.size()) + " numbers");
        Value result;
        for (std::size_t i = 0; i < n; ++i)
            result.tuple.push_back(
                operation(a.tuple[a.tuple.size() == 1 ? 0 : i], b.tuple[b.tuple.size() == 1 ? 0 : i]));
        return result;
    }

    Value primary() {
        skipBlanks();
        if (next >= text.size()) fail("a value is missing here");
        const char c = text[next];
        if (std::isdigit(static_cast<unsigned char>(c)) || c == '.') return number();
        if (c == '"') return quoted();
        if (c == '(') {
            ++next;
            const int outerDepth = listDepth;
            listDepth = 0;
            const Value inner = tuple();
            listDepth = outerDepth;
            if (!take(')')) fail("')' expected");
            return inner;
        }
        if (c == '[') return list();
        if (std::isalpha(static_cast<unsigned char>(c)) || c == '_') return name();
        fail(std::string("unexpected '") + c + "'");
    }

    Value number() {
        char* end = nullptr;
        const double x = std::strtod(text.c_str() + next, &end);
        const auto length = static_cast<std::size_t>(end - (text.c_str() + next));
        if (length == 0) fail("not a number");
        next += length;
        return Value::number(x);
    }

    Value quoted() {
        const std::size_t end = text.find('"', next + 1);
        Value result;
        result.kind = Value::Kind::Word;
        result.word = text.substr(next + 1, end - next - 1);
        next = end + 1;
        return result;
    }

    Value list() {
        Value result;
        result.kind = Value::Kind::List;
        ++next;
        ++listDepth;
        while (!take(']')) {
            if (next >= text.size()) fail("']' expected");
            result.list.push_back(tuple());
        }
        --listDepth;
        return result;
    }

    Value name() {
        const std::size_t begin = next;
        while (next < text.size() && (std::isalnum(static_cast<unsigned char>(text[next])) ||
                                      text[next] == '_' || text[next] == '.' || text[next] == '|'))
            ++next;
        const std::string id = text.substr(begin, next - begin);
        if (next < text.size() && text[next] == '(') return call(begin, id);
        if (const Value* variable = scope.variable(id)) return *variable;
        if (id == "pi") return Value::number(180 * degree);
        Value result;
        result.kind = Value::Kind::Word;
        result.word = id;
        return result;
    }

    Value call(std::size_t begin, const std::string& id) {
        const Value given = primary();
        const std::vector<double>& a = given.tuple;
        const auto needs = [&](std::size_t n) {
            if (a.size() != n)
                failAt(begin, id + "() takes " + std::to_string(n) + " number" + (n == 1 ? "" : "s"));
        };
        if (id == "x" || id == "y" || id == "z") {
            const std::size_t i = static_cast<std::size_t>(id[0] - 'x');
            if (i >= a.size()) failAt(begin, id + "() of a tuple that has no " + id);
            return Value::number(a[i]);
        }
        if (id == "min" || id == "max") {
            if (a.empty()) failAt(begin, id + "() takes numbers");
            return Value::number(id == "min" ? *std::min_element(a.begin(), a.end())
                                             : *std::max_element(a.begin(), a.end()));
        }
        if (id == "atan2") return needs(2), Value::number(std::atan2(a[0], a[1]) / degree);
        if (id == "pow") return needs(2), Value::number(std::pow(a[0], a[1]));
        if (id == "mix") return needs(3), Value::number(a[0] + (a[1] - a[0]) * a[2]);
        if (id == "rand") return needs(1), Value::number(chance(a[0]));
        if (id == "jitter") return needs(1), Value::number(2 * chance(a[0]) - 1);
        struct Function {
            const char* name;
            double (*apply)(double);
        };
        static const Function functions[] = {
            {"sin", [](double v) { return std::sin(v * degree); }},
            {"cos", [](double v) { return std::cos(v * degree); }},
            {"tan", [](double v) { return std::tan(v * degree); }},
            {"sqrt", [](double v) { return std::sqrt(v); }},
            {"abs", [](double v) { return std::fabs(v); }},
            {"floor", [](double v) { return std::floor(v); }},
            {"ceil", [](double v) { return std::ceil(v); }},
            {"round", [](double v) { return std::round(v); }},
        };
        for (const Function& function : functions)
            if (id == function.name) return needs(1), Value::number(function.apply(a[0]));
        failAt(begin, "no function '" + id + "'");
    }

    double chance(double index) const {
        const Value* seed = scope.variable("seed");
        const double s = seed && !seed->tuple.empty() ? seed->tuple[0] : 0;
        return hashUnit(static_cast<int>(std::floor(index * 64)), static_cast<int>(s), 77);
    }

    const Word& source;
    const std::string& text;
    const Scope& scope;
    std::size_t next = 0;
    int listDepth = 0;
};

} // namespace

Value evaluate(const Word& source, const Scope& scope) {
    return Evaluator(source, scope).whole();
}

double evaluateNumber(const Word& source, const Scope& scope) {
    const Value value = evaluate(source, scope);
    if (value.kind == Value::Kind::Word)
        throw SourceError(source.place, "'" + value.word + "' is not a known name");
    if (value.kind != Value::Kind::Tuple || value.tuple.size() != 1)
        throw SourceError(source.place, "one number expected");
    return value.tuple[0];
}

std::string evaluateName(const Word& source, const Scope& scope) {
    std::string text = source.text;
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') text = text.substr(1, text.size() - 2);
    for (std::size_t open; (open = text.find('{')) != std::string::npos;) {
        const std::size_t close = text.find('}', open);
        if (close == std::string::npos) throw SourceError(source.place, "'}' expected in the name " + text);
        const Word inner{source.place, text.substr(open + 1, close - open - 1)};
        const Value* const known = scope.variable(inner.text);
        std::string put;
        if (known && known->kind == Value::Kind::Word) {
            put = known->word;
        } else {
            const double value = evaluateNumber(inner, scope);
            put = value == std::floor(value) ? std::to_string(static_cast<long>(value)) : std::to_string(value);
        }
        text.replace(open, close - open + 1, put);
    }
    return text;
}

} // namespace forge
