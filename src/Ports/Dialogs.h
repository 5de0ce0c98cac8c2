// Questions to the user. Implemented on the view toolkit; here because the core asks.
#pragma once

#include "Ports/Values/Color.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace korvane::platform {

// A line to type in, between an alert's text and its buttons.
struct AlertField {
    std::string text;         // at first, and when the alert has closed what was typed
    std::string placeholder;  // shown in the empty field
    int width = 220, height = 24;
};

struct Alert {
    std::string message, informative;
    std::vector<std::string> buttons;  // the first answers 1000, the second 1001, ...
    AlertField *field = nullptr;       // the caller's
};

// What an alert answers when its first button was pressed.
inline constexpr int firstAlertButton = 1000;

class Dialogs {
public:
    virtual ~Dialogs() = default;
    // Blocks until a button is pressed; timers and observers go on meanwhile. The fraction places the alert's centre on
    // the screen's width.
    virtual int runModal(const Alert &alert, double horizontalCenterFraction) = 0;
    // Opens the one colour panel, or brings it forward; without an initial colour it keeps the one it shows. It blocks
    // nothing. From then on every colour that the user tries goes to `changed`, and to no earlier one.
    virtual void openColorPanel(const std::optional<Rgb> &initial, std::function<void(const Rgb &)> changed) = 0;
};

}  // namespace korvane::platform
