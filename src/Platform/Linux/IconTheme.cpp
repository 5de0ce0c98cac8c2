#include "Platform/Linux/IconTheme.h"

#include "Platform/Linux/GlibPointers.h"
#include "Platform/Linux/PrivateFile.h"
#include "Platform/Linux/UserDirectories.h"

#include <algorithm>
#include <unistd.h>

namespace korvane::platform {
namespace {

constexpr std::size_t largestIndex = 1u << 20;
constexpr std::size_t longestName = 255;
constexpr std::size_t mostThemes = 16;

bool isReadable(const std::filesystem::path &file)
{
    return ::access(file.c_str(), R_OK) == 0;
}

// The name must not be a path and must not lead out of the folder.
bool isPlainName(std::string_view name)
{
    return !name.empty() && name.size() <= longestName && name.find('/') == std::string_view::npos
           && name.find('\0') == std::string_view::npos && name != "." && name != "..";
}

std::string_view withoutPictureEnding(std::string_view name)
{
    for (const std::string_view ending : {".png", ".svg", ".xpm"})
        if (name.size() > ending.size() && name.ends_with(ending))
            return name.substr(0, name.size() - ending.size());
    return name;
}

std::vector<std::string> list(GKeyFile *file, const char *group, const char *key)
{
    std::vector<std::string> values;
    const GlibText text(g_key_file_get_string(file, group, key, nullptr));
    std::string_view rest = text ? text.get() : "";
    while (!rest.empty()) {
        const auto end = std::min(rest.find(','), rest.size());
        if (end > 0)
            values.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return values;
}

int number(GKeyFile *file, const std::string &group, const char *key, int otherwise)
{
    GError *failure = nullptr;
    const int value = g_key_file_get_integer(file, group.c_str(), key, &failure);
    if (failure == nullptr)
        return value;
    g_error_free(failure);
    return otherwise;
}

}  // namespace

// A folder of pictures of about one size, in pixels.
struct IconTheme::Folder {
    std::string path;
    int smallest = 0, largest = 0;

    // How far the pictures are from a size. Enlarging is worse, so it counts more than any reduction.
    long distance(int side) const
    {
        if (side < smallest)
            return smallest - side;
        return side > largest ? 100000L + side - largest : 0;
    }
};

struct IconTheme::Theme {
    std::vector<Folder> folders;
    std::vector<std::string> parents;
    std::string name;
};

IconTheme::IconTheme(std::string themeName, std::vector<std::filesystem::path> folders)
    : roots(std::move(folders)), preferred(std::move(themeName))
{}

IconTheme::~IconTheme() = default;

std::vector<std::filesystem::path> IconTheme::standardFolders()
{
    std::vector<std::filesystem::path> folders;
    if (const auto home = userHomeDirectory(); !home.empty())
        folders.push_back(home / ".icons");
    for (const auto &directory : dataDirectories())
        folders.push_back(directory / "icons");
    folders.emplace_back("/usr/share/pixmaps");
    return folders;
}

const IconTheme::Theme &IconTheme::theme(const std::string &name)
{
    const auto [found, isNew] = themes.try_emplace(name);
    Theme &theme = found->second;
    if (!isNew)
        return theme;
    theme.name = name;
    for (const auto &root : roots) {
        const FileContents contents = readFile(root / name / "index.theme", largestIndex);
        const GlibKeyFile file(g_key_file_new());
        if (contents.outcome != FileContents::Outcome::read
            || !g_key_file_load_from_data(file.get(), contents.bytes.data(), contents.bytes.size(), G_KEY_FILE_NONE,
                                          nullptr))
            continue;
        theme.parents = list(file.get(), "Icon Theme", "Inherits");
        for (const auto &path : list(file.get(), "Icon Theme", "Directories")) {
            const int size = number(file.get(), path, "Size", 0);
            const int scale = number(file.get(), path, "Scale", 1);
            if (size < 1 || size > 4096 || scale < 1 || scale > 8 || path.find("..") != std::string::npos)
                continue;
            const GlibText type(g_key_file_get_string(file.get(), path.c_str(), "Type", nullptr));
            const bool scalable = type && std::string_view(type.get()) == "Scalable";
            const int smallest = scalable ? number(file.get(), path, "MinSize", size) : size;
            const int largest = scalable ? number(file.get(), path, "MaxSize", size) : size;
            theme.folders.push_back(
                {path, std::clamp(smallest, 1, 4096) * scale, std::clamp(largest, 1, 4096) * scale});
        }
        break;
    }
    return theme;
}

void IconTheme::appendChain(const std::string &name, std::vector<std::string> &names)
{
    if (!isPlainName(name) || names.size() >= mostThemes || std::find(names.begin(), names.end(), name) != names.end())
        return;
    names.push_back(name);
    for (const auto &parent : std::vector<std::string>(theme(name).parents))
        if (parent != "hicolor")
            appendChain(parent, names);
}

std::filesystem::path IconTheme::findInTheme(const Theme &theme, const std::string &icon, int side) const
{
    std::filesystem::path best;
    long bestDistance = 0;
    for (const Folder &folder : theme.folders) {
        const long distance = folder.distance(side);
        if (!best.empty() && distance >= bestDistance)
            continue;
        for (const auto &root : roots)
            for (const char *ending : {".png", ".svg"})
                if (auto file = root / theme.name / folder.path / (icon + ending); isReadable(file)) {
                    best = std::move(file);
                    bestDistance = distance;
                }
        if (!best.empty() && bestDistance == 0)
            break;
    }
    return best;
}

std::filesystem::path IconTheme::findWithoutTheme(std::string_view fileName) const
{
    const std::string name(fileName);
    const std::string stem(withoutPictureEnding(fileName));
    for (auto root = roots.rbegin(); root != roots.rend(); ++root)
        for (const std::string &candidate : {name, stem + ".png", stem + ".svg", stem + ".xpm"})
            if (auto file = *root / candidate; std::filesystem::path(candidate).has_extension() && isReadable(file))
                return file;
    return {};
}

std::filesystem::path IconTheme::find(std::string_view nameOrPath, int side)
{
    if (nameOrPath.starts_with('/')) {
        const std::filesystem::path path(nameOrPath);
        return nameOrPath.find('\0') == std::string_view::npos && isReadable(path) ? path : std::filesystem::path();
    }
    if (!isPlainName(nameOrPath))
        return {};
    if (chain.empty()) {
        appendChain(preferred, chain);
        appendChain("Adwaita", chain);
        appendChain("hicolor", chain);
    }
    const std::string icon(withoutPictureEnding(nameOrPath));
    for (const auto &name : chain)
        if (auto file = findInTheme(theme(name), icon, side); !file.empty())
            return file;
    return findWithoutTheme(nameOrPath);
}

}  // namespace korvane::platform
