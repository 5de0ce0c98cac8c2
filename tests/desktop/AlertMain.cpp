// Shows one alert as the program does, and prints what was answered.
#include "Platform/Linux/DesktopCatalogue.h"
#include "Platform/Qt/QtDialogs.h"
#include "Platform/Qt/QtMainLoop.h"
#include "Platform/X11/X11Platform.h"

#include <QApplication>
#include <iostream>

int main(int argumentCount, char **arguments)
{
    using namespace korvane::platform;
    const QApplication application(argumentCount, arguments);
    QtMainLoop loop;
    DesktopCatalogue catalogue;
    const auto desktop = X11Platform::open(
        {"", 1, qApp->nativeInterface<QNativeInterface::QX11Application>()->connection()}, loop, catalogue, {});
    if (!desktop)
        return 1;
    QtDialogs dialogs(&desktop->panels());
    std::cout << dialogs.runModal(
        {"Close All Windows?", "All open windows will be closed. Continue?", {"Continue", "Cancel"}}, 0.5)
              << std::endl;
    return 0;
}
