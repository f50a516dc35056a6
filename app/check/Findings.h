// What is wrong with the data, as it is found.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

struct Finding {
    std::string file; // relative to the data folder
    int line = 0;     // 1-based; 0 for binary files
    std::string reason;
};

using Findings = std::vector<Finding>;

// Words of a text file and the lines they stand on, in the game's own sense of white space.
struct Token {
    std::string_view text;
    int line = 0;
};

// A strict reader over the words of one file: each failed expectation is a finding, and reading goes on.
class StrictTokens {
  public:
    // file: below the data folder. A file that cannot be read is a finding and has no words.
    StrictTokens(std::string file, Findings& findings);

    bool atEnd() const { return next_ >= tokens_.size(); }
    int line() const;
    // The next word, empty at the end.
    std::string word();
    std::string_view peek() const { return atEnd() ? std::string_view() : tokens_[next_].text; }
    // Numbers in the game's syntax: an optional minus, digits, one point; no exponent.
    float number(const char* what);
    int integer(const char* what);
    // The word label itself.
    void label(const char* expected);

    void report(const std::string& reason) { report(lastLine_, reason); }
    void report(int line, const std::string& reason);

    const std::string& file() const { return file_; }

  private:
    std::string file_;
    std::string text_;
    std::vector<Token> tokens_;
    std::size_t next_ = 0;
    int lastLine_ = 1; // of the word read last
    Findings& findings_;
};

bool meshExists(const std::string& name);
bool textureExists(const std::string& name);
// In the folder itself or in either of its sub-folders "post" and "direct".
bool shaderExists(const std::string& name);
