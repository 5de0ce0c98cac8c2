#include "Platform/Linux/InstanceLock.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace korvane::platform {
namespace {

namespace fs = std::filesystem;

bool ownedByUs(int descriptor, mode_t kind)
{
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && (status.st_mode & S_IFMT) == kind && status.st_uid == ::geteuid();
}

}  // namespace

std::vector<fs::path> InstanceLock::standardFolders()
{
    std::vector<fs::path> folders;
    const char *runtime = std::getenv("XDG_RUNTIME_DIR");
    struct stat status {};
    if (runtime && fs::path(runtime).is_absolute() && ::lstat(runtime, &status) == 0 && S_ISDIR(status.st_mode)
        && status.st_uid == ::geteuid())
        folders.push_back(fs::path(runtime) / "korvane");
    // The environment's temporary folder is not used: a second start with another environment must find the first one.
    folders.emplace_back("/tmp/korvane-" + std::to_string(::geteuid()));
    return folders;
}

InstanceLock::Outcome InstanceLock::take(const std::vector<fs::path> &folders, const std::string &name)
{
    for (const fs::path &folder : folders)
        if (const auto outcome = takeIn(folder, name); outcome != Outcome::unavailable)
            return outcome;
    return Outcome::unavailable;
}

InstanceLock::Outcome InstanceLock::takeIn(const fs::path &folder, const std::string &name)
{
    const auto obstructed = [this](fs::path obstacle) {
        inTheWay = std::move(obstacle);
        return Outcome::obstructed;
    };
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST)
        return Outcome::unavailable;
    const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!directory || !ownedByUs(directory.get(), S_IFDIR))
        return obstructed(folder);
    // The folder is ours, but its permissions may have been opened to others by mistake.
    (void)::fchmod(directory.get(), 0700);
    Descriptor opened(::openat(directory.get(), name.c_str(),
                               O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0600));
    if (!opened)
        return errno == ELOOP || errno == EISDIR || errno == ENXIO ? obstructed(folder / name) : Outcome::unavailable;
    if (!ownedByUs(opened.get(), S_IFREG))
        return obstructed(folder / name);
    // The system releases the lock when the process ends, so a crash leaves nothing behind that could prevent a start.
    if (::flock(opened.get(), LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? Outcome::heldByOther : Outcome::unavailable;
    file = std::move(opened);
    return Outcome::taken;
}

}  // namespace korvane::platform
