// The one window for all questions: a message, an explanation, optionally a control of the caller, and buttons.
#pragma once

#include "Ports/Dialogs.h"

#include <QDialog>

class QVBoxLayout;

namespace korvane::platform {

class Panels;

class AlertBox final : public QDialog {
public:
    // Texts are shown as they are, without markup. Return presses the first button. Escape and closing the window press
    // the button called "Cancel", or the only button. If the alert has no buttons, it gets one, "OK".
    explicit AlertBox(const Alert &alert);

    // Puts a control between the text and the buttons. The alert takes ownership of it.
    void setAccessory(QWidget *accessory);

    // Shows the alert low on the screen that the program is used on, and waits for an answer while the event loop runs.
    // The alert's centre is at that fraction of the screen's width. Returns 1000 for the first button, 1001 for the
    // second, ...; 0 when the alert was closed without an answer, for example at the end of the program. `panels` keeps
    // the alert above the other windows; it may be null.
    int run(double horizontalCenterFraction, Panels *panels);

    void reject() override;

private:
    void place(double horizontalCenterFraction);

    QVBoxLayout *column = nullptr;
    int escapeAnswer = 0;
};

}  // namespace korvane::platform
