// Windows as elements with attributes and actions. The answers come from the mirror.
#pragma once

#include "Platform/X11/ApplicationTable.h"
#include "Platform/X11/WindowActions.h"
#include "Ports/Accessibility.h"

#include <map>
#include <string>
#include <utility>

namespace korvane::platform {

class X11Accessibility final : public Accessibility {
public:
    // A desktop entry's id to the text of its badge.
    using Badges = std::map<std::string, std::string>;

    X11Accessibility(x11::PropertyMirror &mirror, x11::ApplicationTable &table, x11::WindowActions &actions);

    // True while a window manager is running that lists its windows. X11 has no permission that the user could give.
    bool trusted() override { return mirror.managed(); }
    bool trustedPrompting() override { return trusted(); }
    ToolResult resetGrant(std::string_view bundleIdentifier) override;
    Element application(Pid pid) override;
    AxStatus copy(const Element &element, std::string_view attribute, Value &out) override;
    AxStatus set(const Element &element, std::string_view attribute, bool value) override;
    AxStatus perform(const Element &element, std::string_view action) override;
    bool equal(const Element &left, const Element &right) override;
    std::uint64_t hash(const Element &element) override;
    std::optional<std::uint64_t> revision(Pid pid) override;

    // Sets the badges that programs have announced for their launchers. They are shown in addition to the windows that
    // ask for attention. Returns false when the badges are the same as before.
    bool setLauncherBadges(Badges badges)
    {
        std::swap(launcherBadges, badges);
        return launcherBadges != badges;
    }

private:
    AxStatus copyApplication(Pid pid, std::string_view attribute, Value &out);
    AxStatus copyWindow(const x11::WindowRecord &window, std::string_view attribute, Value &out);
    std::vector<Element> dockItems();
    std::string announcedBadge(const Application &application) const;
    std::string badgeOf(const x11::ApplicationEntry &entry) const;

    x11::PropertyMirror &mirror;
    x11::ApplicationTable &table;
    x11::WindowActions &actions;
    Badges launcherBadges;
};

}  // namespace korvane::platform
