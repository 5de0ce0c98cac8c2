// The installed applications, read once and found by any of the names that a window or a setting may use.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace korvane::platform {

struct DesktopEntry {
    std::string identifier;  // the file's name without its ending
    std::string name;        // as the user's language has it
    std::string path, iconName;
    std::string windowClass;  // StartupWMClass
    std::string executable;   // what the entry starts, as written there
    std::vector<std::string> categories;
    bool hasArguments = false;  // starts its program for something special
    bool shown = true;          // in menus
};

// Names are compared without regard to the case of ASCII letters. Null where nothing has that name.
class DesktopEntries {
public:
    explicit DesktopEntries(std::vector<DesktopEntry> found);

    const std::vector<DesktopEntry> &all() const { return entries; }
    const DesktopEntry *byIdentifier(std::string_view name) const;
    // By the part of the identifier after its last dot.
    const DesktopEntry *byLastComponent(std::string_view name) const;
    const DesktopEntry *byWindowClass(std::string_view name) const;
    const DesktopEntry *byPath(std::string_view path) const;
    // By the program's whole path, then by its name. Null for a program that runs others, such as an interpreter: what
    // it runs is the application, and the entry of the interpreter is not.
    const DesktopEntry *byExecutable(std::string_view path) const;

private:
    using Names = std::unordered_map<std::string, std::size_t>;
    const DesktopEntry *find(const Names &names, std::string_view name) const;

    std::vector<DesktopEntry> entries;
    Names identifiers, lastComponents, windowClasses, paths, executables;
};

}  // namespace korvane::platform
