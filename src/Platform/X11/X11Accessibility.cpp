#include "Platform/X11/X11Accessibility.h"

#include "Platform/X11/X11Applications.h"

#include <algorithm>
#include <utility>

namespace korvane::platform {
namespace {

using x11::ApplicationEntry;
using x11::WindowId;
using x11::WindowRecord;

enum class Kind { application, window, closeButton, dockList, dockItem };

struct X11Element final : ElementBase {
    Kind kind = Kind::application;
    Pid pid = 0;
    WindowId window = 0;
    std::string title, label;  // for a dock item
};

const X11Element &of(const Element &element)
{
    return static_cast<const X11Element &>(*element);
}

Element make(Kind kind, Pid pid, WindowId window = 0)
{
    auto element = std::make_shared<X11Element>();
    element->kind = kind;
    element->pid = pid;
    element->window = window;
    return element;
}

std::string fileNameOf(const std::string &path)
{
    return path.substr(path.rfind('/') + 1);
}

}  // namespace

X11Accessibility::X11Accessibility(x11::PropertyMirror &windows, x11::ApplicationTable &applications,
                                   x11::WindowActions &windowActions)
    : mirror(windows), table(applications), actions(windowActions)
{}

Accessibility::ToolResult X11Accessibility::resetGrant(std::string_view)
{
    return {false, -1, "This desktop keeps no such permission."};
}

Element X11Accessibility::application(Pid pid)
{
    return make(Kind::application, pid);
}

AxStatus X11Accessibility::copy(const Element &element, std::string_view attribute, Value &out)
{
    if (!element)
        return AxStatus::failure;
    const X11Element &one = of(element);
    if (one.kind == Kind::dockItem || one.kind == Kind::dockList || one.pid == dockPid) {
        if (attribute == "AXChildren" && one.kind != Kind::dockItem)
            out = one.kind == Kind::dockList ? dockItems() : std::vector<Element>{make(Kind::dockList, dockPid)};
        else if (attribute == "AXSubrole" && one.kind == Kind::dockItem)
            out = std::string("AXApplicationDockItem");
        else if (attribute == "AXTitle" && one.kind == Kind::dockItem)
            out = one.title;
        else if (attribute == "AXStatusLabel" && one.kind == Kind::dockItem)
            out = one.label;
        else
            return AxStatus::unsupported;
        return AxStatus::success;
    }
    // This also works while no manager runs. The mirror keeps the windows that still exist, so that no tab is lost when
    // a manager is restarted.
    if (one.kind == Kind::application)
        return copyApplication(one.pid, attribute, out);
    const WindowRecord *window = mirror.find(one.window);
    if (!window)
        return AxStatus::gone;
    return one.kind == Kind::window ? copyWindow(*window, attribute, out) : AxStatus::unsupported;
}

AxStatus X11Accessibility::copyApplication(Pid pid, std::string_view attribute, Value &out)
{
    const ApplicationEntry *entry = table.find(pid);
    if (!entry)
        return AxStatus::gone;
    if (attribute == "AXWindows") {
        std::vector<Element> windows;
        windows.reserve(entry->tasks.size());
        for (const WindowId window : entry->tasks)
            windows.push_back(make(Kind::window, pid, window));
        out = std::move(windows);
        return AxStatus::success;
    }
    if (attribute != "AXFocusedWindow")
        return AxStatus::unsupported;
    const WindowId focused = table.focusedTask();
    if (focused == 0 || table.focusedPid() != pid)
        return AxStatus::noValue;
    out = make(Kind::window, pid, focused);
    return AxStatus::success;
}

AxStatus X11Accessibility::copyWindow(const WindowRecord &window, std::string_view attribute, Value &out)
{
    if (attribute == "AXTitle") {
        out = window.title;
    } else if (attribute == "AXIdentifier") {
        if (window.role.empty())
            return AxStatus::noValue;
        out = window.role;
    } else if (attribute == "AXMinimized") {
        out = window.minimized;
    } else if (attribute == "AXCloseButton") {
        if (!window.closable)
            return AxStatus::noValue;
        out = make(Kind::closeButton, window.pid, window.id);
    } else {
        return AxStatus::unsupported;
    }
    return AxStatus::success;
}

AxStatus X11Accessibility::set(const Element &element, std::string_view attribute, bool value)
{
    if (!element)
        return AxStatus::failure;
    if (!trusted())
        return AxStatus::noPermission;
    const X11Element &one = of(element);
    if (one.kind == Kind::application && attribute == "AXFrontmost") {
        if (!table.find(one.pid))
            return AxStatus::gone;
        // An application can't be sent to the back; another application must be asked to come to the front.
        if (!value)
            return AxStatus::failure;
        actions.activate(one.pid, false);
        return AxStatus::success;
    }
    if (one.kind != Kind::window || attribute != "AXMinimized")
        return AxStatus::unsupported;
    const WindowRecord *window = mirror.find(one.window);
    if (!window)
        return AxStatus::gone;
    if (value)
        actions.minimize(one.window);
    else if (window->minimized)
        actions.restore(one.window);
    return AxStatus::success;
}

AxStatus X11Accessibility::perform(const Element &element, std::string_view action)
{
    if (!element)
        return AxStatus::failure;
    if (!trusted())
        return AxStatus::noPermission;
    const X11Element &one = of(element);
    const bool raises = one.kind == Kind::window && action == "AXRaise";
    const bool closes = one.kind == Kind::closeButton && action == "AXPress";
    if (!raises && !closes)
        return AxStatus::unsupported;
    const WindowRecord *window = mirror.find(one.window);
    if (!window)
        return AxStatus::gone;
    if (raises)
        actions.raise(one.window);
    else
        actions.close(one.window);
    return AxStatus::success;
}

bool X11Accessibility::equal(const Element &left, const Element &right)
{
    if (!left || !right)
        return left == right;
    const X11Element &one = of(left), &other = of(right);
    return one.kind == other.kind && one.pid == other.pid && one.window == other.window && one.title == other.title;
}

std::uint64_t X11Accessibility::hash(const Element &element)
{
    if (!element)
        return 0;
    const X11Element &one = of(element);
    return one.window != 0 ? one.window : static_cast<std::uint64_t>(static_cast<std::uint32_t>(one.pid));
}

std::optional<std::uint64_t> X11Accessibility::revision(Pid pid)
{
    const ApplicationEntry *entry = table.find(pid);
    return entry ? std::optional(entry->revision) : std::nullopt;
}

std::string X11Accessibility::announcedBadge(const Application &application) const
{
    if (!application.bundlePath)
        return {};
    const auto announced = launcherBadges.find(fileNameOf(*application.bundlePath));
    return announced == launcherBadges.end() ? std::string() : announced->second;
}

std::string X11Accessibility::badgeOf(const ApplicationEntry &entry) const
{
    if (std::string announced = announcedBadge(entry.snapshot); !announced.empty())
        return announced;
    const bool attention = std::any_of(entry.tasks.begin(), entry.tasks.end(), [this](WindowId id) {
        const WindowRecord *window = mirror.find(id);
        return window && (window->demandsAttention || window->urgent);
    });
    return attention ? "!" : "";
}

std::vector<Element> X11Accessibility::dockItems()
{
    std::vector<Element> items;
    for (const Application &application : table.running()) {
        const ApplicationEntry *entry = table.find(application.pid);
        std::string label;
        if (application.localizedName)
            label = entry ? badgeOf(*entry) : announcedBadge(application);
        if (label.empty())
            continue;
        auto item = std::make_shared<X11Element>();
        item->kind = Kind::dockItem;
        item->pid = application.pid;
        item->title = *application.localizedName;
        item->label = std::move(label);
        items.push_back(std::move(item));
    }
    return items;
}

}  // namespace korvane::platform
