// A desktop that a contract's test can act on from outside, as a person and other programs do, while it looks at the
// ports.
#pragma once

#include "Ports/Accessibility.h"
#include "Ports/Applications.h"
#include "Ports/HotKeys.h"
#include "Ports/Panels.h"
#include "Ports/Pointer.h"
#include "Ports/Screens.h"
#include "Ports/WindowList.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace korvane::platform {

// What acts on windows may take effect later: a test waits for it.
class DesktopWorld {
public:
    using Window = std::uint64_t;  // the hash of its element

    virtual ~DesktopWorld() = default;

    virtual Applications &applications() = 0;
    virtual Accessibility &accessibility() = 0;
    virtual WindowList &windowList() = 0;
    virtual Screens &screens() = 0;
    virtual Pointer &pointer() = 0;
    virtual Panels &panels() = 0;
    virtual HotKeys &hotKeys() = 0;

    // Lets the run loop turn until the condition holds; false when it does not in good time.
    virtual bool waitFor(const std::function<bool()> &condition) = 0;
    // Lets the run loop turn for a while, for what must not happen.
    virtual void settle() = 0;

    // Another program with one window, which is active then.
    virtual Pid start(const std::string &name, const std::string &title) = 0;
    virtual void quit(Pid pid) = 0;
    // On a program that was started.
    virtual Window open(Pid pid, const std::string &title) = 0;
    virtual void close(Pid pid, Window window) = 0;
    virtual void retitle(Pid pid, Window window, const std::string &title) = 0;
    // As a person does it with the mouse.
    virtual void click(Pid pid, Window window) = 0;
    virtual void minimize(Pid pid, Window window) = 0;
    virtual void setCloseButton(Pid pid, Window window, bool present) = 0;
    virtual void setIdentifier(Pid pid, Window window, const std::string &identifier) = 0;

    // On the launcher of a program that was started; empty takes it away.
    virtual void setBadge(Pid pid, const std::string &label) = 0;
    virtual void setAttention(Pid pid, Window window, bool wanted) = 0;
    virtual void setIcon(Pid pid, Window window) = 0;
    // The program says another name of itself.
    virtual void rename(Pid pid, Window window, const std::string &name) = 0;
    // What the system tells of the program becomes known, its name among it.
    virtual void install(Pid pid, const std::string &name) = 0;

    // Further screens beside the first one, in desktop coordinates; replaces those set before.
    virtual void setFurtherScreens(const std::vector<Rect> &frames) = 0;
    // Presses a key and lets it go.
    virtual void press(const HotKey &key) = 0;
    // Another program takes the key for itself.
    virtual void takeKey(const HotKey &key) = 0;
};

using MakeDesktop = std::unique_ptr<DesktopWorld> (*)();

class DesktopContract : public ::testing::TestWithParam<MakeDesktop> {
protected:
    using Window = DesktopWorld::Window;
    using Titles = std::vector<std::string>;

    Applications &applications() { return world->applications(); }
    Accessibility &accessibility() { return world->accessibility(); }
    bool waitFor(const std::function<bool()> &condition) { return world->waitFor(condition); }

    std::vector<Element> elements(Pid pid)
    {
        Value value;
        if (accessibility().copy(accessibility().application(pid), "AXWindows", value) != AxStatus::success)
            return {};
        return std::get<std::vector<Element>>(value);
    }
    Element element(Pid pid, Window window)
    {
        for (const Element &one : elements(pid))
            if (accessibility().hash(one) == window)
                return one;
        return nullptr;
    }
    template <typename T> std::optional<T> read(const Element &from, std::string_view attribute)
    {
        Value value;
        if (!from || accessibility().copy(from, attribute, value) != AxStatus::success)
            return std::nullopt;
        const T *found = std::get_if<T>(&value);
        return found ? std::optional(*found) : std::nullopt;
    }
    Titles titles(Pid pid)
    {
        Titles list;
        for (const Element &one : elements(pid))
            list.push_back(read<std::string>(one, "AXTitle").value_or(""));
        return list;
    }
    bool minimized(Pid pid, Window window) { return read<bool>(element(pid, window), "AXMinimized").value_or(false); }
    bool active(Pid pid)
    {
        const auto application = applications().find(pid);
        return application && application->active;
    }
    // 0 when none has it.
    Window focused(Pid pid)
    {
        const auto window = read<Element>(accessibility().application(pid), "AXFocusedWindow");
        return active(pid) && window ? accessibility().hash(*window) : 0;
    }
    Window onlyWindow(Pid pid)
    {
        const auto all = elements(pid);
        return all.size() == 1 ? accessibility().hash(all.front()) : 0;
    }
    bool isRunning(Pid pid)
    {
        const auto &all = applications().running();
        return std::any_of(all.begin(), all.end(), [pid](const auto &one) { return one.pid == pid; });
    }
    // The badges of the dock, by the names of their applications.
    std::map<std::string, std::string> badges()
    {
        std::map<std::string, std::string> found;
        const auto docks = applications().withBundleIdentifier("com.apple.dock");
        if (docks.empty())
            return found;
        using Elements = std::vector<Element>;
        const Element root = accessibility().application(docks.front().pid);
        for (const Element &list : read<Elements>(root, "AXChildren").value_or(Elements()))
            for (const Element &item : read<Elements>(list, "AXChildren").value_or(Elements()))
                found[read<std::string>(item, "AXTitle").value_or("")] =
                    read<std::string>(item, "AXStatusLabel").value_or("");
        return found;
    }
    // Counts the notices of every kind: one may stand for several changes.
    std::vector<Subscription> countNotices(int &count)
    {
        std::vector<Subscription> list;
        for (const auto event : {ApplicationEvent::launched, ApplicationEvent::terminated, ApplicationEvent::activated,
                                 ApplicationEvent::hidden, ApplicationEvent::unhidden})
            list.push_back(applications().observe(event, [&count] { ++count; }));
        return list;
    }

    std::unique_ptr<DesktopWorld> world = GetParam()();
};

class ApplicationsContract : public DesktopContract {};
class AccessibilityContract : public DesktopContract {};
class WindowListContract : public DesktopContract {};
class ScreensContract : public DesktopContract {};
class PointerContract : public DesktopContract {};
class HotKeysContract : public DesktopContract {};
class PanelsContract : public DesktopContract {};

}  // namespace korvane::platform
