#include "text/Expression.h"

#include <gtest/gtest.h>

namespace forge {
namespace {

struct Numbers {
    const char* text;
    std::vector<double> expected;
};

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
    for (const Numbers& each : std::vector<Numbers>{
             {"1+2*3", {7}},
             {"(1+2)*3", {9}},
             {"8-2-1", {5}},
             {"12/4/3", {1}},
             {"-hip+1", {-8}},
             {"2*-3", {-6}},
             {"7%4", {3}},
             {"hip/2,-.5,1e1", {4.5, -0.5, 10}},
             {"p*2", {2, 4, 6}},
             {"(1,2,3)+p", {2, 4, 6}},
             {"y(p)", {2}},
             {"1<2", {1}},
             {"2<=1", {0}},
             {"hip==9", {1}},
             {"max(1,hip,3)", {9}},
             {"mix(2,4,.25)", {2.5}},
             {"sin(30)", {0.5}},
             {"atan2(1,1)", {45}},
             {"abs(-2)+sqrt(16)", {6}},
         }) {
        const Value value = evaluate({{}, each.text}, scope);
        ASSERT_EQ(value.tuple.size(), each.expected.size()) << each.text;
        for (std::size_t i = 0; i < each.expected.size(); ++i)
            EXPECT_NEAR(value.tuple[i], each.expected[i], 1e-9) << each.text;
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
    double low = 1, high = -1;
    for (int i = 0; i < 200; ++i) {
        const double r = at("rand(" + std::to_string(i) + ")"), j = at("jitter(" + std::to_string(i) + ")");
        EXPECT_EQ(r, at("rand(" + std::to_string(i) + ")"));
        EXPECT_GE(r, 0);
        EXPECT_LT(r, 1);
        low = std::min(low, j);
        high = std::max(high, j);
    }
    EXPECT_LT(low, -0.9);
    EXPECT_GT(high, 0.9);
    const double before = at("rand(3)");
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

struct Fault {
    const char* text;
    const char* message;
};

TEST(Expression, faultsAreToldAtTheirPlace) {
    for (const Fault& each : std::vector<Fault>{
             {"1+", "f:4:12: a value is missing here"},
             {"1/0", "f:4:11: division by zero"},
             {"knee+1", "f:4:14: cannot calculate: 'knee' is not a known name"},
             {"2)", "f:4:11: unexpected ')'"},
             {"foo(1)", "f:4:10: no function 'foo'"},
             {"pow(1)", "f:4:10: pow() takes 2 numbers"},
             {"p+(1,2)", "f:4:11: the two sides have 3 and 2 numbers"},
             {"(1,\n knee*2)", "f:5:6: cannot calculate: 'knee' is not a known name"},
             {"$", "f:4:10: unexpected '$'"},
         }) {
        try {
            evaluate({{"f", 4, 10}, each.text}, someNames());
            ADD_FAILURE() << each.text << " passed";
        } catch (const SourceError& e) {
            EXPECT_STREQ(e.what(), each.message) << each.text;
        }
    }
}

} // namespace
} // namespace forge
