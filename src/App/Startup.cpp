#include "App/Startup.h"

#include <QDir>
#include <QStandardPaths>
#include <QString>
#include <cstdlib>
#include <unistd.h>
#include <xcb/xcb.h>

namespace korvane {
namespace {

bool isSet(const char *text)
{
    return text && *text != '\0';
}

// One name for one display, however it is written (":0", ":0.0"), and for one user.
QString lockName(const std::string &display)
{
    QString place = QString::fromStdString(display);
    char *host = nullptr;
    int number = 0;
    if (xcb_parse_display(display.c_str(), &host, &number, nullptr) != 0) {
        place = QString::fromUtf8(host) + u'-' + QString::number(number);
        std::free(host);
    }
    place.replace(u'/', u'_').replace(u':', u'_');
    return QStringLiteral("korvane-%1-%2.lock").arg(getuid()).arg(place);
}

}  // namespace

std::optional<Refusal> refusalBeforeStart(int argumentCount, const char *display, const char *waylandDisplay)
{
    if (argumentCount > 1)
        return Refusal{"korvane: takes no options; everything is set in its settings panel", 2};
    if (isSet(display))
        return std::nullopt;
    if (isSet(waylandDisplay))
        return Refusal{"korvane: this is a Wayland session without X11; Korvane needs an X11 session", 1};
    return Refusal{"korvane: no display; start it inside an X11 session", 1};
}

bool canOpenDisplay(const std::string &display)
{
    xcb_connection_t *connection = xcb_connect(display.c_str(), nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

SingleInstance::SingleInstance(const std::string &displayName) : display(displayName) {}

std::optional<Refusal> SingleInstance::claim()
{
    QString directory = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (directory.isEmpty())
        directory = QDir::tempPath();
    lock = std::make_unique<QLockFile>(directory + u'/' + lockName(display));
    lock->setStaleLockTime(0);  // however long the first one has been running, it is not stale while it lives
    if (lock->tryLock(0))
        return std::nullopt;
    // A runtime directory that can't be written keeps nobody from starting.
    if (lock->error() != QLockFile::LockFailedError)
        return std::nullopt;
    return Refusal{"korvane: already running on display " + display, 0};
}

}  // namespace korvane
