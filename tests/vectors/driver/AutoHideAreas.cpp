// The decisions of hiding and showing the panels, each with what it writes.
#include "tests/vectors/driver/Areas.h"
#include "tests/vectors/driver/Comparison.h"
#include "tests/vectors/driver/RecordJson.h"

#include "Models/Bar/AutoHide.h"
#include "Platform/Simulated/VirtualLoop.h"

#include <cmath>
#include <memory>
#include <stdexcept>

namespace korvane::vectors {
namespace {

using platform::Rect;

Rect rectFrom(const Json &list)
{
    return {list.at(0), list.at(1), list.at(2), list.at(3)};
}

Json jsonOf(const Rect &rectangle)
{
    return {rectangle.x, rectangle.y, rectangle.width, rectangle.height};
}

// Writes down what is asked of it.
class Panel final : public AutoHidePanel {
public:
    explicit Panel(const Json &given)
        : place(rectFrom(given.at("frame"))),
          screen(given.contains("screen") && !given.at("screen").is_null() ? std::optional(rectFrom(given.at("screen")))
                                                                           : std::nullopt),
          opacity(optionalMember<double>(given, "alphaValue")), ignores(given.at("ignoresMouseEvents"))
    {}

    Rect frame() const override { return place; }
    std::optional<Rect> screenFrame() const override { return screen; }
    std::optional<double> contentOpacity() const override { return opacity; }
    bool ignoresMouseEvents() const override { return ignores; }
    void setContentOpacity(double value) override
    {
        if (opacity)
            opacity = value;
        writes.push_back({"alphaValue", value});
    }
    void setIgnoresMouseEvents(bool value) override
    {
        ignores = value;
        writes.push_back({"ignoresMouseEvents", value});
    }
    void setHeight(double height, const Rect &) override { writes.push_back({"setHeight", height}); }

    Json json(const AutoHide &machine) const
    {
        const auto lastPointerInside = machine.lastPointerInside(*this);
        return {{"frame", jsonOf(place)},
                {"screen", screen ? jsonOf(*screen) : Json()},
                {"alphaValue", optionalJson(opacity)},
                {"ignoresMouseEvents", ignores},
                {"lastPointerInside", lastPointerInside ? Json(lastPointerInside->count()) : Json()},
                {"writes", writes}};
    }

private:
    Rect place;
    std::optional<Rect> screen;
    std::optional<double> opacity;
    bool ignores;
    Json writes = Json::array();
};

// The settings of a case, and the two values among them that are the model's.
struct Given {
    explicit Given(Json named)
    {
        inactive = named.value("systemIsInactive", false);
        rowsVisible = named.value("taskOverflowRowsVisible", false);
        named.erase("systemIsInactive");
        named.erase("taskOverflowRowsVisible");
        readSettings(named, settings);
    }
    bool paused() const { return inactive && settings.expertPauseWhenDisplaySleeps; }

    SettingsValues settings;
    bool inactive = false, rowsVisible = false;
};

// The machine with the panels of a case, at its time.
struct Machine {
    Machine(const Json &given, Given &around)
        : now(given.at("now").get<double>()),
          machine(loop, around.settings,
                  {.pointer =
                       [&given] {
                           return platform::Point{given.at("pointer").at(0), given.at("pointer").at(1)};
                       },
                   .screens =
                       [&given] {
                           std::vector<Rect> screens;
                           for (const Json &screen : given.at("screens"))
                               screens.push_back(rectFrom(screen));
                           return screens;
                       },
                   .inputs =
                       [&given, &around] {
                           const Json &geometry = given.at("geometry");
                           return AutoHideInputs{{geometry.at("collapsedHeight"), geometry.at("normalHeight")},
                                                 around.rowsVisible,
                                                 !given.at("openGroupedLists").empty()};
                       },
                   .held = [] { return false; },
                   .startMenuContainsMouse = [&given]() -> bool { return given.at("startMenuContainsMouse"); },
                   .paused = [&around] { return around.paused(); }},
                  {.setTaskbarHidden = [this](bool value) { hidden = value; },
                   .setStartMenuOpacity = [this](double opacity) { opacities.push_back(opacity); },
                   .onStart = [this](const Rect &frame) { starts.push_back(jsonOf(frame)); }})
    {
        loop.advance(platform::Seconds(now));
        for (const Json &panel : given.at("panels")) {
            panels.push_back(std::make_unique<Panel>(panel));
            const auto inside = optionalMember<double>(panel, "lastPointerInside");
            machine.addPanel(*panels.back(), inside ? std::optional(platform::Seconds(*inside)) : std::nullopt);
        }
    }
    Json panelsJson() const
    {
        Json list = Json::array();
        for (const auto &panel : panels)
            list.push_back(panel->json(machine));
        return list;
    }

    double now;
    Json opacities = Json::array(), starts = Json::array();
    bool hidden = false;
    platform::simulated::VirtualLoop loop;
    std::vector<std::unique_ptr<Panel>> panels;
    AutoHide machine;
};

// The fade timer of a case runs at the interval that the rate of that time gave it.
void startFadeTimer(Machine &machine, Given &around, const Json &interval)
{
    if (interval.is_null())
        return;
    const Given present = around;
    around.settings.appRefreshRate = std::lround(1 / interval.get<double>());
    around.inactive = false;
    machine.machine.startFadeTimer();
    around = present;
}

Json updateAutoHide(const Json &json)
{
    Given around(json.at("settings"));
    Machine machine(json, around);
    startFadeTimer(machine, around, json.at("fadeTimer"));
    machine.machine.update();
    return {{"panels", machine.panelsJson()},
            {"setStartMenuOpacity", machine.opacities},
            {"onStart", machine.starts},
            {"setTaskbarHidden", machine.hidden},
            {"fadeTimer", optionalJson(machine.machine.fadeTimerInterval())}};
}

Json revealForShortcut(const Json &json)
{
    Given around(Json{{"expertAvoidRedundantPanelWrites", json.at("expertAvoidRedundantPanelWrites")}});
    Machine machine(json, around);
    const auto target = machine.machine.reveal(
        json.at("mainScreen").is_null() ? std::nullopt : std::optional(rectFrom(json.at("mainScreen"))));
    return {{"frame", target ? jsonOf(*target) : Json()}, {"panels", machine.panelsJson()}};
}

// The interval of a timer that may run already, after it was asked to start.
Json startedFadeTimer(const Json &json)
{
    return optionalJson(AutoHide::fadeTimer(optionalMember<double>(json, "existing"), true,
                                            Given(json.at("settings")).settings, Given(json.at("settings")).paused()));
}

}  // namespace

Outcome runAutoHide(const Json &testCase, const Json &)
{
    const std::string function = testCase.at("function");
    const Json &given = testCase.at("given"), &expected = testCase.at("expected");
    if (function == "updateAutoHide")
        return compared(expected, updateAutoHide(given));
    if (function == "revealForShortcut")
        return compared(expected, revealForShortcut(given));
    if (function == "visibilityInterval")
        return compared(expected, Json(AutoHide::visibilityInterval(given.at("appMonitorRefreshRate"))));
    if (function == "fadeInterval")
        return compared(expected, Json(AutoHide::fadeInterval(given.at("appRefreshRate"))));
    if (function == "configureVisibilityTimer") {
        const Given settings(given);
        return compared(expected, optionalJson(AutoHide::visibilityTimer(settings.settings, settings.paused())));
    }
    if (function == "startFadeTimer")
        return compared(expected, startedFadeTimer(given));
    return Outcome::skip("no function " + function);
}

}  // namespace korvane::vectors
