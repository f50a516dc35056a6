// A bird too small for the bandit that it carries: it stays above the hero as well as it can. Without its
// rider it flies away.
#pragma once

#include "actors/enemies/Enemy.h"

class Bandit1;

class CarrierBird final : public Enemy {
  public:
    // From a rider's feet to where its own place is, when they look to the right.
    static constexpr Zelkor::Vec3 aboveRider{-0.9f, 25.6f, -1.6f};

    explicit CarrierBird(Zelkor::Unit& ownUnit);
    ~CarrierBird() override;

    void update(float time, float dt) override;
    void carry(Bandit1& newRider);
    // The rider knows it too.
    void letGo();

  protected:
    Box hitBox() const override;
    void die(const Attack& attack) override;

  private:
    void flyLoaded(float dt);
    void placeRider() const;

    Bandit1* rider_ = nullptr;
    float height_;  // world y around which it flies
    float age_ = 0; // seconds
};
