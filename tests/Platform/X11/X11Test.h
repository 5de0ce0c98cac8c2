// A test on an X server of its own, with the backend under test and programs with windows.
#pragma once

#include "Platform/X11/X11Platform.h"
#include "Ports/ObserverList.h"
#include "tests/support/GlibLoop.h"
#include "tests/support/SampleClient.h"
#include "tests/support/XServer.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace korvane::platform {

// Knows the applications that a test names by the class of their windows.
class SampleCatalogue final : public ApplicationCatalogue {
public:
    std::optional<ApplicationIdentity> match(const WindowOrigin &origin) override
    {
        const auto known = byClass.find(origin.className);
        return known == byClass.end() ? std::nullopt : std::optional(known->second);
    }
    unsigned revision() const override { return changes; }
    Subscription observe(std::function<void()> callback) override { return observers.add(std::move(callback)); }

    // Something was installed; from the run loop.
    void change()
    {
        ++changes;
        observers.notify();
    }

    std::map<std::string, ApplicationIdentity> byClass;

private:
    unsigned changes = 0;
    ObserverList<> observers;
};

class X11Test : public ::testing::Test {
protected:
    explicit X11Test(const std::string &size = "1280x1024", const std::vector<std::string> &options = {});

    // With a window manager, ready; "" for none.
    void openDesktop(const std::string &managerCommand = "openbox --sm-disable");
    void startManager(const std::string &command);
    void openPlatform();

    bool waitFor(const std::function<bool()> &condition) { return loop.turnUntil(condition); }

    Applications &applications() { return platform->applications(); }
    Accessibility &accessibility() { return platform->accessibility(); }

    std::vector<Element> windowElements(Pid pid);
    // Null when the application has no such window.
    Element elementOf(Pid pid, std::uint32_t window);
    std::vector<std::string> titles(Pid pid);
    bool minimized(Pid pid, std::uint32_t window);
    bool isActive(Pid pid);
    // The task with the focus; 0 without one.
    std::uint64_t focused(Pid pid);
    // Waits for the window to be a task.
    bool appears(Pid pid, std::uint32_t window);

    testing::XServer server;
    testing::GlibLoop loop;
    SampleCatalogue catalogue;
    std::map<std::string, ImagePtr> iconFiles;
    std::unique_ptr<X11Platform> platform;
};

std::vector<std::string> words(const std::string &text);

}  // namespace korvane::platform
