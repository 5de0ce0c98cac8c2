#include "tests/Platform/X11/X11Test.h"

namespace korvane::platform {
namespace {

using testing::SampleClient;

class InstalledApplications : public X11Test {};

TEST_F(InstalledApplications, AnInstalledApplicationGivesItsNameIdentifierAndIcon)
{
    catalogue.byClass["Mail"] = {"Post", "com.apple.mail", "/applications/mail.desktop", "mail-icon"};
    iconFiles["mail-icon"] = std::make_shared<Image>(Image{1, 1, {1, 2, 3, 255}});
    openDesktop();
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    const auto application = applications().find(mail.pid());
    ASSERT_TRUE(application);
    EXPECT_EQ(application->localizedName, "Post");
    EXPECT_EQ(application->bundlePath, "/applications/mail.desktop");
    ASSERT_EQ(applications().withBundleIdentifier("com.apple.mail").size(), 1U);
    EXPECT_EQ(applications().icon(mail.pid()), iconFiles["mail-icon"]);

    catalogue.byClass["Mail"].name = "Courrier";
    catalogue.change();
    EXPECT_EQ(applications().running().front().localizedName, "Courrier");
}

TEST_F(InstalledApplications, WithoutAnInstalledApplicationTheWindowsIconServes)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    const auto inbox = mail.create(1, "Inbox");
    mail.setNumbers(1, "_NET_WM_ICON", "CARDINAL", {1, 1, 0xff0000ff});
    mail.show(1);
    ASSERT_TRUE(appears(mail.pid(), inbox));
    const ImagePtr first = applications().icon(mail.pid());
    ASSERT_TRUE(first);
    EXPECT_EQ(first->pixels, (std::vector<std::uint8_t>{0, 0, 255, 255}));
    EXPECT_EQ(applications().icon(mail.pid()), first);
    mail.setNumbers(1, "_NET_WM_ICON", "CARDINAL", {2, 1, 0xff102030, 0x80ff0000});
    ASSERT_TRUE(waitFor([&] { return applications().icon(mail.pid())->width == 2; }));
    const ImagePtr icon = applications().icon(mail.pid());
    EXPECT_EQ(icon->pixels, (std::vector<std::uint8_t>{0x10, 0x20, 0x30, 255, 128, 0, 0, 128}));
}

}  // namespace
}  // namespace korvane::platform
