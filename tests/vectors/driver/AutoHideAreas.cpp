// The decisions of hiding and showing the panels, each with what it writes.
#include "tests/vectors/driver/Areas.h"
#include "tests/vectors/driver/Comparison.h"
#include "tests/vectors/driver/RecordJson.h"

#include "Models/Bar/AutoHide.h"

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
    {
        if (const auto time = optionalMember<double>(given, "lastPointerInside"))
            lastPointerInside = platform::Seconds(*time);
    }

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

    Json json() const
    {
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

struct Panels {
    explicit Panels(const Json &list)
    {
        for (const Json &given : list) {
            owned.push_back(std::make_unique<Panel>(given));
            all.push_back(owned.back().get());
        }
    }
    Json json() const
    {
        Json list = Json::array();
        for (const auto &panel : owned)
            list.push_back(panel->json());
        return list;
    }

    std::vector<std::unique_ptr<Panel>> owned;
    std::vector<AutoHidePanel *> all;
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

Json fadeTimerAfter(const Json &existing, bool wanted, const Given &given)
{
    return optionalJson(AutoHide::fadeTimer(existing.is_null() ? std::nullopt : std::optional(existing.get<double>()),
                                            wanted, given.settings, given.paused()));
}

Json updateAutoHide(const Json &json)
{
    const Given given(json.at("settings"));
    Panels panels(json.at("panels"));
    std::vector<Rect> screens;
    for (const Json &screen : json.at("screens"))
        screens.push_back(rectFrom(screen));
    Json opacities = Json::array(), starts = Json::array();
    const auto outcome = AutoHide::update(
        panels.all,
        {.now = platform::Seconds(json.at("now").get<double>()),
         .pointer = {json.at("pointer").at(0), json.at("pointer").at(1)},
         .screens = screens,
         .geometry = {json.at("geometry").at("collapsedHeight"), json.at("geometry").at("normalHeight")},
         .settings = given.settings,
         .taskOverflowRowsVisible = given.rowsVisible,
         .listOpen = !json.at("openGroupedLists").empty()},
        {[&]() -> bool { return json.at("startMenuContainsMouse"); },
         [&](double opacity) { opacities.push_back(opacity); },
         [&](const Rect &frame) { starts.push_back(jsonOf(frame)); }});
    return {{"panels", panels.json()},
            {"setStartMenuOpacity", opacities},
            {"onStart", starts},
            {"setTaskbarHidden", outcome.allHidden},
            {"fadeTimer", fadeTimerAfter(json.at("fadeTimer"), outcome.fading, given)}};
}

Json revealForShortcut(const Json &json)
{
    Panels panels(json.at("panels"));
    const auto target = AutoHide::reveal(
        panels.all, json.at("mainScreen").is_null() ? std::nullopt : std::optional(rectFrom(json.at("mainScreen"))),
        platform::Seconds(json.at("now").get<double>()), json.at("expertAvoidRedundantPanelWrites"));
    return {{"frame", target ? jsonOf(*target) : Json()}, {"panels", panels.json()}};
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
        return compared(expected, fadeTimerAfter(given.at("existing"), true, Given(given.at("settings"))));
    return Outcome::skip("no function " + function);
}

}  // namespace korvane::vectors
