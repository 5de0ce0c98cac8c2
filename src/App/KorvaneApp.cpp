// The entry: makes the platform of this desktop, gives it to the delegate and runs until the program is told to end.
#include "App/AppDelegate.h"
#include "App/LinuxDesktop.h"
#include "App/MemoryRelease.h"
#include "App/Startup.h"
#include "Platform/Linux/MessageBus.h"

#include <QAccessible>
#include <QApplication>
#include <QSocketNotifier>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <sys/signalfd.h>
#include <unistd.h>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

int refuse(const korvane::Refusal &refusal)
{
    std::cerr << refusal.line << std::endl;
    return refusal.status;
}

// A descriptor for the signals that ask a program to end, so that the run loop can wait for them. The signals are
// blocked before any thread starts.
int endSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&signals, number);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

// Makes the toolkit's application. It asks the session bus for the accessibility bus and for themes, and waits for the
// answer without a limit. If the session bus hangs, the application gets the address of a bus that does not exist, and
// the bar starts without accessibility and themes.
std::unique_ptr<QApplication> makeApplication(int &argumentCount, char **arguments)
{
    using korvane::platform::MessageBus;
    constexpr const char *variable = "DBUS_SESSION_BUS_ADDRESS";
    if (MessageBus::answersWithin(korvane::platform::Seconds(1), MessageBus::Kind::session))
        return std::make_unique<QApplication>(argumentCount, arguments);
    std::cerr << "korvane: the session bus does not answer; the bar can't be read by assistive programs" << std::endl;
    const bool isSet = qEnvironmentVariableIsSet(variable);
    const QByteArray address = qgetenv(variable);
    qputenv(variable, "unix:path=/dev/null");
    auto application = std::make_unique<QApplication>(argumentCount, arguments);
    (void)QAccessible::isActive();  // the toolkit looks for the bus now and never again
    if (isSet)
        qputenv(variable, address);
    else
        qunsetenv(variable);
    return application;
}

void releaseMemory()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

}  // namespace

int main(int argumentCount, char **arguments)
{
    using namespace korvane;
    const char *displayName = std::getenv("DISPLAY");
    if (const auto refusal = refusalBeforeStart(argumentCount, displayName, std::getenv("WAYLAND_DISPLAY")))
        return refuse(*refusal);
    const std::string display = displayName ? displayName : "";
    if (!canOpenDisplay(display))
        return refuse({"korvane: display " + display + " can't be opened", 1});

    const int ending = endSignals();
    // The bar is an X11 program, even if the toolkit would choose another platform.
    qputenv("QT_QPA_PLATFORM", "xcb");
    // GLib's event sources serve the connection to the windows.
    qunsetenv("QT_NO_GLIB");
    const auto application = makeApplication(argumentCount, arguments);
    // The toolkit sets the user's locale, but numbers in files must not depend on it.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName(QStringLiteral("korvane"));
    QApplication::setQuitOnLastWindowClosed(false);

    SingleInstance instance(display);
    if (const auto refusal = instance.claim())
        return refuse(*refusal);
    const auto desktop = LinuxDesktop::open(display);
    if (!desktop)
        return refuse({"korvane: display " + display + " can't be opened", 1});
    enrolAsLoginItem(desktop->loginItem(), std::cout);

    platform::Platform platform = desktop->platform();
    AppDelegate delegate(platform);
    MemoryRelease memory(platform.loop, releaseMemory);
    const platform::Subscription counting =
        delegate.appModel().changed.add([&] { memory.windowCount(delegate.appModel().runningApps().size()); });
    delegate.applicationDidFinishLaunching();
    QSocketNotifier endNotifier(ending, QSocketNotifier::Read);
    QObject::connect(&endNotifier, &QSocketNotifier::activated, application.get(), [] { QApplication::quit(); });
    const int status = QApplication::exec();
    delegate.applicationWillTerminate();
    ::close(ending);
    return status;
}
