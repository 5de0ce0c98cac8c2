// The one form of all questions: a message, what it means, perhaps a control of the caller's, and buttons.
#pragma once

#include "Ports/Dialogs.h"

#include <QDialog>

class QVBoxLayout;

namespace korvane::platform {

class Panels;

class AlertBox final : public QDialog {
public:
    // Texts are shown as they are, without markup. The first button is pressed by Return; the one called "Cancel", or
    // the only one, by Escape and by closing the window. Without buttons there is one, "OK".
    explicit AlertBox(const Alert &alert);

    // Puts a control between the text and the buttons, and takes it over.
    void setAccessory(QWidget *accessory);

    // Shows the alert low on the screen that the program is used on, its centre at that fraction of the width, and
    // waits for an answer while the event loop goes on. 1000 for the first button, 1001 for the second, ...; 0 when it
    // went away without an answer, as at the end of the program. `panels` lifts it above the other windows; may be
    // null.
    int run(double horizontalCenterFraction, Panels *panels);

    void reject() override;

private:
    void place(double horizontalCenterFraction);

    QVBoxLayout *column = nullptr;
    int escapeAnswer = 0;
};

}  // namespace korvane::platform
