#include "Platform/Linux/DesktopCatalogue.h"

#include "Platform/Linux/ApplicationRoles.h"
#include "Platform/Linux/DesktopEntries.h"
#include "Platform/Linux/GlibPointers.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <utility>

namespace korvane::platform {
namespace {

constexpr std::string_view entryEnding = ".desktop";

std::string orEmpty(const char *text)
{
    return text != nullptr ? text : "";
}

std::vector<std::string_view> split(std::string_view list)
{
    std::vector<std::string_view> parts;
    while (!list.empty()) {
        const auto end = std::min(list.find(';'), list.size());
        if (end > 0)
            parts.push_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return parts;
}

std::string withoutEnding(std::string text)
{
    if (text.ends_with(entryEnding))
        text.resize(text.size() - entryEnding.size());
    return text;
}

// The words of an Exec line from the program on, without "env", its assignments and the field codes.
std::vector<std::string> commandWords(const char *commandLine)
{
    std::vector<std::string> words;
    gchar **parsed = nullptr;
    if (commandLine == nullptr || !g_shell_parse_argv(commandLine, nullptr, &parsed, nullptr))
        return words;
    for (gchar **word = parsed; *word != nullptr; ++word) {
        const std::string_view text = *word;
        const bool prefix =
            words.empty() && (text == "env" || text == "/usr/bin/env" || text.find('=') != std::string_view::npos);
        const bool fieldCode = text.size() == 2 && text[0] == '%';
        if (!prefix && !fieldCode)
            words.emplace_back(text);
    }
    g_strfreev(parsed);
    return words;
}

DesktopEntry describeEntry(GDesktopAppInfo *application)
{
    GAppInfo *info = G_APP_INFO(application);
    DesktopEntry entry;
    entry.identifier = withoutEnding(orEmpty(g_app_info_get_id(info)));
    entry.name = orEmpty(g_app_info_get_name(info));
    entry.path = orEmpty(g_desktop_app_info_get_filename(application));
    const GlibText icon(g_desktop_app_info_get_string(application, G_KEY_FILE_DESKTOP_KEY_ICON));
    entry.iconName = orEmpty(icon.get());
    entry.windowClass = orEmpty(g_desktop_app_info_get_startup_wm_class(application));
    const auto words = commandWords(g_app_info_get_commandline(info));
    entry.executable = words.empty() ? std::string() : words.front();
    entry.hasArguments = words.size() > 1;
    const char *categories = g_desktop_app_info_get_categories(application);
    for (const auto category : split(categories != nullptr ? categories : ""))
        entry.categories.emplace_back(category);
    entry.shown = !g_desktop_app_info_get_nodisplay(application);
    return entry;
}

std::vector<DesktopEntry> readEntries()
{
    std::vector<DesktopEntry> entries;
    GList *all = g_app_info_get_all();
    for (GList *item = all; item != nullptr; item = item->next)
        if (G_IS_DESKTOP_APP_INFO(item->data))
            entries.push_back(describeEntry(G_DESKTOP_APP_INFO(item->data)));
    g_list_free_full(all, g_object_unref);
    return entries;
}

std::string defaultFor(std::string_view contentType)
{
    const Gobject<GAppInfo> info(g_app_info_get_default_for_type(std::string(contentType).c_str(), FALSE));
    return info ? withoutEnding(orEmpty(g_app_info_get_id(info.get()))) : std::string();
}

std::string alternative(std::string_view program)
{
    if (program.empty())
        return {};
    const GlibText found(g_find_program_in_path(std::string(program).c_str()));
    std::error_code error;
    const auto path = found ? std::filesystem::canonical(found.get(), error) : std::filesystem::path();
    return error ? std::string() : path.string();
}

const DesktopEntry *fill(const ApplicationRole &role, const DesktopEntries &entries)
{
    for (const auto contentType : split(role.contentTypes))
        if (const auto *entry = entries.byIdentifier(defaultFor(contentType)))
            return entry;
    if (const auto *entry = entries.byExecutable(alternative(role.program)))
        return entry;
    for (const auto name : split(role.knownEntries))
        if (const auto *entry = entries.byIdentifier(name))
            return entry;
    if (role.category.empty())
        return nullptr;
    const auto found = std::find_if(entries.all().begin(), entries.all().end(), [&role](const DesktopEntry &entry) {
        return entry.shown
               && std::find(entry.categories.begin(), entry.categories.end(), role.category) != entry.categories.end();
    });
    return found != entries.all().end() ? &*found : nullptr;
}

}  // namespace

struct DesktopCatalogue::Index {
    Index() : entries(readEntries())
    {
        for (const ApplicationRole &role : applicationRoles())
            if (const auto *entry = fill(role, entries)) {
                fillers.emplace(role.identifier, entry);
                roles.emplace(entry, role.identifier);  // an application keeps its first role
            }
    }

