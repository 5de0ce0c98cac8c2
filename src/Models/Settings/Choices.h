// The settings whose value is one of a few choices. Each choice has a text, which stands for it wherever settings are
// stored. The choices stand in the order in which they are offered.
#pragma once

#include "Models/Base/Assert.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace korvane {

enum class GroupingMode { asNeeded, always, never, specific };
enum class MediaSliderDisplay { never, taskbar, overflow };
enum class NewWindowsPlace { first, last };
enum class StartIcon { application, customImage, customText, circledLetter, monospaceLetter };
enum class NotificationBadgeStyle { triangle, dot, line, stripe, none };
enum class AttentionListMode { always };
// What a list of applications holds back: nothing, all applications but the listed ones, or the listed ones.
enum class FilterPolicy { allowAll, whitelist, blacklist };

template <typename Enum> struct ChoiceText {
    Enum choice;
    std::string_view text;
};

// Specialised for every choice.
template <typename Enum> inline constexpr auto choiceTexts = std::array<ChoiceText<Enum>, 0>();

template <>
inline constexpr auto choiceTexts<GroupingMode> = std::to_array<ChoiceText<GroupingMode>>({
    {GroupingMode::asNeeded, "asNeeded"},
    {GroupingMode::always, "always"},
    {GroupingMode::never, "never"},
    {GroupingMode::specific, "specific"},
});

template <>
inline constexpr auto choiceTexts<MediaSliderDisplay> = std::to_array<ChoiceText<MediaSliderDisplay>>({
    {MediaSliderDisplay::never, "Never"},
    {MediaSliderDisplay::taskbar, "Taskbar"},
    {MediaSliderDisplay::overflow, "Overflow"},
});

template <>
inline constexpr auto choiceTexts<NewWindowsPlace> = std::to_array<ChoiceText<NewWindowsPlace>>({
    {NewWindowsPlace::first, "first"},
    {NewWindowsPlace::last, "last"},
});

template <>
inline constexpr auto choiceTexts<StartIcon> = std::to_array<ChoiceText<StartIcon>>({
    {StartIcon::application, "App Icon"},
    {StartIcon::customImage, "Custom Image"},
    {StartIcon::customText, "Custom"},
    {StartIcon::circledLetter, "Ⓚ"},
    {StartIcon::monospaceLetter, "𝙠"},
});

template <>
inline constexpr auto choiceTexts<NotificationBadgeStyle> = std::to_array<ChoiceText<NotificationBadgeStyle>>({
    {NotificationBadgeStyle::triangle, "triangle"},
    {NotificationBadgeStyle::dot, "dot"},
    {NotificationBadgeStyle::line, "line"},
    {NotificationBadgeStyle::stripe, "stripe"},
    {NotificationBadgeStyle::none, "none"},
});

template <>
inline constexpr auto choiceTexts<AttentionListMode> = std::to_array<ChoiceText<AttentionListMode>>({
    {AttentionListMode::always, "Always"},
});

template <>
inline constexpr auto choiceTexts<FilterPolicy> = std::to_array<ChoiceText<FilterPolicy>>({
    {FilterPolicy::allowAll, "allowAll"},
    {FilterPolicy::whitelist, "whitelist"},
    {FilterPolicy::blacklist, "blacklist"},
});

// The value of such a setting. A stored text that is not one of the choices is kept unchanged and does not equal any
// choice.
template <typename Enum> class Choice {
public:
    Choice(Enum choice) : known(choice) {}
    explicit Choice(std::string text)
    {
        const auto &texts = choiceTexts<Enum>;
        const auto found =
            std::find_if(texts.begin(), texts.end(), [&](const auto &each) { return each.text == text; });
        if (found != texts.end())
            known = found->choice;
        else
            unknown = std::move(text);
    }

    // Absent for a text that is not one of the choices.
    std::optional<Enum> value() const { return known; }
    // A choice that the table lacks is a programming error that ends the process.
    std::string_view text() const
    {
        if (!known)
            return unknown;
        const auto &texts = choiceTexts<Enum>;
        const auto found =
            std::find_if(texts.begin(), texts.end(), [this](const auto &each) { return each.choice == *known; });
        KORVANE_ASSERT(found != texts.end(), "a choice has no text");
        return found->text;
    }

    friend bool operator==(const Choice &, const Choice &) = default;

private:
    std::optional<Enum> known;
    std::string unknown;
};

}  // namespace korvane
