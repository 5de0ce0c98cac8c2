// A simulated desktop and a model on which random operations are played, and what must hold after each.
#pragma once

#include "Models/AppModel/AppModel.h"
#include "Platform/Simulated/SimulatedDesktop.h"
#include "tests/Random/Operation.h"

#include <memory>
#include <optional>
#include <string>

namespace korvane::testing {

class RandomDesktop {
public:
    RandomDesktop();

    void play(const Operation &operation);
    // The first promise that does not hold, in words; absent when all do.
    std::optional<std::string> brokenPromise();

private:
    void playOnDesktop(const Operation &operation);
    void playByUser(const Operation &operation);
    std::optional<RunningAppItem> task(std::uint8_t number) const;
    std::optional<RunningAppGroup> group(std::uint8_t number, bool customOnly) const;
    std::string dragID(std::uint8_t number) const;
    std::optional<platform::Pid> application(std::uint8_t number);
    std::optional<std::uint64_t> windowOf(platform::Pid pid, std::uint8_t number) const;
    void setBadges(std::uint8_t number);

    std::optional<std::string> tasksAreTheWindows();
    std::optional<std::string> entriesHoldEveryTaskOnce();
    std::optional<std::string> memoriesAreOfLiveWindows();
    std::optional<std::string> nothingIsPublishedTwice();
    std::optional<std::string> whatWasSavedLoadsTheSame();

    platform::simulated::SimulatedDesktop desktop;
    platform::Platform platform;
    std::unique_ptr<AppModel> model;
    platform::Pid nextPid = 100;
    std::uint64_t nextHash = 1;
};

}  // namespace korvane::testing
