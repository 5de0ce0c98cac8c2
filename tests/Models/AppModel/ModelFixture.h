// A model on a simulated desktop.
#pragma once

#include "Models/AppModel/AppModel.h"
#include "Platform/Simulated/SimulatedDesktop.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace korvane::testing {

using platform::simulated::SimulatedDesktop;
using V = SettingsValues;

class ModelFixture : public ::testing::Test {
protected:
    explicit ModelFixture(platform::simulated::Behaviour behaviour = platform::simulated::Behaviour::live)
        : desktop(behaviour), platform(desktop.platform())
    {}

    // An application with windows named after it: "Mail 1", "Mail 2", ... whose hashes are pid * 100 and up.
    void addApplication(Pid pid, const std::string &name, int windowCount)
    {
        platform::simulated::Process process;
        process.application.pid = pid;
        process.application.localizedName = name;
        process.application.bundleIdentifier = "org.example." + name;
        std::vector<platform::simulated::Window> windows;
        for (int i = 0; i < windowCount; ++i)
            windows.push_back(window(hashOf(pid, i), name + " " + std::to_string(i + 1)));
        process.windows = std::move(windows);
        desktop.applications.put(std::move(process));
    }

    static platform::simulated::Window window(std::uint64_t hash, std::optional<std::string> title)
    {
        platform::simulated::Window made;
        made.hash = hash;
        made.title = std::move(title);
        return made;
    }

    static std::uint64_t hashOf(Pid pid, int index) { return static_cast<std::uint64_t>(pid * 100 + index); }
    static std::string idOf(Pid pid, int index)
    {
        return "ax:" + std::to_string(pid) + ":hash:" + std::to_string(hashOf(pid, index));
    }

    void makeModel() { model = std::make_unique<AppModel>(platform); }
    // Up to and with the first list.
    void start()
    {
        if (!model)
            makeModel();
        model->start();
        advance(0.5);
    }
    void advance(double seconds) { desktop.loop.advance(platform::Seconds(seconds)); }

    std::vector<std::string> names() const
    {
        std::vector<std::string> result;
        for (const RunningAppItem &item : model->runningApps())
            result.push_back(item.name);
        return result;
    }
    std::vector<std::string> ids() const
    {
        std::vector<std::string> result;
        for (const RunningAppItem &item : model->runningApps())
            result.push_back(item.id);
        return result;
    }
    RunningAppItem task(const std::string &id) const
    {
        for (const RunningAppItem &item : model->runningApps())
            if (item.id == id)
                return item;
        ADD_FAILURE() << "no task " << id;
        return {};
    }
    // Counts the assignments of a property from now on.
    struct Count {
        int value = 0;
        platform::Subscription observation;
    };
    std::unique_ptr<Count> countPublished(Property property)
    {
        auto count = std::make_unique<Count>();
        count->observation = model->published.add([property, counted = count.get()](Property published) {
            if (published == property)
                ++counted->value;
        });
        return count;
    }
    // The names of the actions asked of the desktop since the last call.
    std::vector<std::string> takeActions()
    {
        std::vector<std::string> result;
        for (const auto &action : desktop.actions.take())
            result.push_back(action.name);
        return result;
    }

    SimulatedDesktop desktop;
    platform::Platform platform;
    std::unique_ptr<AppModel> model;
};

using Names = std::vector<std::string>;

}  // namespace korvane::testing
