#include "frontend/MenuBase.h"

MenuBase::MenuBase(int ownKind)
    : kind(ownKind), workspace(std::make_unique<Zelkor::GuiScreenWorkspace>(true)) {}

MenuBase::~MenuBase() = default;
