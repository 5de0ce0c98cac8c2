#include "Platform/Linux/XdgLoginItem.h"

#include "tests/Platform/Linux/TemporaryDirectory.h"
#include "tests/Ports/LoginItemContract.h"

namespace korvane::platform {
namespace {

class AutostartHarness final : public LoginItemHarness {
public:
    LoginItem &item() override { return entry; }
    void refuse() override { writeFile(directory.path() / "autostart", "a file where a folder should be"); }

    TemporaryDirectory directory;
    std::filesystem::path file = directory.path() / "autostart" / "korvane.desktop";
    XdgLoginItem entry{file, "/opt/korvane/bin/korvane"};
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Autostart, LoginItemContract, testing::Values([]() -> std::unique_ptr<LoginItemHarness> {
                             return std::make_unique<AutostartHarness>();
                         }));

TEST(XdgLoginItem, TheEntryIsOneThatASessionStarts)
{
    AutostartHarness harness;
    ASSERT_EQ(harness.entry.enable(), std::nullopt);
    const std::string text = fileText(harness.file);
    EXPECT_TRUE(text.starts_with("[Desktop Entry]\n"));
    for (const char *line :
         {"Type=Application", "Name=Korvane", "Exec=\"/opt/korvane/bin/korvane\"", "TryExec=/opt/korvane/bin/korvane"})
        EXPECT_NE(text.find(std::string(line) + "\n"), std::string::npos) << line << " is not in\n" << text;
}

TEST(XdgLoginItem, AnEntryOfAnotherProgramIsNotOurs)
{
    AutostartHarness harness;
    writeFile(harness.file, "[Desktop Entry]\nType=Application\nName=Mine\nExec=/old/place/korvane\nX-Mine=kept\n");
    EXPECT_FALSE(harness.entry.enabled());
    EXPECT_EQ(harness.entry.enable(), std::nullopt);
    EXPECT_TRUE(harness.entry.enabled());
    const std::string text = fileText(harness.file);
    EXPECT_NE(text.find("Name=Mine"), std::string::npos);
    EXPECT_NE(text.find("X-Mine=kept"), std::string::npos);
}

TEST(XdgLoginItem, AnEntryThatTheUserSwitchedOffIsLeftAlone)
{
    for (const char *line : {"Hidden=true", "X-GNOME-Autostart-enabled=false"}) {
        AutostartHarness harness;
        writeFile(harness.file, "[Desktop Entry]\nType=Application\nName=K\nExec=/other\n" + std::string(line) + "\n");
        EXPECT_TRUE(harness.entry.enabled()) << line;
    }
    AutostartHarness harness;
    writeFile(harness.file, "[Desktop Entry]\nExec=/opt/korvane/bin/korvane\nX-GNOME-Autostart-enabled=true\n");
    EXPECT_TRUE(harness.entry.enabled());
}

TEST(XdgLoginItem, AFileThatIsNoEntryDoesNotCount)
{
    for (const char *text :
         {"", "garbage", "[Other]\nExec=/opt/korvane/bin/korvane\n", "[Desktop Entry]\nExec=\"torn\n"}) {
        AutostartHarness harness;
        writeFile(harness.file, text);
        EXPECT_FALSE(harness.entry.enabled()) << text;
    }
}

TEST(XdgLoginItem, AnyPathOfTheProgramComesBackWhole)
{
    TemporaryDirectory directory;
    for (const char *path :
         {"/with blank/korvane", "/100%/kor%uvane", "/quote\"s and $HOME `id`/k", "/back\\slash/k", "/ä/ⓚ"}) {
        const auto file = directory.path() / "entry.desktop";
        std::filesystem::remove(file);
        XdgLoginItem entry(file, path);
        ASSERT_EQ(entry.enable(), std::nullopt);
        EXPECT_TRUE(entry.enabled()) << fileText(file);
        EXPECT_FALSE(XdgLoginItem(file, std::string(path) + "x").enabled());
    }
}

TEST(XdgLoginItem, WithoutAHomeOrAProgramThereIsAReason)
{
    TemporaryDirectory directory;
    EXPECT_TRUE(XdgLoginItem("", "/opt/korvane").enable());
    EXPECT_TRUE(XdgLoginItem(directory.path() / "entry.desktop", "").enable());
}

}  // namespace korvane::platform
