// The counts that programs put on their launcher's icon, as they announce them on the session bus.
#pragma once

#include "Platform/Linux/MessageBus.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace korvane::platform {

// What one announcement says; a part that it leaves out stays as it was.
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

    // Listens from now on; a bus that is not there gives no badges. `changed` comes from the run loop, after the labels
    // or the processes changed, at most once a frame. No call waits for the bus.
    LauncherBadges(MainLoop &loop, MessageBus &sessionBus, std::function<void()> changed);
    ~LauncherBadges();
    LauncherBadges(const LauncherBadges &) = delete;
    LauncherBadges &operator=(const LauncherBadges &) = delete;

    // Of so many senders and so many entries of each as an honest desktop has; what goes beyond is passed over.
    const Labels &labels() const { return shownLabels; }
    // The process behind each label, as far as the bus has told.
    const Processes &processes() const { return shownProcesses; }

    // "application://org.example.Mail.desktop" names org.example.Mail.desktop; empty for anything else, and for what
    // is too long for the name of a file.
    static std::string entryID(std::string_view applicationUri);

private:
    struct Sender {
        std::map<std::string, LauncherEntryState> entries;
        std::int32_t pid = 0;  // 0 until the bus has told
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
