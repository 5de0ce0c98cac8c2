// Asks the user questions, with the toolkit's windows.
#pragma once

#include "Ports/Dialogs.h"

#include <memory>

namespace korvane::platform {

class ColorPanel;
class Panels;

class QtDialogs final : public Dialogs {
public:
    // If it is null, an alert is an ordinary window on top.
    explicit QtDialogs(Panels *windowPanels);
    ~QtDialogs() override;
    // 0 when the alert was closed without an answer.
    int runModal(const Alert &alert, double horizontalCenterFraction) override;
    void openColorPanel(const std::optional<Rgb> &initial, std::function<void(const Rgb &)> changed) override;

private:
    Panels *panels;
    std::unique_ptr<ColorPanel> colorPanel;  // made when first asked for
};

}  // namespace korvane::platform
