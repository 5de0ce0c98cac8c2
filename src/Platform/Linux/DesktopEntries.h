// The installed applications. They are read once and can be found by any name that a window or a setting may use.
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
    std::string name;        // in the user's language
    std::string path, iconName;
    std::string windowClass;  // StartupWMClass
    std::string executable;   // the program that the entry starts, as written there
    std::vector<std::string> categories;
    bool hasArguments = false;  // the entry starts its program with arguments, for something special
    bool shown = true;          // in menus
};

// The case of ASCII letters does not matter when names are compared. Null when nothing has that name.
class DesktopEntries {
public:
    explicit DesktopEntries(std::vector<DesktopEntry> found);

    const std::vector<DesktopEntry> &all() const { return entries; }
    const DesktopEntry *byIdentifier(std::string_view name) const;
    // Compares the part of the identifier after its last dot.
    const DesktopEntry *byLastComponent(std::string_view name) const;
    const DesktopEntry *byWindowClass(std::string_view name) const;
    const DesktopEntry *byPath(std::string_view path) const;
    // Compares the program's whole path, then its name. Null for a program that runs others, such as an interpreter:
    // the application is then the program that it runs, and the entry of the interpreter does not match.
    const DesktopEntry *byExecutable(std::string_view path) const;

private:
    using Names = std::unordered_map<std::string, std::size_t>;
    const DesktopEntry *find(const Names &names, std::string_view name) const;

    std::vector<DesktopEntry> entries;
    Names identifiers, lastComponents, windowClasses, paths, executables;
};

}  // namespace korvane::platform
