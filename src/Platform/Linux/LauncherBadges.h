// The counts that programs announce on the session bus for their launcher's icon.
#pragma once

#include "Platform/Linux/MessageBus.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace korvane::platform {

// The content of one announcement. A part that is missing stays as it was.
struct LauncherEntryState {
    std::int64_t count = 0;
    bool countVisible = false, urgent = false;

    // The text of the badge; empty for none.
    std::string label() const;
    friend bool operator==(const LauncherEntryState &, const LauncherEntryState &) = default;
};

class LauncherBadges {
public:
    using Labels = std::map<std::string, std::string>;  // desktop entry's id to the badge's text
    using Processes = std::map<std::string, std::int32_t>;

    // Starts to listen. Without a bus there are no badges. `changed` is called from the run loop after the labels or
    // the processes changed, at most once a frame. No call waits for the bus.
    LauncherBadges(MainLoop &loop, MessageBus &sessionBus, std::function<void()> changed);
    ~LauncherBadges();
    LauncherBadges(const LauncherBadges &) = delete;
    LauncherBadges &operator=(const LauncherBadges &) = delete;

    // The number of senders and the number of entries for each are limited to what an honest desktop has. Any further
    // ones are ignored.
    const Labels &labels() const { return shownLabels; }
    // The process behind each label, if the bus has already reported it.
    const Processes &processes() const { return shownProcesses; }

    // "application://org.example.Mail.desktop" names org.example.Mail.desktop. Empty for any other text, and for a name
    // that is too long for a file.
    static std::string entryID(std::string_view applicationUri);

private:
    struct Sender {
        std::map<std::string, LauncherEntryState> entries;
        std::int32_t pid = 0;  // 0 until the bus has reported it
        Subscription presence, process;
    };

    void take(const std::string &sender, GVariant *arguments);
    void follow(const std::string &name, Sender &sender);
    void schedule();
    void rebuild();

    MainLoop &loop;
    MessageBus &bus;
    std::function<void()> changed;
    std::map<std::string, Sender> senders;
    Labels shownLabels;
    Processes shownProcesses;
    Subscription updates, gathering;
};

}  // namespace korvane::platform
