#include "App/LinuxDesktop.h"

#include "Platform/Linux/UserDirectories.h"
#include "Toolkit/IconFile.h"

#include <QGuiApplication>
#include <QIcon>
#include <chrono>
#include <utility>

namespace korvane {
namespace {

constexpr int taskIconSide = 64;

xcb_connection_t *viewsConnection()
{
    const auto *native = qApp->nativeInterface<QNativeInterface::QX11Application>();
    return native ? native->connection() : nullptr;
}

}  // namespace

LinuxDesktop::LinuxDesktop()
    : sessionBus(loop, platform::MessageBus::Kind::session), systemBus(loop, platform::MessageBus::Kind::system),
      defaults(loop, platform::defaultsFile()), login(platform::autostartFile(), platform::runningExecutable()),
      launching(catalogue, [] { return std::uint32_t{0}; }), audio(loop),
      brightness(loop, platform::logindBacklightWriter(systemBus))
{}

std::unique_ptr<LinuxDesktop> LinuxDesktop::open(const std::string &display)
{
    std::unique_ptr<LinuxDesktop> desktop(new LinuxDesktop);
    LinuxDesktop &self = *desktop;
    self.windows =
        platform::X11Platform::open({display, qApp->devicePixelRatio(), viewsConnection()}, self.loop, self.catalogue,
                                    [&self](std::string_view name) { return self.loadIcon(name); });
    if (!self.windows)
        return nullptr;
    self.badges = std::make_unique<platform::BadgedProgramsWatch>(
        self.loop, self.sessionBus, self.catalogue,
        [&self](platform::BadgedPrograms programs) { self.windows->setBadgedPrograms(std::move(programs)); });
    self.session = std::make_unique<platform::LoginSession>(self.systemBus, [&self](bool away) {
        self.windows->announce(away ? platform::SessionEvent::sessionResigned : platform::SessionEvent::sessionActive);
    });
    self.dialogs = std::make_unique<platform::QtDialogs>(&self.windows->panels());
    return desktop;
}

platform::ImagePtr LinuxDesktop::loadIcon(std::string_view name)
{
    if (!theme)
        theme = std::make_unique<platform::IconTheme>(QIcon::themeName().toStdString(),
                                                      platform::IconTheme::standardFolders());
    const auto file = theme->find(name, taskIconSide);
    return file.empty() ? nullptr : platform::loadIconFile(file, taskIconSide);
}

platform::Platform LinuxDesktop::platform()
{
    return {loop,
            windows->applications(),
            windows->accessibility(),
            windows->windowList(),
            windows->screens(),
            windows->pointer(),
            windows->events(),
            windows->panels(),
            windows->hotKeys(),
            login,
            defaults,
            launching,
            text,
            icons,
            audio,
            brightness,
            *dialogs};
}

}  // namespace korvane
