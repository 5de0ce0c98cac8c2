#include "Platform/Linux/UserDirectories.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <pwd.h>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace korvane::platform {
namespace {

std::filesystem::path absoluteFromEnvironment(const char *variable)
{
    const char *value = std::getenv(variable);
    std::filesystem::path path = value != nullptr ? value : "";
    return path.is_absolute() ? path : std::filesystem::path();
}

std::filesystem::path userDirectory(const char *variable, const char *belowHome)
{
    if (auto path = absoluteFromEnvironment(variable); !path.empty())
        return path;
    const auto home = userHomeDirectory();
    return home.empty() ? home : home / belowHome;
}

}  // namespace

std::filesystem::path userHomeDirectory()
{
    if (auto path = absoluteFromEnvironment("HOME"); !path.empty())
        return path;
    std::array<char, 4096> buffer{};
    passwd entry{};
    passwd *found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr)
        return {};
    const std::filesystem::path path = found->pw_dir;
    return path.is_absolute() ? path : std::filesystem::path();
}

std::filesystem::path userConfigDirectory()
{
    return userDirectory("XDG_CONFIG_HOME", ".config");
}

std::filesystem::path userCacheDirectory()
{
    return userDirectory("XDG_CACHE_HOME", ".cache");
}

std::filesystem::path userDataDirectory()
{
    return userDirectory("XDG_DATA_HOME", ".local/share");
}

std::vector<std::filesystem::path> dataDirectories()
{
    std::vector<std::filesystem::path> directories;
    const auto add = [&directories](std::filesystem::path path) {
        if (path.is_absolute() && std::find(directories.begin(), directories.end(), path) == directories.end())
            directories.push_back(std::move(path));
    };
    add(userDataDirectory());
    const char *value = std::getenv("XDG_DATA_DIRS");
    std::string_view list = value != nullptr && *value != '\0' ? value : "/usr/local/share:/usr/share";
    while (!list.empty()) {
        const auto end = std::min(list.find(':'), list.size());
        add(std::filesystem::path(list.substr(0, end)));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return directories;
}

std::filesystem::path runningExecutable()
{
    std::error_code error;
    std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
    if (error)
        return {};
    // The kernel appends this when an update has replaced the file.
    constexpr std::string_view replaced = " (deleted)";
    if (path.size() > replaced.size() && path.ends_with(replaced))
        path.resize(path.size() - replaced.size());
    return path;
}

}  // namespace korvane::platform
