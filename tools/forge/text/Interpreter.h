// Runs the statements every kind of source shares: let, if, repeat, each, define, use, include. Everything
// else goes to the handler of whoever is reading.
#pragma once

#include "text/Arguments.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace forge {

class Interpreter {
  public:
    using Handler = std::function<void(const Statement&, Scope&)>;

    // `include` looks beside the including file first, then in these folders.
    explicit Interpreter(std::vector<std::string> folders = {}) : includeFolders(std::move(folders)) {}

    // Throws SourceError; a file that cannot be read is named with the place that asked for it.
    void runFile(const std::string& path, Scope& scope, const Handler& handler);
    void run(const std::vector<Statement>& statements, Scope& scope, const Handler& handler);

    // A file named in a source: looked for as `include` does, and counted among the files read. `asked` is the
    // statement that names it.
    std::string fileFor(const std::string& name, const Place& asked);

    // Every file read so far, in order.
    const std::vector<std::string>& files() const { return filesRead; }

  private:
    bool control(const Statement& statement, Scope& scope, const Handler& handler);
    void repeat(const Statement& statement, Scope& scope, const Handler& handler);
    void each(const Statement& statement, Scope& scope, const Handler& handler);
    void use(const Statement& statement, Scope& scope, const Handler& handler);
    void include(const Statement& statement, Scope& scope, const Handler& handler);
    std::string find(const std::string& name, const Place& asked) const;

    std::vector<std::string> includeFolders;
    std::vector<std::string> filesRead;
    std::deque<std::vector<Statement>> documents; // definitions point into them
    int depth = 0;
};

[[noreturn]] void failUnknown(const Statement& statement, const std::string& known);

} // namespace forge
