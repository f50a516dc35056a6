// The names a piece of source can see: variables and definitions, innermost first.
#pragma once

#include "text/Statement.h"
#include "text/Value.h"

#include <map>
#include <string>

namespace forge {

class Scope {
  public:
    explicit Scope(const Scope* enclosing = nullptr) : outer(enclosing) {}

    // Null when the name is unknown.
    const Value* variable(const std::string& name) const {
        const auto found = variables.find(name);
        if (found != variables.end()) return &found->second;
        return outer ? outer->variable(name) : nullptr;
    }
    const Statement* definition(const std::string& name) const {
        const auto found = definitions.find(name);
        if (found != definitions.end()) return found->second;
        return outer ? outer->definition(name) : nullptr;
    }

    void set(const std::string& name, Value value) { variables[name] = std::move(value); }
    void define(const std::string& name, const Statement* statement) { definitions[name] = statement; }

  private:
    const Scope* outer;
    std::map<std::string, Value> variables;
    std::map<std::string, const Statement*> definitions; // owned by the document they were parsed into
};

} // namespace forge
