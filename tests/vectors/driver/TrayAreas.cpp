// The small controls at the end of the bar: their rules, and the machines behind their popovers.
#include "tests/vectors/driver/Areas.h"
#include "tests/vectors/driver/Comparison.h"
#include "tests/vectors/driver/RecordJson.h"

#include "Models/Tray/Tray.h"
#include "Platform/Simulated/VirtualLoop.h"

#include <cmath>
#include <stdexcept>

namespace korvane::vectors {
namespace {

// Lets the time up to an event pass.
class Clock {
public:
    explicit Clock(platform::simulated::VirtualLoop &virtualLoop) : loop(virtualLoop) {}
    void advanceTo(const Json &milliseconds)
    {
        const double time = milliseconds.get<double>() / 1000;
        loop.advance(platform::Seconds(time - now));
        now = time;
    }

private:
    platform::simulated::VirtualLoop &loop;
    double now = 0;
};

}  // namespace

const Functions &trayFunctions()
{
    static const Functions functions{
        {"brightnessSymbol",
         [](const Json &arguments) {
             return Json(TrayRules::brightnessSymbol(static_cast<float>(arguments.at("level").get<double>())));
         }},
        {"volumeSymbol",
         [](const Json &arguments) {
             return Json(TrayRules::volumeSymbol(static_cast<float>(arguments.at("level").get<double>())));
         }},
        {"clockInterval",
         [](const Json &arguments) { return Json(TrayRules::clockInterval(arguments.at("refreshSeconds"))); }},
        {"attentionBadgeYOffset",
         [](const Json &arguments) {
             return Json(TrayRules::attentionBadgeYOffset(
                 arguments.at("compact"), settingFrom<Choice<NotificationBadgeStyle>>(arguments.at("style"))));
         }},
    };
    return functions;
}

Outcome runHoverList(const Json &testCase)
{
    platform::simulated::VirtualLoop loop;
    Clock clock(loop);
    HoverList list(loop, platform::Seconds(testCase.at("setup").at("wait").get<double>() / 1000), [](bool) {});
    Json got = Json::array();
    for (const Json &event : testCase.at("events")) {
        clock.advanceTo(event.at(0));
        const std::string name = event.at(1);
        if (name == "enter" || name == "leave")
            list.hover(name == "enter");
        else if (name == "click")
            list.click();
        else if (name == "dismissed")
            list.dismissed();
        else if (name != "look")
            throw std::runtime_error("no event " + name);
        got.push_back({{"showing", list.showing()}});
    }
    return compared(testCase.at("expected"), got);
}

Outcome runLevel(const Json &testCase)
{
    platform::simulated::VirtualLoop loop;
    Clock clock(loop);
    const Json &setup = testCase.at("setup");
    const bool isBrightness = setup.at("kind") == "brightness";
    auto system = optionalMember<float>(setup, "system");
    LevelControl control(loop, {[&] { return system; },
                                [&](float level) {
                                    if (!system)
                                        return !isBrightness;  // a volume that nobody has is set all the same
                                    system = level;
                                    return true;
                                },
                                [&]() -> double { return setup.at("rate"); }, [] {}});
    Json got = Json::array(), scrolls = Json::array();
    for (const Json &event : testCase.at("events")) {
        clock.advanceTo(event.at(0));
        const std::string name = event.at(1);
        if (name == "scroll")
            scrolls.push_back(control.scroll(event.at(2)) ? "swallowed" : "passed");
        else if (name == "click")
            control.click();
        else if (name == "system")
            system = event.at(2).get<float>();
        else if (name != "look")
            throw std::runtime_error("no event " + name);
        got.push_back({{"level", control.level()}, {"showingSlider", control.showingSlider()}, {"events", scrolls}});
    }
    // Levels are 32 bits wide in the system and 64 in the files.
    const Json &expected = testCase.at("expected");
    for (std::size_t i = 0; i < got.size() && i < expected.size(); ++i)
        if (std::abs(got[i].at("level").get<double>() - expected[i].at("level").get<double>()) < 0.00001)
            got[i]["level"] = expected[i].at("level");
    return compared(expected, got);
}

}  // namespace korvane::vectors
