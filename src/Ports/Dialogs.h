// Questions to the user. They are implemented on the view toolkit. The port is here because the core asks the
// questions.
#pragma once

#include "Ports/Values/Color.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace korvane::platform {

// A text field between an alert's text and its buttons.
struct AlertField {
    std::string text;         // the initial text; when the alert has closed, the typed text
    std::string placeholder;  // shown in the empty field
    int width = 220, height = 24;
};

struct Alert {
    std::string message, informative;
    std::vector<std::string> buttons;  // the first answers 1000, the second 1001, ...
    AlertField *field = nullptr;       // owned by the caller
};

// What an alert answers when its first button was pressed.
inline constexpr int firstAlertButton = 1000;

class Dialogs {
public:
    virtual ~Dialogs() = default;
    // Blocks until a button is pressed. Timers and observers still run during this time. The fraction places the
    // alert's centre on the screen's width.
    virtual int runModal(const Alert &alert, double horizontalCenterFraction) = 0;
    // Opens the one colour panel, or brings it forward. Without an initial colour the panel keeps the colour that it
    // shows. The call does not block. From then on `changed` gets every colour that the user tries, and an earlier
    // callback gets none.
    virtual void openColorPanel(const std::optional<Rgb> &initial, std::function<void(const Rgb &)> changed) = 0;
};

}  // namespace korvane::platform
