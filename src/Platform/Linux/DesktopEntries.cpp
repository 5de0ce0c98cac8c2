#include "Platform/Linux/DesktopEntries.h"

#include <algorithm>
#include <array>

namespace korvane::platform {
namespace {

std::string lowered(std::string_view text)
{
    std::string result(text);
    for (char &letter : result)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter + ('a' - 'A'));
    return result;
}

std::string_view fileName(std::string_view path)
{
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

bool runsOthers(std::string_view program)
{
    static constexpr std::array names = {"bash", "dash",        "electron", "env",    "flatpak",       "gjs", "java",
                                         "mono", "node",        "perl",     "php",    "ruby",          "sh",  "snap",
                                         "sudo", "systemd-run", "wine",     "wine64", "wine-preloader"};
    // The name "python" also stands for "python3.11".
    const auto end = program.find_last_not_of("0123456789.-");
    const std::string_view stem = program.substr(0, end == std::string_view::npos ? 0 : end + 1);
    return stem == "python" || stem == "electron" || std::find(names.begin(), names.end(), program) != names.end();
}

}  // namespace

DesktopEntries::DesktopEntries(std::vector<DesktopEntry> found) : entries(std::move(found))
{
    // Entries that menus show come first. If one program has several entries, the one without arguments comes first.
    std::stable_sort(entries.begin(), entries.end(), [](const DesktopEntry &left, const DesktopEntry &right) {
        if (left.shown != right.shown)
            return left.shown;
        if (left.hasArguments != right.hasArguments)
            return right.hasArguments;
        return left.identifier < right.identifier;
    });
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const DesktopEntry &entry = entries[i];
        const auto add = [i](Names &names, std::string_view name) {
            if (!name.empty())
                names.emplace(lowered(name), i);
        };
        add(identifiers, entry.identifier);
        if (const auto dot = entry.identifier.rfind('.'); dot != std::string::npos)
            add(lastComponents, std::string_view(entry.identifier).substr(dot + 1));
        add(windowClasses, entry.windowClass);
        paths.emplace(entry.path, i);
        if (!entry.executable.empty() && !runsOthers(fileName(entry.executable))) {
            executables.emplace(entry.executable, i);
            executables.emplace(std::string(fileName(entry.executable)), i);
        }
    }
}

const DesktopEntry *DesktopEntries::find(const Names &names, std::string_view name) const
{
    if (name.empty())
        return nullptr;
    const auto found = names.find(lowered(name));
    return found != names.end() ? &entries[found->second] : nullptr;
}

const DesktopEntry *DesktopEntries::byIdentifier(std::string_view name) const
{
    return find(identifiers, name);
}

const DesktopEntry *DesktopEntries::byLastComponent(std::string_view name) const
{
    return find(lastComponents, name);
}

const DesktopEntry *DesktopEntries::byWindowClass(std::string_view name) const
{
    return find(windowClasses, name);
}

const DesktopEntry *DesktopEntries::byPath(std::string_view path) const
{
    const auto found = paths.find(std::string(path));
    return found != paths.end() ? &entries[found->second] : nullptr;
}

const DesktopEntry *DesktopEntries::byExecutable(std::string_view path) const
{
    // The case of file names matters: two names that differ in case are two programs.
    if (path.empty() || runsOthers(fileName(path)))
        return nullptr;
    for (const std::string_view name : {path, fileName(path)})
        if (const auto found = executables.find(std::string(name)); found != executables.end())
            return &entries[found->second];
    return nullptr;
}

}  // namespace korvane::platform
