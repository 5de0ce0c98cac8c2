#include "Platform/Linux/XdgLoginItem.h"

#include "Platform/Linux/GlibPointers.h"
#include "Platform/Linux/PrivateFile.h"
#include "Platform/Linux/UserDirectories.h"

#include <gio/gio.h>
#include <glib.h>

namespace korvane::platform {
namespace {

constexpr std::size_t largestEntry = 1u << 20;

GlibKeyFile parse(const std::filesystem::path &file)
{
    const FileContents contents = readFile(file, largestEntry);
    GlibKeyFile entry(g_key_file_new());
    if (contents.outcome != FileContents::Outcome::read
        || !g_key_file_load_from_data(
            entry.get(), contents.bytes.data(), contents.bytes.size(),
            static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS), nullptr))
        return nullptr;
    return entry;
}

std::string text(GKeyFile *entry, const char *key)
{
    const GlibText value(g_key_file_get_string(entry, G_KEY_FILE_DESKTOP_GROUP, key, nullptr));
    return value ? value.get() : "";
}

bool isSwitchedOff(GKeyFile *entry)
{
    return text(entry, G_KEY_FILE_DESKTOP_KEY_HIDDEN) == "true" || text(entry, "X-GNOME-Autostart-enabled") == "false";
}

// The program that an Exec line starts.
std::string program(const std::string &exec)
{
    gchar **parsed = nullptr;
    if (!g_shell_parse_argv(exec.c_str(), nullptr, &parsed, nullptr))
        return {};
    std::string first = parsed[0];
    g_strfreev(parsed);
    for (auto at = first.find("%%"); at != std::string::npos; at = first.find("%%", at + 1))
        first.erase(at, 1);
    return first;
}

// An Exec line for one program without arguments. The key file adds its own escapes when it is written.
std::string execLine(const std::string &path)
{
    std::string line = "\"";
    for (const char character : path) {
        if (character == '"' || character == '`' || character == '$' || character == '\\')
            line += '\\';
        if (character == '%')
            line += '%';
        line += character;
    }
    return line + '"';
}

}  // namespace

std::filesystem::path autostartFile()
{
    const auto directory = userConfigDirectory();
    return directory.empty() ? directory : directory / "autostart" / "korvane.desktop";
}

XdgLoginItem::XdgLoginItem(std::filesystem::path entry, std::filesystem::path program)
    : file(std::move(entry)), executable(std::move(program))
{}

bool XdgLoginItem::enabled()
{
    const GlibKeyFile entry = parse(file);
    if (!entry)
        return false;
    return isSwitchedOff(entry.get()) || program(text(entry.get(), G_KEY_FILE_DESKTOP_KEY_EXEC)) == executable;
}

std::optional<std::string> XdgLoginItem::enable()
{
    if (file.empty())
        return "there is no home directory";
    if (!executable.is_absolute())
        return "the program's own file is not known";
    GlibKeyFile entry = parse(file);
    if (!entry)
        entry.reset(g_key_file_new());
    const auto setDefault = [&entry](const char *key, const char *value) {
        if (!g_key_file_has_key(entry.get(), G_KEY_FILE_DESKTOP_GROUP, key, nullptr))
            g_key_file_set_string(entry.get(), G_KEY_FILE_DESKTOP_GROUP, key, value);
    };
    setDefault(G_KEY_FILE_DESKTOP_KEY_TYPE, G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
    setDefault(G_KEY_FILE_DESKTOP_KEY_NAME, "Korvane");
    setDefault(G_KEY_FILE_DESKTOP_KEY_COMMENT, "A taskbar with one tab for every window");
    setDefault(G_KEY_FILE_DESKTOP_KEY_ICON, "korvane");
    g_key_file_set_string(entry.get(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_EXEC,
                          execLine(executable.string()).c_str());
    // With this key a session ignores the entry when the program has been removed.
    g_key_file_set_string(entry.get(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_TRY_EXEC, executable.c_str());
    gsize size = 0;
    const GlibText contents(g_key_file_to_data(entry.get(), &size, nullptr));
    return replacePrivateFile(file, std::string_view(contents.get(), size));
}

}  // namespace korvane::platform
