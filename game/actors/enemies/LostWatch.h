// Tells when something that nobody else removes may be given up: it has been in the picture and is far out of
// it, or falls for good. What still waits for the hero stays.
#pragma once

class LostWatch {
  public:
    // screenDistance: 1 is the edge of the screen. Once an update.
    bool lost(float screenDistance, bool fallsForGood = false) {
        if (screenDistance < seenWithin) seen_ = true;
        return screenDistance > farOff && (seen_ || fallsForGood);
    }

  private:
    // A little more than where spawn events take back what is theirs.
    static constexpr float seenWithin = 1, farOff = 2.7f;
    bool seen_ = false;
};
