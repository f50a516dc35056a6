#include "io/TokenReader.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Zelkor::TokenReader;

TokenReader reading(std::string_view text) {
    return TokenReader(std::vector<char>(text.begin(), text.end()));
}

TEST(TokenReader, FloatsTakeTheLongestPrefixOfDigitsAndPoints) {
    struct Case {
        const char* text;
        float value;
        const char* rest; // the next word
    };
    for (const Case& expected :
         {Case{"-0.25", -0.25f, ""}, Case{"1.2.3", 1.23f, ""}, Case{".5", 0.5f, ""}, Case{"5.", 5, ""},
          Case{"..7", 0.7f, ""}, Case{"+5", 0, "+5"}, Case{"1.5e3", 1.5f, "e3"}, Case{"--5", 0, "-5"},
          Case{"12abc", 12, "abc"}, Case{"nan", 0, "nan"}, Case{"-", 0, ""}, Case{"", 0, ""},
          Case{"\v\f 3,5", 3, ",5"}, Case{"16777217", 16777216, ""},
          Case{"123456789012", 123456790528.0f, ""}}) {
        TokenReader reader = reading(expected.text);
        EXPECT_FLOAT_EQ(reader.readFloat(), expected.value) << expected.text;
        EXPECT_EQ(reader.readWord(), expected.rest) << expected.text;
    }
    TokenReader minusBlank = reading("- 5");
    EXPECT_TRUE(std::signbit(minusBlank.readFloat()));
    EXPECT_EQ(minusBlank.readInt(), 5);
    EXPECT_TRUE(std::isinf(reading(std::string(60, '9')).readFloat()));
    EXPECT_FLOAT_EQ(reading("0." + std::string(200, '0') + "9").readFloat(), 0);
}

TEST(TokenReader, IntegersStopAtTheFirstOtherByte) {
    TokenReader reader = reading("12abc 3.5 -7\r\n2147483648 -");
    EXPECT_EQ(reader.readInt(), 12);
    EXPECT_EQ(reader.readWord(), "abc");
    EXPECT_EQ(reader.readInt(), 3);
    EXPECT_FLOAT_EQ(reader.readFloat(), 0.5f);
    EXPECT_EQ(reader.readInt(), -7);
    EXPECT_EQ(reader.readInt(), INT32_MIN); // wraps
    EXPECT_EQ(reader.readInt(), 0);
}

TEST(TokenReader, TheEndIsNoticedByTheReadAfterIt) {
    TokenReader words = reading("a \n");
    EXPECT_EQ(words.readWord(), "a");
    EXPECT_EQ(words.readWord(), "");
    EXPECT_FALSE(words.atEnd());
    EXPECT_EQ(words.readWord(), "");
    EXPECT_TRUE(words.atEnd());

    TokenReader scanned = reading("a b");
    std::string word;
    EXPECT_FALSE(scanned.scan("%s", &word));
    EXPECT_EQ(word, "a");
    EXPECT_TRUE(scanned.scan("%s", &word)); // the last one is read and uses the data up
    EXPECT_EQ(word, "b");
    EXPECT_FALSE(scanned.atEnd());
    EXPECT_TRUE(scanned.scan("%s", &word));
    EXPECT_TRUE(scanned.atEnd());
    EXPECT_TRUE(Zelkor::atEnd(nullptr));
}

TEST(TokenReader, OverlongWordsAreCutAndLinesAreCounted) {
    TokenReader reader = reading("abcdef\r\n" + std::string(300, 'w') + "\nlast");
    char buffer[4];
    reader.readWord(buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(reader.readWord(), std::string(TokenReader::maxWordLength, 'w'));
    EXPECT_EQ(reader.line(), 2);
    EXPECT_EQ(reader.readWord(), "last");
    EXPECT_EQ(reader.line(), 3);
}

} // namespace
