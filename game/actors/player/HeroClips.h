// The hero's animation clips and how each is played.
#pragma once

namespace Zelkor {
class Unit;
}

struct HeroClip {
    const char* name;
    float speed = 1;
    float blend = 0.1f;         // seconds of cross-fade
    const char* next = nullptr; // the clip to follow
    bool once = false;          // holds its last pose
};

namespace HeroClips {

inline constexpr HeroClip idle{"idle"};
inline constexpr HeroClip run{"run", 1.6f}; // the speed at which his feet keep their place
inline constexpr HeroClip crouch{"crouch", 1.6f};
inline constexpr HeroClip crouchFlipped{"crouch_flipped", 1.6f};
inline constexpr HeroClip crouchTurn{"crouch_turn", 1, 0.1f, "crouch_flipped"}; // from facing right
inline constexpr HeroClip crouchTurn2{"crouch_turn2", 1, 0.1f, "crouch"};       // from facing left

inline constexpr HeroClip jumpOff{"jumpoff", 1, 0.05f, "jump_up"};
inline constexpr HeroClip jumpTurn{"jump_turn", 0.4f, 0.1f, "fall"};
inline constexpr HeroClip fall{"fall"};

// Landing strikes its pose at once and then melts into what follows.
inline constexpr float landingBlend = 0.2f;
inline constexpr HeroClip land{"land", 1, 0};
inline constexpr HeroClip landToIdle{"idle", 1.3f, landingBlend};
inline constexpr HeroClip landToRun{"run", 1.6f, landingBlend};
inline constexpr HeroClip landToCrouch{"crouch", 1.6f, landingBlend};
inline constexpr HeroClip landToCrouchFlipped{"crouch_flipped", 1.6f, landingBlend};

// Climbing: from one hand to the other, and what is held meanwhile.
inline constexpr HeroClip climbIdle1{"climb_idle1"}, climbIdle2{"climb_idle2"};
inline constexpr HeroClip climb1{"climb1", 1.9f, 0.05f, nullptr, true};
inline constexpr HeroClip climb2{"climb2", 1.9f, 0.05f, nullptr, true};
inline constexpr HeroClip climbUp{"climb_up", 1, 0.05f, nullptr, true};
// At once: the shot leaves from the arm that is out.
inline constexpr HeroClip climbShoot1Right{"climb_shoot_1r", 1, 0, nullptr, true};
inline constexpr HeroClip climbShoot2Right{"climb_shoot_2r", 1, 0, nullptr, true};
inline constexpr HeroClip climbShoot1Left{"climb_shoot_1l", 1, 0, nullptr, true};
inline constexpr HeroClip climbShoot2Left{"climb_shoot_2l", 1, 0, nullptr, true};

inline constexpr HeroClip cartJump{"cartjump", 1, 0.05f, "idle"};
inline constexpr HeroClip cartLand{"cartland", 1, 0.05f, "idle"};

// Shots, and the pose they come from and go back to.
inline constexpr HeroClip idleRecoil{"idle_recoil", 1.5f, 0.05f, "idle"};
inline constexpr HeroClip crouchRecoil{"crouch_recoil", 1, 0.05f, "crouch"};
inline constexpr HeroClip crouchFlippedRecoil{"crouch_flipped_recoil", 1, 0.05f, "crouch_flipped"};
inline constexpr HeroClip fallRecoil{"fall_recoil", 1, 0.05f, "fall"};

inline constexpr HeroClip hurtBack{"hurt_back", 1, 0.05f, nullptr, true};
inline constexpr HeroClip hurtFront{"hurt_front", 1, 0.05f, nullptr, true};

inline constexpr const char* armRecoil = "arm_recoil";

// In flight. The first five are mixed by where he steers.
inline constexpr const char* hover = "idle";
inline constexpr const char* flyForward = "forward";
inline constexpr const char* flyBackward = "backward";
inline constexpr const char* flyDown = "down";
inline constexpr const char* flyUp = "up";
inline constexpr const char* flightRecoil = "fire";
inline constexpr const char* flightHurt = "hurt";

} // namespace HeroClips

// Returns the seconds until the clip ends at its speed; 0, and nothing happens, where the unit has no such clip.
float playClip(Zelkor::Unit& unit, const HeroClip& clip);
// From its end to its beginning.
float playClipBackwards(Zelkor::Unit& unit, const HeroClip& clip);
// Changes the pace of a clip, playing or not.
void setClipSpeed(Zelkor::Unit& unit, const char* name, float speed);
// Makes the clip a layer of its own that adds its motion to whatever the body plays, and moves the right arm from
// the shoulder down only.
void prepareArmRecoil(Zelkor::Unit& unit, const char* clip = HeroClips::armRecoil);
// From its start, whatever is left of the shot before.
void playArmRecoil(Zelkor::Unit& unit, const char* clip = HeroClips::armRecoil);
