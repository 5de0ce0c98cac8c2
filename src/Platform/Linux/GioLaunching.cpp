#include "Platform/Linux/GioLaunching.h"

#include "Platform/Linux/DesktopCatalogue.h"
#include "Platform/Linux/GlibPointers.h"

#include <filesystem>
#include <unistd.h>
#include <utility>

// A launch context that gives every start a notification identifier. GIO's own context has none, because it would need
// a display.
struct KorvaneLaunchContext {
    GAppLaunchContext parent;
    guint32 userTime;
};
struct KorvaneLaunchContextClass {
    GAppLaunchContextClass parent;
};

// The type system's macro makes a function for private data that is not used here.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wpedantic"
G_DEFINE_TYPE(KorvaneLaunchContext, korvane_launch_context, G_TYPE_APP_LAUNCH_CONTEXT)
#pragma GCC diagnostic pop

static char *launchNotifyIdentifier(GAppLaunchContext *context, GAppInfo *, GList *)
{
    static unsigned number = 0;
    // Toolkits read the user's time after "_TIME". Zero means that the window should not take the focus.
    return g_strdup_printf("korvane-%ld-%u_TIME%u", static_cast<long>(getpid()), ++number,
                           reinterpret_cast<KorvaneLaunchContext *>(context)->userTime);
}

static void korvane_launch_context_class_init(KorvaneLaunchContextClass *type)
{
    type->parent.get_startup_notify_id = launchNotifyIdentifier;
}

static void korvane_launch_context_init(KorvaneLaunchContext *context)
{
    context->userTime = 0;
}

namespace korvane::platform {
namespace {

using Context = Gobject<GAppLaunchContext>;

Context makeContext(std::uint32_t userTime)
{
    auto *context = static_cast<KorvaneLaunchContext *>(g_object_new(korvane_launch_context_get_type(), nullptr));
    context->userTime = userTime;
    return Context(&context->parent);
}

// Without a known time the context has no identifier, and the application itself decides about the focus.
Context contextFor(bool activates, const GioLaunching::UserTime &userTime)
{
    if (!activates)
        return makeContext(0);
    const std::uint32_t time = userTime ? userTime() : 0;
    return time != 0 ? makeContext(time) : Context(g_app_launch_context_new());
}

bool startEntry(const std::string &path, GAppLaunchContext *context)
{
    const Gobject<GDesktopAppInfo> application(g_desktop_app_info_new_from_filename(path.c_str()));
    return application && g_app_info_launch(G_APP_INFO(application.get()), nullptr, context, nullptr);
}

bool startExecutable(const std::string &path, GAppLaunchContext *context)
{
    // The file becomes a command line, so that its start is announced like any other.
    const GlibText quoted(g_shell_quote(path.c_str()));
    std::string command = quoted.get();
    for (auto at = command.find('%'); at != std::string::npos; at = command.find('%', at + 2))
        command.insert(at, 1, '%');
    const Gobject<GAppInfo> application(
        g_app_info_create_from_commandline(command.c_str(), std::filesystem::path(path).filename().c_str(),
                                           G_APP_INFO_CREATE_SUPPORTS_STARTUP_NOTIFICATION, nullptr));
    return application && g_app_info_launch(application.get(), nullptr, context, nullptr);
}

bool openWith(GAppInfo *handler, const char *uri, GAppLaunchContext *context)
{
    GList only{const_cast<char *>(uri), nullptr, nullptr};
    return handler != nullptr && g_app_info_launch_uris(handler, &only, context, nullptr);
}

bool openFile(GFile *file, GAppLaunchContext *context)
{
    const Gobject<GAppInfo> handler(g_file_query_default_handler(file, nullptr, nullptr));
    const GlibText uri(g_file_get_uri(file));
    return openWith(handler.get(), uri.get(), context);
}

}  // namespace

GioLaunching::GioLaunching(DesktopCatalogue &installed, UserTime lastUserTime)
    : catalogue(installed), userTime(std::move(lastUserTime))
{}

std::optional<std::string> GioLaunching::applicationPath(std::string_view bundleIdentifier)
{
    const auto identity = catalogue.withIdentifier(bundleIdentifier);
    return identity ? std::optional(identity->entryPath) : std::nullopt;
}

std::optional<std::string> GioLaunching::bundleIdentifier(std::string_view applicationPath)
{
    const auto identity = catalogue.atPath(applicationPath);
    return identity ? std::optional(identity->bundleIdentifier) : std::nullopt;
}

void GioLaunching::openApplication(std::string_view applicationPath, bool activates)
{
    const std::string path(applicationPath);
    std::error_code error;
    if (!std::filesystem::path(path).is_absolute() || !std::filesystem::exists(path, error))
        return;
    const Context context = contextFor(activates, userTime);
    if (path.ends_with(".desktop")) {
        startEntry(path, context.get());
        return;
    }
    if (std::filesystem::is_regular_file(path, error) && ::access(path.c_str(), X_OK) == 0) {
        startExecutable(path, context.get());
        return;
    }
    const Gobject<GFile> file(g_file_new_for_path(path.c_str()));
    openFile(file.get(), context.get());
}

bool GioLaunching::openUrl(std::string_view url)
{
    const std::string address(url);
    if (address.find('\0') != std::string::npos)
        return false;
    const Context context = contextFor(true, userTime);
    if (address.starts_with('/')) {
        const Gobject<GFile> file(g_file_new_for_path(address.c_str()));
        return openFile(file.get(), context.get());
    }
    const GlibText scheme(g_uri_parse_scheme(address.c_str()));
    if (!scheme)
        return false;
    if (g_ascii_strcasecmp(scheme.get(), "file") == 0) {
        const Gobject<GFile> file(g_file_new_for_uri(address.c_str()));
        return openFile(file.get(), context.get());
    }
    const GlibText lowerScheme(g_ascii_strdown(scheme.get(), -1));
    const Gobject<GAppInfo> handler(g_app_info_get_default_for_uri_scheme(lowerScheme.get()));
    return openWith(handler.get(), address.c_str(), context.get());
}

}  // namespace korvane::platform