    DesktopEntries entries;
    std::map<std::string_view, const DesktopEntry *> fillers;
    std::map<const DesktopEntry *, std::string_view> roles;
};

// The system reports only the first change until the applications are listed again. So a desktop that changes a lot
// wakes us only once.
class DesktopCatalogue::Monitor {
public:
    Monitor() : source(g_app_info_monitor_get())
    {
        handler = g_signal_connect(source.get(), "changed", G_CALLBACK(&Monitor::noteChange), this);
    }
    Monitor(const Monitor &) = delete;
    Monitor &operator=(const Monitor &) = delete;
    ~Monitor() { g_signal_handler_disconnect(source.get(), handler); }

    Subscription observe(std::function<void()> callback) const
    {
        return std::make_unique<Watch>(source.get(), std::move(callback));
    }

    unsigned changes = 0;

private:
    // Called after the change was counted, because handlers are called in the order in which they were connected.
    class Watch final : public SubscriptionBase {
    public:
        using Callback = std::function<void()>;

        Watch(GAppInfoMonitor *observed, Callback callback)
            : monitor(G_APP_INFO_MONITOR(g_object_ref(observed))),
              number(g_signal_connect_data(monitor.get(), "changed", G_CALLBACK(&Watch::call),
                                           new Callback(std::move(callback)), &Watch::drop, GConnectFlags{}))
        {}
        ~Watch() override { g_signal_handler_disconnect(monitor.get(), number); }

    private:
        static void call(GAppInfoMonitor *, gpointer callback) { (*static_cast<Callback *>(callback))(); }
        static void drop(gpointer callback, GClosure *) { delete static_cast<Callback *>(callback); }

        Gobject<GAppInfoMonitor> monitor;
        gulong number;
    };

    static void noteChange(GAppInfoMonitor *, gpointer self) { ++static_cast<Monitor *>(self)->changes; }

    Gobject<GAppInfoMonitor> source;
    gulong handler = 0;
};

DesktopCatalogue::DesktopCatalogue() = default;
DesktopCatalogue::~DesktopCatalogue() = default;

DesktopCatalogue::Index &DesktopCatalogue::index()
{
    if (!monitor)
        monitor = std::make_unique<Monitor>();
    if (!read || readAt != monitor->changes) {
        readAt = monitor->changes;
        read = std::make_unique<Index>();
    }
    return *read;
}

Subscription DesktopCatalogue::observe(std::function<void()> callback)
{
    if (!monitor)
        monitor = std::make_unique<Monitor>();
    return monitor->observe(std::move(callback));
}

unsigned DesktopCatalogue::revision() const
{
    return monitor ? monitor->changes : 0;
}

ApplicationIdentity DesktopCatalogue::describe(const DesktopEntry &entry)
{
    const auto role = index().roles.find(&entry);
    return {entry.name, role != index().roles.end() ? std::string(role->second) : entry.identifier, entry.path,
            entry.iconName};
}

std::optional<ApplicationIdentity> DesktopCatalogue::match(const WindowOrigin &origin)
{
    const DesktopEntries &entries = index().entries;
    const DesktopEntry *found = entries.byIdentifier(origin.gtkApplicationId);
    // The surest rules come first, then those that are only likely to be right.
    for (const auto lookUp :
         {&DesktopEntries::byWindowClass, &DesktopEntries::byIdentifier, &DesktopEntries::byLastComponent})
        for (const std::string *name : {&origin.className, &origin.instanceName})
            if (found == nullptr)
                found = (entries.*lookUp)(*name);
    if (found == nullptr)
        found = entries.byExecutable(origin.executablePath);
    return found != nullptr ? std::optional(describe(*found)) : std::nullopt;
}

std::optional<ApplicationIdentity> DesktopCatalogue::withIdentifier(std::string_view identifier)
{
    const Index &current = index();
    const DesktopEntry *found = nullptr;
    if (const auto filler = current.fillers.find(identifier); filler != current.fillers.end())
        found = filler->second;
    else if (findApplicationRole(identifier) == nullptr)
        found = current.entries.byIdentifier(withoutEnding(std::string(identifier)));
    return found != nullptr ? std::optional(describe(*found)) : std::nullopt;
}

std::optional<ApplicationIdentity> DesktopCatalogue::atPath(std::string_view path)
{
    const DesktopEntries &entries = index().entries;
    if (const auto *entry = entries.byPath(path))
        return describe(*entry);
    std::error_code error;
    const auto resolved = std::filesystem::canonical(std::filesystem::path(path), error);
    if (error)
        return std::nullopt;
    if (const auto *entry = entries.byPath(resolved.string()))
        return describe(*entry);
    if (!resolved.string().ends_with(entryEnding))
        return std::nullopt;
    // The entry is outside of the folders of applications.
    const Gobject<GDesktopAppInfo> single(g_desktop_app_info_new_from_filename(resolved.c_str()));
    if (!single)
        return std::nullopt;
    const DesktopEntry entry = describeEntry(single.get());
    return ApplicationIdentity{entry.name, withoutEnding(resolved.filename().string()), resolved.string(),
                               entry.iconName};
}

}  // namespace korvane::platform
