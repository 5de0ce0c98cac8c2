// Questions to the user, shown with the toolkit.
#pragma once

#include "Platform/Dialogs.h"

namespace korvane::platform {

class Panels;

class QtDialogs final : public Dialogs {
public:
    // With null an alert is an ordinary window on top.
    explicit QtDialogs(Panels *windowPanels);
    // 0 when the alert went away without an answer.
    int runModal(const Alert &alert, double horizontalCenterFraction) override;

private:
    Panels *panels;
};

}  // namespace korvane::platform
