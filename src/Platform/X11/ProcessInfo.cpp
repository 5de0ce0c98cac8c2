#include "Platform/X11/ProcessInfo.h"

#include "Platform/X11/PropertyText.h"

#include <filesystem>
#include <fstream>

namespace korvane::platform::x11 {

std::string executableOf(Pid pid)
{
    if (pid <= 0)
        return {};
    std::error_code error;
    const auto path = std::filesystem::read_symlink("/proc/" + std::to_string(pid) + "/exe", error);
    return error ? std::string() : path.string();
}

std::optional<std::string> processName(Pid pid)
{
    if (pid <= 0)
        return std::nullopt;
    std::ifstream file("/proc/" + std::to_string(pid) + "/comm");
    std::string name;
    if (!std::getline(file, name) || name.empty())
        return std::nullopt;
    return cleanText(name);
}

}  // namespace korvane::platform::x11
