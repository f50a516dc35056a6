#include "text/Expression.h"

#include "tools/Workshop.h"

namespace forge {
namespace {

Scope someNames() {
    Scope scope;
    scope.set("hip", Value::number(9));
    Value point;
    point.tuple = {1, 2, 3};
    scope.set("p", point);
    return scope;
}

TEST(Expression, calculatesNumbersAndTuples) {
    const Scope scope = someNames();
    for (const auto& [text, expected] : std::vector<std::pair<std::string, std::vector<double>>>{
             {"1+2*3", {7}},
             {"(1+2)*3", {9}},
             {"12/4/3", {1}},
             {"-hip+1", {-8}},
             {"2*-3", {-6}},
             {"7%4", {3}},
             {"hip/2,-.5,1e1", {4.5, -0.5, 10}},
             {"p*2", {2, 4, 6}},
             {"(1,2,3)+p", {2, 4, 6}},
             {"y(p)", {2}},
             {"1<2", {1}},
             {"hip==9", {1}},
             {"max(1,hip,3)", {9}},
             {"mix(2,4,.25)", {2.5}},
             {"sin(30)", {0.5}},
             {"atan2(1,1)", {45}},
             {"abs(-2)+sqrt(16)", {6}},
         }) {
        const Value value = evaluate({{}, text}, scope);
        ASSERT_EQ(value.tuple.size(), expected.size()) << text;
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_NEAR(value.tuple[i], expected[i], 1e-9) << text;
    }
}

TEST(Expression, blanksPartTheElementsOfAList) {
    const Value value = evaluate({{}, "[0,0 1,-2 hip -3\n 4 - 1 (1 + 2)]"}, someNames());
    ASSERT_EQ(value.kind, Value::Kind::List);
    std::vector<std::size_t> sizes;
    for (const Value& each : value.list)
        sizes.push_back(each.tuple.size());
    EXPECT_EQ(sizes, (std::vector<std::size_t>{2, 2, 1, 1, 1, 1}));
    EXPECT_EQ(value.list[3].tuple[0], -3);
    EXPECT_EQ(value.list[4].tuple[0], 3);
    EXPECT_EQ(value.list[5].tuple[0], 3);
}

TEST(Expression, chanceIsSteadyWithinItsRangeAndFollowsTheSeed) {
    Scope scope;
    const auto at = [&](const std::string& text) { return evaluateNumber({{}, text}, scope); };
    const double before = at("rand(3)");
    EXPECT_EQ(before, at("rand(3)"));
    EXPECT_TRUE(before >= 0 && before < 1);
    EXPECT_NE(before, at("rand(4)"));
    scope.set("seed", Value::number(5));
    EXPECT_NE(before, at("rand(3)"));
}

TEST(Expression, namesTakeCalculatedParts) {
    Scope scope;
    scope.set("i", Value::number(2));
    EXPECT_EQ(evaluateName({{}, "tail{i+1}.r"}, scope), "tail3.r");
    EXPECT_EQ(evaluateName({{}, "\"two words\""}, scope), "two words");
    EXPECT_THROW(evaluateName({{}, "tail{i"}, scope), SourceError);
}

TEST(Expression, faultsAreToldAtTheirPlace) {
    for (const auto& [text, message] : std::vector<std::pair<const char*, const char*>>{
             {"1+", "f:4:12: a value is missing here"},
             {"1/0", "f:4:11: division by zero"},
             {"knee+1", "f:4:14: cannot calculate: 'knee' is not a known name"},
             {"2)", "f:4:11: unexpected ')'"},
             {"foo(1)", "f:4:10: no function 'foo'"},
             {"pow(1)", "f:4:10: pow() takes 2 numbers"},
             {"p+(1,2)", "f:4:11: the two sides have 3 and 2 numbers"},
             {"(1,\n knee*2)", "f:5:6: cannot calculate: 'knee' is not a known name"},
             {"$", "f:4:10: unexpected '$'"},
         })
        EXPECT_EQ(faultOf([&] { evaluate({{"f", 4, 10}, text}, someNames()); }), message);
}

} // namespace
} // namespace forge
