// The permission to read and move windows: asking for it, the way to the system's page, the two ways of clearing it.
#include "Models/AppModel/AppModel.h"

namespace korvane {
namespace {

constexpr const char *settingsPage = "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";
// Always this identifier, whatever the running copy is called.
constexpr const char *fixedIdentifier = "com.example.Korvane";

}  // namespace

void AppModel::setTrusted(bool value)
{
    if (trusted == value)
        return;
    trusted = value;
    publish(ModelProperty::accessibilityTrusted);
}

void AppModel::requestAccessibilityPermission()
{
    setTrusted(platform.accessibility.trustedPrompting());
}

void AppModel::openAccessibilitySettings()
{
    platform.launching.openUrl(settingsPage);
}

void AppModel::resetAccessibilityPermission()
{
    const platform::Alert question{
        "Reset Accessibility Permission?",
        "This removes Korvane’s existing macOS Accessibility permission. Korvane will quit, and permission must be "
        "approved again after restarting it. Continue?",
        {"Continue", "Cancel"}};
    if (runKorvaneModal(question) != platform::firstAlertButton)
        return;
    const auto result = platform.accessibility.resetGrant(fixedIdentifier);
    if (!result.launched || result.status != 0) {
        const std::string reason = result.launched ? "macOS did not reset the Accessibility permission." : result.error;
        runKorvaneModal({"Accessibility Reset Failed", reason, {"OK"}});
        return;
    }
    openAccessibilitySettings();
    delayed.schedule(platform::Seconds(0.35), [this] { platform.loop.terminate(); });
}

void AppModel::clearAccessibilityPermissionForUninstall()
{
    const auto bundle = platform.applications.find(platform.applications.self());
    platform.accessibility.resetGrant(bundle && bundle->bundleIdentifier ? *bundle->bundleIdentifier
                                                                         : std::string(fixedIdentifier));
    setTrusted(false);
}

}  // namespace korvane
