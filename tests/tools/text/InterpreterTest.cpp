// Statements, their parameters, and the control words every source shares.
#include "text/Interpreter.h"
#include "tools/Workshop.h"

namespace forge {
namespace {

class SharedWords : public Workshop {
  protected:
    // Runs a source and returns what `say VALUE` statements said, in order.
    std::vector<double> said(const std::string& text) {
        Interpreter interpreter({path("shared")});
        Scope scope;
        std::vector<double> values;
        const Interpreter::Handler handler = [&](const Statement& s, Scope& inner) {
            if (s.keyword != "say") failUnknown(s, "say");
            values.push_back(static_cast<double>(Arguments(s, inner, "value").number("value")));
            if (s.hasBlock) interpreter.run(s.children, inner, handler);
        };
        interpreter.runFile(write("a.txt", text), scope, handler);
        files = interpreter.files();
        return values;
    }

    std::string fault(const std::string& text) {
        const std::string what = faultOf([&] { said(text); });
        return what.empty() ? what : what.substr(folder.size() + 1);
    }

    std::vector<std::string> files;
};

using Values = std::vector<double>;

TEST_F(SharedWords, blocksRepeatChooseAndNest) {
    EXPECT_EQ(said("let n = 2 # a comment\nrepeat n { say i*10 }\nrepeat 2 as=k { repeat 2 { say k*2+i } }"),
              (Values{0, 10, 0, 1, 2, 3}));
    EXPECT_EQ(said("each v [3 5 8] { if v > 4 { say v } }"), (Values{5, 8}));
    EXPECT_EQ(said("say 1 { say 2 }\nsay\t3 {\n # nothing\n}\nsay (1 +\n 1)\n"), (Values{1, 2, 3, 2}));
}

TEST_F(SharedWords, definitionsTakeParametersAndKeepTheirNamesToThemselves) {
    EXPECT_EQ(
        said("define two a b=a*2 {\n let c = a+b\n say c\n}\nlet a = 100\nuse two a=1\nuse two 2 b=5\nsay a"),
        (Values{3, 7, 100}));
}

TEST_F(SharedWords, includesLookBesideTheFileAndInTheSharedFolders) {
    write("near.inc", "define near { say 7 }\nlet x = 4");
    write("shared/far.inc", "include deeper.inc");
    write("shared/deeper.inc", "say 9");
    EXPECT_EQ(said("include near.inc\nuse near\nsay x\ninclude far.inc"), (Values{7, 4, 9}));
    EXPECT_EQ(files.size(), 4u) << "every file read is a dependency";
    write("bad.inc", "say 1\nsay oops");
    EXPECT_EQ(fault("include bad.inc"), "bad.inc:2:5: 'oops' is not a known name");
}

TEST_F(SharedWords, faultsNameLineAndColumn) {
    EXPECT_EQ(fault("say 1\n  shout 2"), "a.txt:2:3: 'shout' means nothing here; known: say");
    EXPECT_EQ(fault("say 1\nsay loud=1"), "a.txt:2:5: 'say' has no parameter 'loud'; it takes: value");
    EXPECT_EQ(fault("say 1 2"), "a.txt:1:7: 'say' has no place for '2'; it takes: value");
    EXPECT_EQ(fault("say"), "a.txt:1:1: 'say' needs value=");
    EXPECT_EQ(fault("say value=\n"), "a.txt:1:5: 'value=' has no value");
    EXPECT_EQ(fault("say 1 value=2"), "a.txt:1:7: 'value' is given twice");
    EXPECT_EQ(fault("say 1,2"), "a.txt:1:5: value is one number");
    EXPECT_EQ(fault("say value=x"), "a.txt:1:11: 'x' is not a known name");
    EXPECT_EQ(fault("if 1 {\n say 1\n"), "a.txt:1:6: this block is never closed");
    EXPECT_EQ(fault("say 1\n}"), "a.txt:2:1: '}' closes nothing");
    EXPECT_EQ(fault("say (1\nsay 2"), "a.txt:1:5: ')' is missing");
    EXPECT_EQ(fault("say 1]"), "a.txt:1:6: ']' closes nothing");
    EXPECT_EQ(fault("say \"a\nsay 1"), "a.txt:1:5: this quote is never closed");
    EXPECT_EQ(fault("use ghost"), "a.txt:1:5: nothing is defined as 'ghost'");
    EXPECT_EQ(fault("define d w { say w }\nuse d"), "a.txt:2:1: use d needs w=");
    EXPECT_EQ(fault("include ghost.inc"), "a.txt:1:9: cannot find ghost.inc");
    EXPECT_EQ(fault("let q = 2*\n"), "a.txt:1:11: a value is missing here");
}

TEST_F(SharedWords, endlessNestingIsRefused) {
    EXPECT_NE(fault("define d { use d }\nuse d").find("nest without end"), std::string::npos);
    EXPECT_NE(fault("include a.txt").find("nest without end"), std::string::npos);
    EXPECT_NE(fault("repeat 100000 { say i }").find("counts from 0"), std::string::npos);
}

} // namespace
} // namespace forge
