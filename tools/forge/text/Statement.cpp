#include "text/Statement.h"

#include <utility>

namespace forge {
namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

class Parser {
  public:
    Parser(const std::string& file, const std::string& source) : text(source) { place.file = file; }

    std::vector<Statement> block(bool nested, const Place& opened) {
        std::vector<Statement> statements;
        for (;;) {
            skipEmpty();
            if (atEnd()) {
                if (nested) throw SourceError(opened, "this block is never closed");
                return statements;
            }
            if (text[next] == '}') {
                if (!nested) throw SourceError(place, "'}' closes nothing");
                advance();
                return statements;
            }
            statements.push_back(statement());
        }
    }

  private:
    bool atEnd() const { return next >= text.size(); }

    void advance() {
        if (text[next] == '\n') {
            ++place.line;
            place.column = 1;
        } else {
            ++place.column;
        }
        ++next;
    }

    void skipComment() {
        while (!atEnd() && text[next] != '\n')
            advance();
    }

    void skipEmpty() {
        while (!atEnd()) {
            if (text[next] == '#') {
                skipComment();
            } else if (isBlank(text[next]) || text[next] == '\n') {
                advance();
            } else {
                return;
            }
        }
    }

    void skipBlanks() {
        while (!atEnd() && isBlank(text[next]))
            advance();
    }

    Word word() {
        Word result{place, {}};
        std::vector<std::pair<char, Place>> open;
        while (!atEnd()) {
            const char c = text[next];
            if (c == '"') {
                quoted(result.text);
                continue;
            }
            if (c == '#' && (!open.empty() || result.text.empty())) {
                skipComment();
                continue;
            }
            if (open.empty() && (isBlank(c) || c == '\n' || c == '#')) break;
            if (c == '(' || c == '[') open.emplace_back(c == '(' ? ')' : ']', place);
            if (c == ')' || c == ']') {
                if (open.empty() || open.back().first != c)
                    throw SourceError(place, std::string("'") + c + "' closes nothing");
                open.pop_back();
            }
            result.text += c;
            advance();
        }
        if (!open.empty())
            throw SourceError(open.back().second, std::string("'") + open.back().first + "' is missing");
        return result;
    }

    void quoted(std::string& out) {
        const Place opened = place;
        do {
            out += text[next];
            advance();
            if (atEnd() || text[next] == '\n') throw SourceError(opened, "this quote is never closed");
        } while (text[next] != '"');
        out += '"';
        advance();
    }

    Statement statement() {
        Statement result;
        const Word keyword = word();
        result.place = keyword.place;
        result.keyword = keyword.text;
        skipBlanks();
        result.rest.place = place;
        const std::size_t restBegin = next;
        std::size_t restEnd = next;
        while (!atEnd() && text[next] != '\n' && text[next] != '#' && text[next] != '}') {
            if (text[next] == '{' && isStandalone()) {
                const Place opened = place;
                advance();
                result.children = block(true, opened);
                result.hasBlock = true;
                break;
            }
            result.words.push_back(word());
            restEnd = next;
            skipBlanks();
        }
        result.rest.text = text.substr(restBegin, restEnd - restBegin);
        return result;
    }

    // A brace inside a word (`bone=tail{i}`) belongs to the word.
    bool isStandalone() const {
        const char after = next + 1 < text.size() ? text[next + 1] : '\n';
        return isBlank(after) || after == '\n' || after == '#' || after == '}';
    }

    const std::string& text;
    std::size_t next = 0;
    Place place;
};

} // namespace

std::vector<Statement> parseStatements(const std::string& file, const std::string& text) {
    return Parser(file, text).block(false, {});
}

Statement afterKeyword(const Statement& s) {
    if (s.words.empty())
        throw SourceError(s.place, s.keyword + " SHAPE ... or " + s.keyword + " { ... }");
    Statement rest = s;
    rest.place = s.words[0].place;
    rest.keyword = s.words[0].text;
    rest.words.erase(rest.words.begin());
    return rest;
}

} // namespace forge
