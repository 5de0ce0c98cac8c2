// The entry: makes the platform of this desktop, hands it to the delegate and runs until told to end.
#include "App/AppDelegate.h"
#include "App/LinuxDesktop.h"
#include "App/MemoryRelease.h"
#include "App/Startup.h"

#include <QApplication>
#include <QSocketNotifier>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <iostream>
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

// The signals that ask a program to end, as something the run loop can wait for. Taken before any thread starts.
int endSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&signals, number);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
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
    // The bar is an X11 program, also where the toolkit would rather be something else.
    qputenv("QT_QPA_PLATFORM", "xcb");
    // The connection to the windows is served by GLib's sources.
    qunsetenv("QT_NO_GLIB");
    QApplication application(argumentCount, arguments);
    // The toolkit takes the user's locale; numbers in files must not.
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
    const Connection counting =
        delegate.appModel().changed.connect([&] { memory.windowCount(delegate.appModel().runningApps().size()); });
    delegate.applicationDidFinishLaunching();
    QSocketNotifier endNotifier(ending, QSocketNotifier::Read);
    QObject::connect(&endNotifier, &QSocketNotifier::activated, &application, [] { QApplication::quit(); });
    const int status = QApplication::exec();
    delegate.applicationWillTerminate();
    ::close(ending);
    return status;
}
