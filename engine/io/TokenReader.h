// Cursor over a whole text file in memory that hands out whitespace-separated tokens. It knows no format:
// keywords, braces and field order are the business of each loader.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Zelkor {

class TokenReader {
  public:
    // Takes a file opened in mode "rb", reads it from its current position to its end and closes it.
    static std::unique_ptr<TokenReader> open(std::FILE* file);
    // The same over bytes that are already in memory.
    explicit TokenReader(std::vector<char> bytes);

    // An optional single '-', digits and points: no exponent, no '+'. 0 where there is no number. The byte
    // that stops the number stays unread.
    float readFloat();
    int32_t readInt();
    // Copies the next word, zero-terminated, into buffer; an over-long word is cut to capacity - 1 bytes and
    // its rest is dropped.
    void readWord(char* buffer, std::size_t capacity);
    // The same into a string, of at most maxWordLength bytes.
    std::string readWord();

    // format "%f", "%d", "%s" or "%c": the type of value must match (float, int32_t, std::string, char). "%c"
    // skips no whitespace. True when the data is used up after the read, not when the read failed.
    bool scan(const char* format, void* value);

    // Set once a read has begun at or past the end; never cleared.
    bool atEnd() const { return atEnd_; }
    // Bytes not yet read. A count that a file claims is no truer than these can make it.
    int32_t left() const { return static_cast<int32_t>(data_.size()) - position_; }
    // 1-based line of the next unread byte, for messages.
    int line() const;

    static constexpr std::size_t maxWordLength = 255;

  private:
    void beginToken();
    std::string_view nextWord();

    std::vector<char> data_;
    int32_t position_ = 0;
    bool atEnd_ = false;
};

// A missing reader counts as at its end.
inline bool atEnd(const TokenReader* reader) {
    return !reader || reader->atEnd();
}

} // namespace Zelkor
