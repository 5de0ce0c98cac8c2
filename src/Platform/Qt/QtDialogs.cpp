#include "Platform/Qt/QtDialogs.h"

#include "Platform/Qt/AlertBox.h"

namespace korvane::platform {

QtDialogs::QtDialogs(Panels *windowPanels) : panels(windowPanels) {}

int QtDialogs::runModal(const Alert &alert, double horizontalCenterFraction)
{
    AlertBox box(alert);
    return box.run(horizontalCenterFraction, panels);
}

}  // namespace korvane::platform
