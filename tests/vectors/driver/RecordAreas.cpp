// Records and colours.
#include "tests/vectors/driver/Areas.h"
#include "tests/vectors/driver/RecordJson.h"

#include "Models/Base/Identifiers.h"
#include "Models/Tasks/DockBadges.h"
#include "Models/Tasks/StripRules.h"
#include "Models/Tasks/TabColors.h"
#include "Models/Tasks/TaskGrouping.h"

namespace korvane::vectors {
namespace {

RunningAppGroup shortGroup(const Json &json)
{
    RunningAppGroup group;
    group.appName = json.at("appName");
    group.isCustom = json.at("isCustom");
    std::size_t index = 0;
    for (const Json &window : json.at("windows")) {
        RunningAppItem item;
        item.name = window.at(0);
        item.processIdentifier = window.at(1);
        item.isActive = json.at("activeWindow") == index++;
        group.windows.push_back(item);
    }
    return group;
}

Json groupProperties(const Json &arguments)
{
    const RunningAppGroup group = shortGroup(arguments);
    return {{"displayName", group.displayName()},
            {"isActive", group.isActive()},
            {"processIdentifier", group.processIdentifier()}};
}

Json entryProperties(const Json &arguments)
{
    TaskbarEntry entry;
    if (!arguments.at("item").is_null())
        entry.item = itemFrom(arguments.at("item"));
    if (!arguments.at("group").is_null())
        entry.group = shortGroup(arguments.at("group"));
    return {{"title", entry.title()}, {"isGrouped", entry.isGrouped()}};
}

Json shouldGroup(const Json &arguments)
{
    SettingsValues settings;
    settings.groupingMode = settingFrom<Choice<GroupingMode>>(arguments.at("groupingMode"));
    settings.specificGroupingPolicy = settingFrom<Choice<FilterPolicy>>(arguments.at("specificGroupingPolicy"));
    settings.specificGroupingApps = arguments.at("specificGroupingApps").get<StringList>();
    return TaskGrouping::shouldGroup(arguments.at("appName").get<std::string>(), settings);
}

Json groupColorName(const Json &arguments)
{
    RunningAppGroup group;
    group.id = arguments.at("id");
    group.isCustom = arguments.at("isCustom");
    for (const Json &id : arguments.at("windows")) {
        RunningAppItem item;
        item.id = id;
        group.windows.push_back(item);
    }
    return optionalJson(TabColors::groupColorName(arguments.at("liveTabColors").get<ColorNames>(), group));
}

Json groupStrip(const Json &arguments)
{
    const auto choice = StripRules::group(arguments.at("blueStripsEnabled"), arguments.at("anyActiveBlueStripWindow"));
    return choice ? Json{settingOf(choice->colorSetting).property, choice->opacity} : Json();
}

Json rgb(const Rgb &color)
{
    return {"rgb", color.red, color.green, color.blue};
}

// A palette colour is told by its name; its components must be those of the palette.
Json colorNamed(const std::string &text, const Rgb &color)
{
    for (const auto &each : TabColors::palette)
        if (each.text == text && each.color == color)
            return {"palette", text};
    return rgb(color);
}

Json storedTabColor(const Json &arguments)
{
    const auto text = optionalMember<std::string>(arguments, "text");
    const auto color = TabColors::storedTabColor(text);
    return color ? colorNamed(*text, *color) : Json();
}

// The bar takes the stored colour and falls back on the strip's own.
Json stripColorOnTaskbar(const Json &arguments)
{
    const std::string text = arguments.at("text");
    const bool active = arguments.at("which") == "activeWindowStripColor";
    const auto color = TabColors::storedTabColor(text);
    return colorNamed(text, color.value_or(active ? TabColors::activeStripFallback : TabColors::lastStripFallback));
}

}  // namespace

const Functions &recordFunctions()
{
    static const Functions functions{
        {"itemEquality",
         [](const Json &arguments) { return Json(itemFrom(arguments.at("a")) == itemFrom(arguments.at("b"))); }},
        {"attentionEquality",
         [](const Json &arguments) {
             return Json(attentionItemFrom(arguments.at("a")) == attentionItemFrom(arguments.at("b")));
         }},
        {"group", groupProperties},
        {"entry", entryProperties},
        {"applicationMemoryKey",
         [](const Json &arguments) {
             return Json(Identifiers::applicationMemoryKey(optionalMember<std::string>(arguments, "bundleIdentifier"),
                                                           arguments.at("processIdentifier")));
         }},
        {"shouldGroup", shouldGroup},
        {"groupColorName", groupColorName},
        {"groupStrip", groupStrip},
        {"attentionToolTip",
         [](const Json &arguments) { return Json(DockBadges::attentionToolTip(arguments.at("count"))); }},
    };
    return functions;
}

const Functions &colorFunctions()
{
    static const Functions functions{
        {"storedTabColor", storedTabColor},
        {"stripColorOnTaskbar", stripColorOnTaskbar},
        {"storedCustomColor",
         [](const Json &arguments) {
             return Json(
                 TabColors::storedCustomColor({arguments.at("red"), arguments.at("green"), arguments.at("blue")}));
         }},
        {"settingsStripColor",
         [](const Json &arguments) {
             return rgb(TabColors::settingsStripColor(arguments.at("text").get<std::string>()));
         }},
    };
    return functions;
}

}  // namespace korvane::vectors
