// A menu that fades the stage out, changes it in the dark and fades it in again.
#pragma once

#include "frontend/MenuBase.h"

class FadeTransition : public MenuBase {
  public:
    // Not before the fading in: in the dark the stage has to run twice. It restarts at the end of the first update; in
    // the second the hero gets to where he begins and the camera to him.
    bool pausesGame() const override { return phase_ == Phase::fadingIn; }

  protected:
    using MenuBase::MenuBase;

    // Through all of it, from the present fade of the stage's camera on; sets closed at its end.
    void advance(float dt);
    // In the dark, once. The menus that were open are gone after this update.
    virtual void changeStage() = 0;
    // From then on.
    bool stageChanged() const { return phase_ != Phase::fadingOut; }

  private:
    enum class Phase { fadingOut, dark, settling, fadingIn };

    void fadeOut(float dt);
    void fadeIn(float dt);

    Phase phase_ = Phase::fadingOut;
};
