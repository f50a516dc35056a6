#include "text/Interpreter.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace forge {
namespace {

constexpr int deepest = 60; // a definition that uses itself ends here
constexpr int mostRepeats = 2000;

std::string readText(const std::string& path, const Place& asked) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw SourceError(asked, "cannot read " + path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

} // namespace

void failUnknown(const Statement& statement, const std::string& known) {
    throw SourceError(statement.place, "'" + statement.keyword + "' means nothing here; known: " + known);
}

void Interpreter::runFile(const std::string& path, Scope& scope, const Handler& handler) {
    const std::string text = readText(path, {path, 1, 1});
    filesRead.push_back(path);
    documents.push_back(parseStatements(path, text));
    run(documents.back(), scope, handler);
}

void Interpreter::run(const std::vector<Statement>& statements, Scope& scope, const Handler& handler) {
    if (depth >= deepest)
        throw SourceError(statements.at(0).place, "definitions or includes nest without end");
    ++depth;
    for (const Statement& statement : statements)
        if (!control(statement, scope, handler)) handler(statement, scope);
    --depth;
}

bool Interpreter::control(const Statement& statement, Scope& scope, const Handler& handler) {
    const std::string& keyword = statement.keyword;
    if (keyword == "let") {
        const std::size_t equals = statement.rest.text.find('=');
        if (equals == std::string::npos) throw SourceError(statement.place, "let NAME = VALUE");
        std::string name = statement.rest.text.substr(0, equals);
        name.erase(name.find_last_not_of(" \t") + 1);
        Word value{statement.rest.place, statement.rest.text.substr(equals + 1)};
        value.place.column += static_cast<int>(equals) + 1;
        const Value result = evaluate(value, scope);
        if (result.kind == Value::Kind::Word)
            throw SourceError(value.place, "'" + result.word + "' is not a known name");
        scope.set(name, result);
    } else if (keyword == "if") {
        if (evaluateNumber(statement.rest, scope) != 0) {
            Scope inner(&scope);
            run(statement.children, inner, handler);
        }
    } else if (keyword == "repeat") {
        repeat(statement, scope, handler);
    } else if (keyword == "each") {
        each(statement, scope, handler);
    } else if (keyword == "define") {
        if (statement.words.empty() || !statement.hasBlock)
            throw SourceError(statement.place, "define NAME parameter parameter=default { ... }");
        scope.define(statement.words[0].text, &statement);
    } else if (keyword == "use") {
        use(statement, scope, handler);
    } else if (keyword == "include") {
        include(statement, scope, handler);
    } else {
        return false;
    }
    return true;
}

void Interpreter::repeat(const Statement& statement, Scope& scope, const Handler& handler) {
    const Arguments args(statement, scope, "count as");
    const int count = args.integer("count", 0);
    if (count < 0 || count > mostRepeats)
        args.fail("count", "repeat counts from 0 to " + std::to_string(mostRepeats));
    for (int i = 0; i < count; ++i) {
        Scope inner(&scope);
        inner.set(args.name("as", "i"), Value::number(i));
        run(statement.children, inner, handler);
    }
}

void Interpreter::each(const Statement& statement, Scope& scope, const Handler& handler) {
    if (statement.words.size() != 2)
        throw SourceError(statement.place, "each NAME [value value ...] { ... }");
    const Value list = evaluate(statement.words[1], scope);
    if (list.kind != Value::Kind::List)
        throw SourceError(statement.words[1].place, "a list is expected, [a b c]");
    for (const Value& value : list.list) {
        Scope inner(&scope);
        inner.set(statement.words[0].text, value);
        run(statement.children, inner, handler);
    }
}

void Interpreter::use(const Statement& statement, Scope& scope, const Handler& handler) {
    if (statement.words.empty()) throw SourceError(statement.place, "use NAME parameter=value ...");
    const std::string& name = statement.words[0].text;
    const Statement* definition = scope.definition(name);
    if (!definition) throw SourceError(statement.words[0].place, "nothing is defined as '" + name + "'");
    std::string signature;
    for (std::size_t i = 1; i < definition->words.size(); ++i) {
        const std::string& word = definition->words[i].text;
        signature += " " + word.substr(0, word.find('='));
    }
    Statement call = statement;
    call.words.erase(call.words.begin());
    const Arguments args(call, scope, signature);
    Scope inner(&scope);
    for (std::size_t i = 1; i < definition->words.size(); ++i) {
        const Word& word = definition->words[i];
        const std::size_t equals = word.text.find('=');
        const std::string parameter = word.text.substr(0, equals);
        if (args.has(parameter)) {
            inner.set(parameter, args.value(parameter));
        } else if (equals == std::string::npos) {
            throw SourceError(statement.place, "use " + name + " needs " + parameter + "=");
        } else {
            inner.set(parameter, evaluate({word.place, word.text.substr(equals + 1)}, inner));
        }
    }
    run(definition->children, inner, handler);
}

void Interpreter::include(const Statement& statement, Scope& scope, const Handler& handler) {
    if (statement.words.size() != 1) throw SourceError(statement.place, "include FILE");
    runFile(find(evaluateName(statement.words[0], scope), statement.words[0].place), scope, handler);
}

std::string Interpreter::fileFor(const std::string& name, const Place& asked) {
    const std::string path = find(name, asked);
    filesRead.push_back(path);
    return path;
}

std::string Interpreter::find(const std::string& name, const Place& asked) const {
    std::vector<std::filesystem::path> candidates{std::filesystem::path(asked.file).parent_path() / name};
    for (const std::string& folder : includeFolders)
        candidates.push_back(std::filesystem::path(folder) / name);
    for (const auto& path : candidates)
        if (std::filesystem::is_regular_file(path)) return path.string();
    throw SourceError(asked, "cannot find " + name);
}

} // namespace forge
