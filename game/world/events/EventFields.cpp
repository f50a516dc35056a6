#include "world/events/EventFields.h"

#include "io/TokenReader.h"
#include "world/LevelFile.h"

#include <cmath>

using namespace Zelkor;

namespace {

constexpr float boxDepth = 1000;

float coordinate(TokenReader& reader) {
    return clamp(reader.readFloat(), -worldLimit, worldLimit);
}

} // namespace

namespace EventFields {

Vec3 position(TokenReader& reader) {
    reader.readWord();
    Vec3 v;
    v.x = coordinate(reader);
    v.y = coordinate(reader);
    v.z = coordinate(reader);
    return v;
}

Quat rotation(TokenReader& reader) {
    reader.readWord();
    const float halfAngle = coordinate(reader) * pi / 180 / 2;
    Vec3 axis;
    axis.x = coordinate(reader);
    axis.y = coordinate(reader);
    axis.z = coordinate(reader);
    axis = axis * sine(halfAngle);
    Quat q{cosine(halfAngle), axis.x, axis.y, axis.z};
    if (quatNormalize(q) > 0) return q;
    return {};
}

Vec2 pair(TokenReader& reader) {
    reader.readWord();
    Vec2 v;
    v.x = coordinate(reader);
    v.y = coordinate(reader);
    return v;
}

int integer(TokenReader& reader) {
    reader.readWord();
    return reader.readInt();
}

float number(TokenReader& reader) {
    reader.readWord();
    return coordinate(reader);
}

std::string word(TokenReader& reader) {
    reader.readWord();
    return reader.readWord();
}

} // namespace EventFields

EventBox::EventBox(TokenReader& reader) {
    const Vec2 low = EventFields::pair(reader), high = EventFields::pair(reader);
    min = {low.x, low.y, -boxDepth};
    max = {high.x, high.y, boxDepth};
}
