#include "frontend/FlyingLetters.h"

#include "frontend/MenuManager.h"

using namespace Zelkor;

namespace {

constexpr float flightRate = 4;    // of a letter's way, per second
constexpr float letterDelay = 0.1f; // of the way, behind the letter before

} // namespace

FlyingLetters::FlyingLetters(MenuManager& manager, const std::string& prefix, int count) : manager_(manager) {
    for (int letter = 1; letter <= count; ++letter)
        letters_.push_back(manager.menuScene.createUnit(prefix + std::to_string(letter)));
}

FlyingLetters::~FlyingLetters() {
    for (Unit* letter : letters_)
        manager_.menuScene.removeUnit(letter);
}

void FlyingLetters::advance(float dt, bool wanted) {
    const float allThere = (1 + letterDelay * static_cast<float>(count() - 1)) / flightRate;
    clock_ = clamp(clock_ + (wanted ? dt : -dt), 0, allThere);
}

float FlyingLetters::progress(int letter) const {
    return clamp(flightRate * clock_ - letterDelay * static_cast<float>(letter), 0, 1);
}

void FlyingLetters::shift(int letter, float x) {
    letters_[static_cast<std::size_t>(letter)]->position.x = x;
}
