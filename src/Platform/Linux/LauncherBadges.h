// The counts that programs put on their launcher's icon, as they announce them on the session bus.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace korvane::platform {

// What one announcement says; a part that it leaves out stays as it was.
struct LauncherEntryState {
    std::int64_t count = 0;
    bool countVisible = false, urgent = false;

    // The text of the badge; empty for none.
    std::string label() const;
};

class LauncherBadges {
public:
    using Labels = std::map<std::string, std::string>;  // desktop entry's id to the badge's text

    // Listens from now on; a bus that is not there gives no badges. `changed` comes from the run loop, after the labels
    // or the processes changed. No call waits for the bus.
    explicit LauncherBadges(std::function<void()> changed);
    ~LauncherBadges();
    LauncherBadges(const LauncherBadges &) = delete;
    LauncherBadges &operator=(const LauncherBadges &) = delete;

    const Labels &labels() const;
    // The process behind each label, as far as the bus has told.
    using Processes = std::map<std::string, std::int32_t>;
    const Processes &processes() const;

    // "application://org.example.Mail.desktop" names org.example.Mail.desktop; empty for anything else.
    static std::string entryID(std::string_view applicationUri);

private:
    class Listener;
    std::shared_ptr<Listener> listener;  // calls of the bus that are still under way hold it weakly
};

}  // namespace korvane::platform
