// Finds the file of a named icon by the icon theme rules that desktops share.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::platform {

class IconTheme {
public:
    // A theme's name, which may be empty or unknown, and the folders that hold themes. Pictures without a theme are
    // looked for in the last folder.
    IconTheme(std::string themeName, std::vector<std::filesystem::path> folders);
    ~IconTheme();
    IconTheme(const IconTheme &) = delete;
    IconTheme &operator=(const IconTheme &) = delete;

    // ~/.icons, the folders of the data directories, and /usr/share/pixmaps.
    static std::vector<std::filesystem::path> standardFolders();

    // Takes a name from a desktop entry or an absolute path. Returns the file whose picture needs the least scaling for
    // that many pixels; it prefers a larger picture to a smaller one. Empty when there is none.
    std::filesystem::path find(std::string_view nameOrPath, int side);

private:
    struct Folder;
    struct Theme;

    const Theme &theme(const std::string &name);
    std::filesystem::path findInTheme(const Theme &theme, const std::string &icon, int side) const;
    std::filesystem::path findWithoutTheme(std::string_view fileName) const;
    void appendChain(const std::string &name, std::vector<std::string> &chain);

    std::vector<std::filesystem::path> roots;
    std::vector<std::string> chain;  // the theme, the themes it inherits from, and the themes that are always there
    std::string preferred;
    std::map<std::string, Theme> themes;
};

}  // namespace korvane::platform
