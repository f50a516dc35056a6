// The vocabulary of events: what may be placed in a stage, and how each is written.
#pragma once

#include "stage/Stage.h"
#include "text/Arguments.h"

#include <optional>

namespace forge {

// Null when the keyword is unknown. The names its statement takes, for Arguments.
std::optional<std::string> eventSignature(const std::string& keyword);

// Reads the fields of one event; its name, triggers and params are the caller's business. The keyword must
// have a signature.
StageEvent readEvent(const std::string& keyword, const Arguments& arguments, const Stage& stage);

// "columns=A,B rows=C,D", whole cells from the first to the last.
std::pair<Zelkor::Vec2, Zelkor::Vec2> readBox(const Arguments& arguments, const Stage& stage);

// The number the game knows an actor by; -1 for an unknown name.
int actorType(const std::string& name);

// A number without exponent or needless zeros.
std::string plainNumber(float value);

} // namespace forge
