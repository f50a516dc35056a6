#include "io/TokenReader.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstring>
#include <limits>
#include <utility>

namespace Zelkor {

namespace {

// Space and the five controls from tab to carriage return.
bool isWhitespace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// What the n-th digit behind the point adds: digit x scale, where every scale is the one before it x 0.1,
// rounded to single precision. 46 steps take the scale to zero and there it stays.
constexpr int fractionDigits = 46;
using FractionTable = std::array<std::array<float, 10>, fractionDigits + 1>;

constexpr FractionTable makeFractionTable() {
    FractionTable table{};
    float scale = 1;
    for (int place = 0; place < fractionDigits; ++place) {
        scale = static_cast<float>(scale * 0.1);
        for (int digit = 0; digit < 10; ++digit)
            table[place][digit] = static_cast<float>(digit) * scale;
    }
    return table;
}

constexpr FractionTable fractionTable = makeFractionTable();

} // namespace

TokenReader::TokenReader(std::vector<char> bytes) : data_(std::move(bytes)) {
    constexpr std::size_t most = std::numeric_limits<int32_t>::max();
    if (data_.size() > most) data_.resize(most);
}

std::unique_ptr<TokenReader> TokenReader::open(std::FILE* file) {
    std::vector<char> bytes;
    const long start = std::ftell(file);
    if (start >= 0 && std::fseek(file, 0, SEEK_END) == 0) {
        const long size = std::ftell(file);
        std::fseek(file, start, SEEK_SET);
        if (size > start && size <= std::numeric_limits<int32_t>::max())
            bytes.resize(static_cast<std::size_t>(size - start));
        bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    }
    std::fclose(file);
    return std::make_unique<TokenReader>(std::move(bytes));
}

void TokenReader::beginToken() {
    const auto size = static_cast<int32_t>(data_.size());
    if (position_ >= size) atEnd_ = true;
    while (position_ < size && isWhitespace(data_[position_]))
        ++position_;
}

float TokenReader::readFloat() {
    beginToken();
    const char* at = data_.data() + position_;
    const char* const end = data_.data() + data_.size();
    const bool negative = at < end && *at == '-';
    at += negative;

    // Whole digits are summed as an integer, which is the same to the bit while a float holds it exactly.
    constexpr uint32_t exactBelow = (1u << 24) / 10 - 1;
    uint32_t whole = 0;
    for (; at < end && isDigit(*at) && whole < exactBelow; ++at)
        whole = whole * 10 + (*at - '0');
    auto value = static_cast<float>(whole);
    for (; at < end && isDigit(*at); ++at)
        value = value * 10 + static_cast<float>(*at - '0');

    // Every point after the first changes nothing.
    for (int place = 0; at < end && *at == '.';)
        for (++at; at < end && isDigit(*at); ++at) {
            value += fractionTable[place][*at - '0'];
            if (place < fractionDigits) ++place;
        }
    position_ = static_cast<int32_t>(at - data_.data());
    // A product, not a choice: no processor foresees the signs of coordinates.
    constexpr float signs[] = {1, -1};
    return signs[negative] * value;
}

int32_t TokenReader::readInt() {
    beginToken();
    const auto size = static_cast<int32_t>(data_.size());
    const bool negative = position_ < size && data_[position_] == '-';
    if (negative) ++position_;
    // Unsigned, so that too long a number wraps instead of overflowing.
    uint32_t n = 0;
    for (; position_ < size && isDigit(data_[position_]); ++position_)
        n = n * 10 + static_cast<uint32_t>(data_[position_] - '0');
    return static_cast<int32_t>(negative ? 0 - n : n);
}

std::string_view TokenReader::nextWord() {
    beginToken();
    const auto size = static_cast<int32_t>(data_.size());
    const int32_t start = position_;
    while (position_ < size && !isWhitespace(data_[position_]))
        ++position_;
    return {data_.data() + start, static_cast<std::size_t>(position_ - start)};
}

void TokenReader::readWord(char* buffer, std::size_t capacity) {
    assert(capacity > 0);
    const std::string_view word = nextWord().substr(0, capacity - 1);
    std::memcpy(buffer, word.data(), word.size());
    buffer[word.size()] = 0;
}

std::string TokenReader::readWord() {
    return std::string(nextWord().substr(0, maxWordLength));
}

bool TokenReader::scan(const char* format, void* value) {
    if (atEnd_) return true;
    switch (format[1]) {
    case 'f':
        *static_cast<float*>(value) = readFloat();
        break;
    case 'd':
        *static_cast<int32_t*>(value) = readInt();
        break;
    case 's':
        *static_cast<std::string*>(value) = readWord();
        break;
    case 'c':
        if (position_ >= static_cast<int32_t>(data_.size()))
            atEnd_ = true;
        else
            *static_cast<char*>(value) = data_[position_++];
        break;
    }
    return position_ >= static_cast<int32_t>(data_.size());
}

int TokenReader::line() const {
    return 1 + static_cast<int>(std::count(data_.begin(), data_.begin() + position_, '\n'));
}

} // namespace Zelkor
