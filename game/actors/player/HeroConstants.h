// Every number of the hero's movement. World units (a tile is 10), seconds, units per second and per second
// squared.
#pragma once

inline constexpr struct HeroConstants {
    float unitScale = 1.3f;
    float maxHealth = 4;

    // Body. The feet lie feetBelowCentre below the body centre along up.
    float feetBelowCentre = 10;
    float halfWidth = 4.5f;
    float halfHeight = 9, crouchHalfHeight = 5;         // of the collision box
    float boxBelowCentre = 1, crouchBoxBelowCentre = 5; // its centre, towards the feet
    float hurtHalfWidth = 4;
    float hurtHeight = 18, crouchHurtHeight = 10.5f;
    float headRoom = 15; // above the feet: the cell that must be free to stand up
    float yawRate = 10;  // share of the remaining turn per second, for the roll too
    float platformReach = 100;
    float footing = 0.01f; // his feet are this far inside what he stands on

    // Gravity; both are multiplied by the stage's factor, the terminal speed is not.
    float gravity = 300, heldJumpGravity = 60;
    float terminalSpeed = 130;

    // On the ground.
    float runSpeed = 45;
    float runAcceleration = 200;
    float idleBraking = 180, crouchBraking = 400;
    float crouchTurnPause = 0.1f;

    // Jumping and the air.
    float jumpSpeed = 85, jumpHoldTime = 0.35f;
    float bounceWait = 0.25f;  // on a bounce shroom: an automatic jump
    float bounceReady = 0.04f; // from here on a jump from a shroom is a bounce
    float bounceSpeed = 119, bounceJumpSpeed = 131.75f;
    float airAcceleration = 150, airBraking = 50;
    float fallPoseSpeed = 40; // rising no faster than this, the body turns to fall
    float hardLandingSpeed = 10;

    // The stick: the share of its way that counts as a direction.
    float stickRun = 0.5f, stickKeepRunning = 0.3f;
    float stickCrouch = 0.5f, stickCrouchRunning = 0.7f, stickKeepCrouching = 0.4f;

    // Ladders.
    float stickClimb = 0.5f;
    float climbPause = 0.3f; // seconds before a ladder may be grabbed again

    // Guns and pickups.
    float muzzleHeight = 13, muzzleReach = 8; // of bare hands, from the feet
    float pickupReach = 40, pickupHalf = 3;

    // Being hurt and dying.
    float knockSpeed = 30, knockUpSpeed = 50;
    float hurtTime = 0.3f;
    float hurtBraking = 30, deadBraking = 130;
    float flashFade = 0.6f; // per second; hits are ignored while it lasts
    float flashBlink = 50;  // radians of blinking over the whole flash
    float shakeAmplitude = 1.5f, shakeDecay = 4;
    float deathPoseSpeed = 0.01f;

    // The camera area.
    float edgeMargin = 5;
    float exitAbove = -5, exitBelow = 10; // beyond the area's top and bottom: an exit zone is asked
    float deathBelow = 20;
} heroConstants;
