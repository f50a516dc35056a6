#include "FuzzTarget.h"

#include "actors/ThingyManager.h"
#include "game/Session.h"
#include "world/EventList.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    static ThingyManager actors;
    static Session session(actors);
    Zelkor::TokenReader reader = tokensOf(data, size);
    EventList events(session);
    events.read(reader);
    fuzzCheck(static_cast<std::size_t>(events.size()) <= size);
    for (int i = 0; i < events.size(); ++i)
        fuzzCheck(events.at(i)->index == i);
    return 0;
}
