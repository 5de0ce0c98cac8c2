#include "Views/Tasks/TaskButtonLook.h"

#include "Models/Tasks/StripRules.h"
#include "Models/Tasks/TaskMenus.h"
#include "Views/Kit/Metrics.h"

#include <algorithm>

namespace korvane::TaskButtonLooks {
namespace {

std::optional<Strip> drawn(const std::optional<StripChoice> &choice, const SettingsValues &settings)
{
    if (!choice)
        return std::nullopt;
    const Rgb fallback =
        *choice == StripRules::activeStrip ? TabColors::activeStripFallback : TabColors::lastStripFallback;
    return Strip{TabColors::storedTabColor(settings.*choice->colorSetting).value_or(fallback), choice->opacity};
}

// A coloured button does not show the active highlight. Only its strip shows that it is active.
void fill(TaskButtonLook &look, const std::optional<std::string> &colorName, const SettingsValues &settings)
{
    look.color = TabColors::storedTabColor(colorName);
    look.fillOpacity = look.color ? std::clamp(settings.tabColorOpacity, 0.0, 1.0)
                                  : StripRules::highlightOpacity(look.isActive, settings.invertTaskbarButtonHighlight);
}

}  // namespace

TaskButtonLook ofItem(const AppModel &model, const RunningAppItem &item, bool stripAtTop)
{
    const SettingsValues &settings = model.settings();
    TaskButtonLook look;
    look.text = item.name;
    look.toolTip = item.name;
    look.closeGlyph = settings.showCloseGlyph;
    look.icon = item.icon;
    look.isActive = item.isActive;
    look.stripAtTop = stripAtTop;
    if (item.hasNotificationBadge)
        look.markStyle = settings.notificationBadgeStyle;
    fill(look, model.liveTabColorName(item.id), settings);
    look.strip =
        drawn(StripRules::task(settings.blueStripsEnabled, item.isActive, model.isPreviousWindow(item)), settings);
    return look;
}

TaskButtonLook ofGroup(const AppModel &model, const RunningAppGroup &group, bool stripAtTop)
{
    const SettingsValues &settings = model.settings();
    TaskButtonLook look;
    look.text = group.displayName();
    look.toolTip = GroupButtons::toolTip(group);
    look.icon = group.icon;
    look.glyph = group.customIconGlyph.value_or("");
    look.isActive = group.isActive();
    look.stripAtTop = stripAtTop;
    look.chevron = GroupButtons::showsChevron(group);
    look.closeGlyph = settings.showCloseGlyph;
    if (std::any_of(group.windows.begin(), group.windows.end(),
                    [](const RunningAppItem &item) { return item.hasNotificationBadge; }))
        look.markStyle = settings.notificationBadgeStyle;
    fill(look, TabColors::groupColorName(model.liveTabColors(), group), settings);
    const bool holdsActive = std::any_of(group.windows.begin(), group.windows.end(), [&](const RunningAppItem &item) {
        return model.isActiveBlueStripWindow(item);
    });
    look.strip = drawn(StripRules::group(settings.blueStripsEnabled, holdsActive), settings);
    return look;
}

TaskButtonLook ofWindowRow(const AppModel &model, const RunningAppItem &item)
{
    const SettingsValues &settings = model.settings();
    TaskButtonLook look;
    look.text = item.name;
    look.icon = item.icon;
    look.closeGlyph = settings.showCloseGlyph;
    if (item.hasNotificationBadge)
        look.markStyle = settings.notificationBadgeStyle;
    look.strip = drawn(
        StripRules::task(settings.blueStripsEnabled, model.isActiveBlueStripWindow(item), model.isPreviousWindow(item)),
        settings);
    return look;
}

}  // namespace korvane::TaskButtonLooks
