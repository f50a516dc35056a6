#include "io/TokenReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

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

// The digit by digit definition, straight.
float digitByDigit(const std::string& text) {
    float value = 0, scale = 1;
    bool seenPoint = false;
    for (const char c : text) {
        if (c == '.') {
            seenPoint = true;
            continue;
        }
        if (seenPoint)
            scale = static_cast<float>(scale * 0.1);
        else
            value = value * 10;
        const float digit = static_cast<float>(c - '0') * scale;
        value = value + digit;
    }
    return value;
}

TEST(TokenReader, FloatsAreSummedDigitByDigitInSinglePrecision) {
    std::srand(7);
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (int digits = 1 + std::rand() % 12; digits > 0; --digits)
            text += static_cast<char>('0' + std::rand() % 10);
        text.insert(static_cast<std::size_t>(std::rand()) % (text.size() + 1), ".");
        EXPECT_EQ(reading(text).readFloat(), digitByDigit(text)) << text;
        const float exact = std::strtof(text.c_str(), nullptr);
        EXPECT_NEAR(reading(text).readFloat(), exact, 1e-6f * exact) << text;
    }
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
    word = "kept";
    EXPECT_TRUE(scanned.scan("%s", &word));
    EXPECT_EQ(word, "kept");
    EXPECT_TRUE(Zelkor::atEnd(nullptr));
}

TEST(TokenReader, ScanReadsByTheSecondCharacterOfItsFormat) {
    TokenReader reader = reading("1.5 2 Delay{ \nx");
    float number = 0;
    int32_t integer = 0;
    std::string word;
    char c = 0;
    EXPECT_FALSE(reader.scan("%f", &number));
    EXPECT_FALSE(reader.scan("%d", &integer));
    EXPECT_FALSE(reader.scan("%s", &word));
    EXPECT_EQ(number, 1.5f);
    EXPECT_EQ(integer, 2);
    EXPECT_EQ(word, "Delay{");
    for (const char expected : {' ', '\n', 'x'}) {
        reader.scan("%c", &c);
        EXPECT_EQ(c, expected);
    }
    EXPECT_FALSE(reader.atEnd());
    EXPECT_TRUE(reader.scan("%c", &c));
    EXPECT_TRUE(reader.atEnd());
    EXPECT_EQ(c, 'x');
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
