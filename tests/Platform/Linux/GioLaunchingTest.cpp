#include "Platform/Linux/GioLaunching.h"

#include "Platform/Linux/DesktopCatalogue.h"
#include "tests/Platform/Linux/SampleApplications.h"
#include "tests/Platform/Linux/TemporaryDirectory.h"
#include "tests/Ports/LaunchingContract.h"

#include <chrono>
#include <sstream>
#include <thread>

namespace korvane::platform {
namespace {

class GioHarness final : public LaunchingHarness {
public:
    GioHarness() { std::filesystem::remove(sampleLog()); }

    Launching &launching() override { return gio; }
    std::string identifier() override { return "com.apple.Safari"; }
    int starts() override { return count("web-viewer||id="); }
    int openedAddresses() override { return count("web-viewer|https://example.org/a%20b?c=d&e|id="); }

    // The programs tell by a file, so all there is to do is to look again.
    bool waitFor(const std::function<bool()> &condition) override
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!condition() && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        return condition();
    }
    bool waitForLine(const std::string &start)
    {
        return waitFor([&] { return count(start) == 1; });
    }

    int count(const std::string &start)
    {
        int number = 0;
        std::istringstream lines(fileText(sampleLog()));
        for (std::string line; std::getline(lines, line);)
            number += line.starts_with(start) ? 1 : 0;
        return number;
    }

    DesktopCatalogue catalogue;
    std::uint32_t userTime = 0;
    GioLaunching gio{catalogue, [this] { return userTime; }};
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Gio, LaunchingContract, testing::Values([]() -> std::unique_ptr<LaunchingHarness> {
                             return std::make_unique<GioHarness>();
                         }));

TEST(GioLaunching, TheUsersTimeGoesAlongSoThatTheWindowMayTakeTheFocus)
{
    GioHarness harness;
    harness.userTime = 4711;
    harness.gio.openApplication(sampleEntry("org.example.Scribble").string(), true);
    ASSERT_TRUE(harness.waitForLine("scribble||id=korvane-"));
    EXPECT_NE(fileText(sampleLog()).find("_TIME4711\n"), std::string::npos);
}

TEST(GioLaunching, AnApplicationThatIsNotToComeForwardIsToldSo)
{
    GioHarness harness;
    harness.userTime = 4711;
    harness.gio.openApplication(sampleEntry("org.example.Scribble").string(), false);
    ASSERT_TRUE(harness.waitForLine("scribble||id=korvane-"));
    EXPECT_NE(fileText(sampleLog()).find("_TIME0\n"), std::string::npos);
}

TEST(GioLaunching, AnExecutableFileIsStartedWhateverItsName)
{
    GioHarness harness;
    const auto odd = sampleRoot() / "bin" / "50% $(touch pwned) 'x' \"y\".sh";
    std::filesystem::copy_file(sampleRoot() / "bin" / "adder", odd, std::filesystem::copy_options::overwrite_existing);
    harness.gio.openApplication(odd.string(), true);
    EXPECT_TRUE(harness.waitForLine("adder||"));
    EXPECT_FALSE(std::filesystem::exists("pwned"));
}

TEST(GioLaunching, AFileOpensWithTheApplicationForIt)
{
    GioHarness harness;
    TemporaryDirectory directory;
    const auto file = directory.path() / "notes with blank.txt";
    writeFile(file, "some plain text\n");
    EXPECT_TRUE(harness.gio.openUrl(file.string()));
    EXPECT_TRUE(harness.waitForLine("scribble|" + file.string() + "|"));
    EXPECT_TRUE(harness.gio.openUrl("file://" + directory.path().string()));
    EXPECT_TRUE(harness.waitForLine("filer|" + directory.path().string() + "|"));
    harness.gio.openApplication((directory.path() / ".").string(), true);
    EXPECT_TRUE(harness.waitFor([&] { return harness.count("filer|") == 2; }));
}

TEST(GioLaunching, AnAddressNeverReachesAShell)
{
    GioHarness harness;
    const std::string address = "https://example.org/$(touch pwned)`id`;'\"|&";
    EXPECT_TRUE(harness.gio.openUrl(address));
    EXPECT_TRUE(harness.waitForLine("web-viewer|" + address + "|"));
    EXPECT_FALSE(std::filesystem::exists("pwned"));
}

TEST(GioLaunching, TheSchemesCaseDoesNotMatter)
{
    GioHarness harness;
    EXPECT_TRUE(harness.gio.openUrl("HTTPS://example.org/"));
    EXPECT_TRUE(harness.waitForLine("web-viewer|HTTPS://example.org/|"));
}

TEST(GioLaunching, AFileThatIsNotThereOpensNothing)
{
    GioHarness harness;
    EXPECT_FALSE(harness.gio.openUrl("/nowhere/at/all.txt"));
    EXPECT_FALSE(harness.gio.openUrl("file:///nowhere/at/all.txt"));
    EXPECT_FALSE(harness.gio.openUrl(std::string("https://example.org/\0x", 22)));
}

}  // namespace korvane::platform
