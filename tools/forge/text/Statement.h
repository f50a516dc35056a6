// The shape every source of the kit shares: a statement a line, `keyword word word name=word ...`, with an
// optional block of statements in braces. `#` starts a comment. Words are split at blanks outside of
// brackets, parentheses and quotes; an open bracket carries a statement over the end of its line.
#pragma once

#include "text/Place.h"

#include <string>
#include <vector>

namespace forge {

struct Word {
    Place place;
    std::string text;
};

struct Statement {
    Place place;
    std::string keyword;
    std::vector<Word> words;
    Word rest; // everything after the keyword, unsplit, for statements that take one expression
    std::vector<Statement> children;
    bool hasBlock = false;
};

// Throws SourceError on an unbalanced brace, bracket or quote.
std::vector<Statement> parseStatements(const std::string& file, const std::string& text);

// `cut disc r=2` as the statement `disc r=2`. Throws SourceError when nothing follows the keyword.
Statement afterKeyword(const Statement& s);

} // namespace forge
