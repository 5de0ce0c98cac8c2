#include "Platform/Linux/LauncherBadges.h"

#include "Platform/Linux/GlibPointers.h"

#include <string_view>
#include <utility>

namespace korvane::platform {
namespace {

constexpr const char *interfaceName = "com.canonical.Unity.LauncherEntry";
constexpr const char *busName = "org.freedesktop.DBus";
constexpr const char *busPath = "/org/freedesktop/DBus";
// A program that sends without end must not use up the memory or the time. A program announces for itself and perhaps
// for a few others. The name of an entry is a file name.
constexpr std::size_t mostSenders = 128;
constexpr std::size_t mostEntriesOfOneSender = 16;
constexpr std::size_t longestEntryName = 255;
constexpr int mostProperties = 32;
constexpr Seconds gatheringTime{0.016};

void apply(LauncherEntryState &state, GVariant *properties)
{
    GVariantIter iterator;
    const gchar *name = nullptr;
    GVariant *held = nullptr;
    g_variant_iter_init(&iterator, properties);
    for (int left = mostProperties; left > 0 && g_variant_iter_next(&iterator, "{&sv}", &name, &held); --left) {
        const GlibVariant value(held);
        const std::string_view property(name);
        if (property == "count" && g_variant_is_of_type(held, G_VARIANT_TYPE_INT64))
            state.count = g_variant_get_int64(held);
        else if (property == "count" && g_variant_is_of_type(held, G_VARIANT_TYPE_INT32))
            state.count = g_variant_get_int32(held);
        else if (property == "count-visible" && g_variant_is_of_type(held, G_VARIANT_TYPE_BOOLEAN))
            state.countVisible = g_variant_get_boolean(held) != FALSE;
        else if (property == "urgent" && g_variant_is_of_type(held, G_VARIANT_TYPE_BOOLEAN))
            state.urgent = g_variant_get_boolean(held) != FALSE;
    }
}

}  // namespace

std::string LauncherEntryState::label() const
{
    if (countVisible)
        return std::to_string(count);
    return urgent ? "!" : "";
}

LauncherBadges::LauncherBadges(MainLoop &mainLoop, MessageBus &sessionBus, std::function<void()> callback)
    : loop(mainLoop), bus(sessionBus), changed(std::move(callback))
{
    updates = bus.listen({{}, {}, interfaceName, "Update"},
                         [this](const std::string &sender, GVariant *arguments) { take(sender, arguments); });
}

LauncherBadges::~LauncherBadges() = default;

void LauncherBadges::take(const std::string &sender, GVariant *arguments)
{
    if (sender.empty() || !g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sa{sv})")))
        return;
    const gchar *uri = nullptr;
    GVariant *properties = nullptr;
    g_variant_get(arguments, "(&s@a{sv})", &uri, &properties);
    const GlibVariant owned(properties);
    std::string id = entryID(uri);
    if (id.empty())
        return;
    auto known = senders.find(sender);
    LauncherEntryState state;
    if (known != senders.end()) {
        const auto entry = known->second.entries.find(id);
        if (entry != known->second.entries.end())
            state = entry->second;
        else if (known->second.entries.size() >= mostEntriesOfOneSender)
            return;
    }
    const LauncherEntryState before = state;
    apply(state, properties);
    if (state == before)
        return;
    if (known == senders.end()) {
        if (senders.size() >= mostSenders)
            return;
        known = senders.emplace(sender, Sender()).first;
        follow(sender, known->second);
    }
    if (state == LauncherEntryState())
        known->second.entries.erase(id);
    else
        known->second.entries.insert_or_assign(std::move(id), state);
    schedule();
}

// A program may have ended before its announcement is read. Then the bus reports at once that its name has no owner.
void LauncherBadges::follow(const std::string &name, Sender &sender)
{
    sender.presence = bus.watch(name, [this, name](bool present) {
        if (present)
            return;
        senders.erase(name);
        schedule();
    });
    sender.process = bus.call({busName, busPath, busName, "GetConnectionUnixProcessID", "(u)"},
                              g_variant_new("(s)", name.c_str()), [this, name](const MessageBus::Answer &answer) {
                                  const auto known = senders.find(name);
                                  if (!answer.value || known == senders.end())
                                      return;
                                  guint32 pid = 0;
                                  g_variant_get(answer.value, "(u)", &pid);
                                  known->second.pid = static_cast<std::int32_t>(pid);
                                  schedule();
                              });
}

void LauncherBadges::schedule()
{
    if (!gathering)
        gathering = loop.after(gatheringTime, [this] {
            gathering.reset();
            rebuild();
        });
}

void LauncherBadges::rebuild()
{
    Labels labels;
    Processes processes;
    for (const auto &[name, sender] : senders)
        for (const auto &[id, state] : sender.entries)
            if (std::string label = state.label(); !label.empty()) {
                labels[id] = std::move(label);
                if (sender.pid != 0)
                    processes[id] = sender.pid;
            }
    if (labels == shownLabels && processes == shownProcesses)
        return;
    shownLabels = std::move(labels);
    shownProcesses = std::move(processes);
    changed();
}

std::string LauncherBadges::entryID(std::string_view applicationUri)
{
    constexpr std::string_view scheme = "application://";
    constexpr std::string_view suffix = ".desktop";
    if (!applicationUri.starts_with(scheme) || !applicationUri.ends_with(suffix)
        || applicationUri.size() > scheme.size() + longestEntryName)
        return {};
    return std::string(applicationUri.substr(scheme.size()));
}

}  // namespace korvane::platform
