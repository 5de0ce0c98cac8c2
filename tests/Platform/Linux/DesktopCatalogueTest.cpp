#include "Platform/Linux/DesktopCatalogue.h"

#include "tests/Platform/Linux/SampleApplications.h"
#include "tests/Platform/Linux/TemporaryDirectory.h"

#include <chrono>
#include <functional>
#include <glib.h>
#include <gtest/gtest.h>

namespace korvane::platform {
namespace {

// What a window tells; it stays silent about the rest.
struct Tells {
    std::string className = {}, instanceName = {}, executablePath = {}, gtkApplicationId = {};
    operator WindowOrigin() const { return {gtkApplicationId, instanceName, className, executablePath}; }
};

// The identifier of the application that such a window belongs to; "none" if there is none.
std::string match(const WindowOrigin &origin)
{
    static DesktopCatalogue catalogue;
    const auto identity = catalogue.match(origin);
    return identity ? identity->bundleIdentifier : "none";
}

gboolean expire(gpointer expired)
{
    *static_cast<bool *>(expired) = true;
    return G_SOURCE_REMOVE;
}

bool turnGlibUntil(const std::function<bool()> &condition)
{
    bool expired = false;
    const guint timer = g_timeout_add(10000, expire, &expired);
    while (!condition() && !expired)
        g_main_context_iteration(nullptr, TRUE);
    if (!expired)
        g_source_remove(timer);
    return condition();
}

}  // namespace

TEST(DesktopCatalogue, TheToolkitsApplicationIdentifierIsTheSurestSign)
{
    EXPECT_EQ(match(Tells{.className = "Viewer-Class", .gtkApplicationId = "org.example.OtherText"}),
              "org.example.OtherText");
}

TEST(DesktopCatalogue, AnEntryMayNameTheClassOfItsWindows)
{
    EXPECT_EQ(match(Tells{.className = "viewer-class", .instanceName = "navigator"}), "com.apple.Safari");
    EXPECT_EQ(match(Tells{.className = "Whatever", .instanceName = "Viewer-Class"}), "com.apple.Safari");
}

TEST(DesktopCatalogue, TheClassIsComparedWithTheIdentifierAndItsLastPartWithoutRegardToCase)
{
    EXPECT_EQ(match(Tells{.className = "ORG.EXAMPLE.othertext"}), "org.example.OtherText");
    EXPECT_EQ(match(Tells{.className = "Othertext"}), "org.example.OtherText");
    EXPECT_EQ(match(Tells{.className = "Unheard", .instanceName = "othertext"}), "org.example.OtherText");
}

TEST(DesktopCatalogue, TheExecutableIsTheLastResort)
{
    EXPECT_EQ(match(Tells{.className = "Unheard", .executablePath = "/usr/bin/adder"}), "com.apple.calculator");
    EXPECT_EQ(match(Tells{.executablePath = (sampleRoot() / "bin/quiet-term").string()}), "com.apple.Terminal");
}

TEST(DesktopCatalogue, OfSeveralEntriesOfOneProgramTheOneInTheMenusWins)
{
    EXPECT_EQ(match(Tells{.executablePath = "/usr/lib/sheets"}), "sheets-calc");
    EXPECT_EQ(match(Tells{.className = "sheets-startcenter"}), "sheets-startcenter");
}

TEST(DesktopCatalogue, AnInterpreterIsNotTheApplicationItRuns)
{
    EXPECT_EQ(match(Tells{.className = "Unheard", .executablePath = "/usr/bin/python3"}), "none");
    EXPECT_EQ(match(Tells{.className = "Unheard", .executablePath = "/usr/bin/python3.11"}), "none");
    EXPECT_EQ(match(Tells{.className = "snake", .executablePath = "/usr/bin/python3.11"}), "snake");
}

TEST(DesktopCatalogue, AWindowThatTellsNothingMatchesNothing)
{
    EXPECT_EQ(match(WindowOrigin()), "none");
    EXPECT_EQ(match(Tells{.className = "Unheard", .executablePath = "/usr/bin/unheard"}), "none");
    EXPECT_EQ(match(Tells{.className = "org.example.Hidden"}), "none");
    EXPECT_EQ(match(Tells{.className = std::string(100000, '.'), .executablePath = "////"}), "none");
}

TEST(DesktopCatalogue, AnIdentityCarriesWhatTheBarShows)
{
    DesktopCatalogue catalogue;
    const auto identity = catalogue.match(Tells{.className = "scribble"});
    ASSERT_TRUE(identity);
    EXPECT_EQ(identity->name, "Scribble");
    EXPECT_EQ(identity->iconName, "scribble");
    EXPECT_EQ(identity->entryPath, sampleEntry("org.example.Scribble").string());
}

TEST(DesktopCatalogue, TheUsersDefaultFillsTheRoleAndReportsIt)
{
    DesktopCatalogue catalogue;
    const auto role = [&catalogue](const char *identifier) {
        const auto identity = catalogue.withIdentifier(identifier);
        return identity ? identity->name : "none";
    };
    EXPECT_EQ(role("com.apple.finder"), "Files");
    EXPECT_EQ(role("com.apple.Safari"), "Web Viewer");
    EXPECT_EQ(role("com.apple.TextEdit"), "Scribble") << "the user's choice goes before the first that can";
    EXPECT_EQ(role("com.apple.Terminal"), "Quiet Terminal") << "the system's alternative goes before the category";
    EXPECT_EQ(role("com.apple.calculator"), "Adder") << "known by its name, since its entry claims no category";
    EXPECT_EQ(role("com.apple.mail"), "none");
    EXPECT_EQ(role("com.apple.FaceTime"), "none");
    EXPECT_EQ(role("com.apple.unheard"), "none");
}

TEST(DesktopCatalogue, AnEntryIsFoundByItsIdentifierWithOrWithoutTheEnding)
{
    DesktopCatalogue catalogue;
    ASSERT_TRUE(catalogue.withIdentifier("aaa-term"));
    EXPECT_EQ(catalogue.withIdentifier("aaa-term.desktop")->name, "Another Terminal");
    EXPECT_EQ(catalogue.withIdentifier("web-viewer")->bundleIdentifier, "com.apple.Safari");
}

TEST(DesktopCatalogue, AnEntryOutsideOfTheFoldersIsReadByItself)
{
    TemporaryDirectory directory;
    DesktopCatalogue catalogue;
    const auto file = directory.path() / "own.desktop";
    writeFile(file, "[Desktop Entry]\nType=Application\nName=Own\nExec=adder\n");
    const auto link = directory.path() / "link.desktop";
    std::filesystem::create_symlink(file, link);
    ASSERT_TRUE(catalogue.atPath(link.string()));
    EXPECT_EQ(catalogue.atPath(link.string())->bundleIdentifier, "own");
    EXPECT_EQ(catalogue.atPath(link.string())->name, "Own");
    writeFile(file, "garbage");
    EXPECT_FALSE(catalogue.atPath(file.string()));
    EXPECT_FALSE(catalogue.atPath(directory.path().string()));
}

TEST(DesktopCatalogue, AnInstallationChangesTheRevisionAndIsFound)
{
    DesktopCatalogue catalogue;
    EXPECT_FALSE(catalogue.match(Tells{.className = "newcomer"}));
    const unsigned before = catalogue.revision();
    writeFile(sampleEntry("newcomer"), "[Desktop Entry]\nType=Application\nName=Newcomer\nExec=adder\n");
    EXPECT_TRUE(turnGlibUntil([&] { return catalogue.revision() != before; }));
    ASSERT_TRUE(catalogue.match(Tells{.className = "newcomer"}));
    const unsigned second = catalogue.revision();
    std::filesystem::remove(sampleEntry("newcomer"));
    EXPECT_TRUE(turnGlibUntil([&] { return catalogue.revision() != second; }));
    EXPECT_FALSE(catalogue.match(Tells{.className = "newcomer"}));
}

TEST(DesktopCatalogue, AnotherDefaultChangesTheRevisionAndTheRole)
{
    const auto list = sampleRoot() / "config" / "mimeapps.list";
    const std::string original = fileText(list);
    DesktopCatalogue catalogue;
    EXPECT_EQ(catalogue.withIdentifier("com.apple.TextEdit")->name, "Scribble");
    const unsigned before = catalogue.revision();
    writeFile(list, "[Default Applications]\ntext/plain=org.example.OtherText.desktop\n");
    EXPECT_TRUE(turnGlibUntil([&] { return catalogue.revision() != before; }));
    EXPECT_EQ(catalogue.withIdentifier("com.apple.TextEdit")->name, "Other Text");
    const unsigned second = catalogue.revision();
    writeFile(list, original);
    EXPECT_TRUE(turnGlibUntil([&] { return catalogue.revision() != second; }));
    EXPECT_EQ(catalogue.withIdentifier("com.apple.TextEdit")->name, "Scribble");
}

}  // namespace korvane::platform
