// A word whose letters are meshes of their own, which fly in one after another and out again.
#pragma once

#include <string>
#include <vector>

namespace Zelkor {
class Unit;
}
class MenuManager;

class FlyingLetters {
  public:
    // The meshes prefix + "1" to prefix + count; each has its place in the word in its mesh. They belong to
    // menuScene of the manager, which must outlive them.
    FlyingLetters(MenuManager& manager, const std::string& prefix, int count);
    ~FlyingLetters();
    FlyingLetters(const FlyingLetters&) = delete;

    // wanted: they fly in, as old as the time since then; else out, the same way back.
    void advance(float dt, bool wanted);
    // Of a letter from 0: 0 away .. 1 in its place.
    float progress(int letter) const;
    // Shifts a letter along x from its place.
    void shift(int letter, float x);
    int count() const { return static_cast<int>(letters_.size()); }

  private:
    MenuManager& manager_;
    std::vector<Zelkor::Unit*> letters_; // of the scene
    float clock_ = 0;                    // seconds of flight
};
