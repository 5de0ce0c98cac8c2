// Questions to the user. Implemented on the view toolkit; here because the core asks.
#pragma once

#include <string>
#include <vector>

namespace korvane::platform {

struct Alert {
    std::string message, informative;
    std::vector<std::string> buttons;  // the first answers 1000, the second 1001, ...
};

// What an alert answers when its first button was pressed.
inline constexpr int firstAlertButton = 1000;

class Dialogs {
public:
    virtual ~Dialogs() = default;
    // Blocks until a button is pressed; timers and observers go on meanwhile. The fraction places the alert's centre on
    // the screen's width.
    virtual int runModal(const Alert &alert, double horizontalCenterFraction) = 0;
};

}  // namespace korvane::platform
