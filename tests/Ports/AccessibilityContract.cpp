#include "tests/Ports/DesktopWorld.h"

namespace korvane::platform {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(AccessibilityContract);

TEST_P(AccessibilityContract, TheWindowsOfAnApplicationAreListed)
{
    EXPECT_TRUE(accessibility().trusted());
    const Pid mail = world->start("Mail", "Inbox"), editor = world->start("Editor", "Text");
    const Window draft = world->open(mail, "Draft");
    EXPECT_EQ(titles(mail), (Titles{"Inbox", "Draft"}));
    EXPECT_EQ(titles(editor), Titles{"Text"});
    world->close(mail, draft);
    EXPECT_TRUE(waitFor([&] { return titles(mail) == Titles{"Inbox"}; }));
}

TEST_P(AccessibilityContract, ADeadProcessHasAnElementWhoseAttributesFail)
{
    const Element dead = accessibility().application(4'000'000);
    ASSERT_TRUE(dead);
    Value value = std::string("untouched");
    EXPECT_NE(accessibility().copy(dead, "AXWindows", value), AxStatus::success);
    EXPECT_EQ(std::get<std::string>(value), "untouched");
}

TEST_P(AccessibilityContract, AnAttributeThatDoesNotExistFails)
{
    const Pid mail = world->start("Mail", "Inbox");
    Value value = std::string("untouched");
    const Element window = element(mail, onlyWindow(mail));
    EXPECT_NE(accessibility().copy(window, "AXUnheardOf", value), AxStatus::success);
    EXPECT_NE(accessibility().set(window, "AXUnheardOf", true), AxStatus::success);
    EXPECT_NE(accessibility().perform(window, "AXUnheardOf"), AxStatus::success);
    EXPECT_EQ(std::get<std::string>(value), "untouched");
}

TEST_P(AccessibilityContract, AWindowIsTheSameFromOneReadToTheNext)
{
    const Pid mail = world->start("Mail", "Inbox");
    world->open(mail, "Draft");
    const auto first = elements(mail), again = elements(mail);
    ASSERT_EQ(first.size(), 2U);
    ASSERT_EQ(again.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_TRUE(accessibility().equal(first[i], again[i]));
        EXPECT_EQ(accessibility().hash(first[i]), accessibility().hash(again[i]));
    }
    EXPECT_FALSE(accessibility().equal(first[0], first[1]));
    EXPECT_NE(accessibility().hash(first[0]), accessibility().hash(first[1]));
}

TEST_P(AccessibilityContract, ANewTitleChangesNeitherPlaceNorHash)
{
    const Pid mail = world->start("Mail", "Inbox");
    const Window inbox = onlyWindow(mail);
    world->open(mail, "Draft");
    world->retitle(mail, inbox, "Inbox (3)");
    ASSERT_TRUE(waitFor([&] { return titles(mail) == (Titles{"Inbox (3)", "Draft"}); }));
    EXPECT_EQ(accessibility().hash(elements(mail).front()), inbox);
}

TEST_P(AccessibilityContract, TheIdentifierIsAbsentUntilTheWindowHasOne)
{
    const Pid mail = world->start("Mail", "Inbox");
    const Window inbox = onlyWindow(mail);
    EXPECT_FALSE(read<std::string>(element(mail, inbox), "AXIdentifier"));
    world->setIdentifier(mail, inbox, "main");
    EXPECT_TRUE(waitFor([&] { return read<std::string>(element(mail, inbox), "AXIdentifier") == "main"; }));
}

TEST_P(AccessibilityContract, TheFocusIsAtOneWindowOfTheActiveApplication)
{
    const Pid mail = world->start("Mail", "Inbox");
    const Window inbox = onlyWindow(mail);
    const Window draft = world->open(mail, "Draft");
    ASSERT_TRUE(waitFor([&] { return focused(mail) == draft; }));
    world->click(mail, inbox);
    EXPECT_TRUE(waitFor([&] { return focused(mail) == inbox; }));
    const Pid editor = world->start("Editor", "Text");
    EXPECT_TRUE(waitFor([&] { return focused(editor) == onlyWindow(editor) && focused(mail) == 0; }));
}

TEST_P(AccessibilityContract, AWindowIsMinimisedAndRestored)
{
    const Pid mail = world->start("Mail", "Inbox");
    const Window inbox = onlyWindow(mail);
    EXPECT_FALSE(minimized(mail, inbox));
    EXPECT_EQ(accessibility().set(element(mail, inbox), "AXMinimized", true), AxStatus::success);
    EXPECT_TRUE(waitFor([&] { return minimized(mail, inbox); }));
    EXPECT_EQ(titles(mail), Titles{"Inbox"});
    EXPECT_EQ(accessibility().set(element(mail, inbox), "AXMinimized", false), AxStatus::success);
    EXPECT_TRUE(waitFor([&] { return !minimized(mail, inbox); }));
}

TEST_P(AccessibilityContract, RaisingBringsThatWindowForward)
{
    const Pid mail = world->start("Mail", "Inbox");
    const Window inbox = onlyWindow(mail);
    world->open(mail, "Draft");
    const Pid editor = world->start("Editor", "Text");
    ASSERT_TRUE(waitFor([&] { return active(editor); }));
    applications().unhide(mail);
    applications().activate(mail, Activate::none);
    EXPECT_EQ(accessibility().perform(element(mail, inbox), "AXRaise"), AxStatus::success);
    EXPECT_EQ(accessibility().set(accessibility().application(mail), "AXFrontmost", true), AxStatus::success);
    EXPECT_TRUE(waitFor([&] { return focused(mail) == inbox; }));
}

TEST_P(AccessibilityContract, ARestoredWindowThatIsRaisedHasTheFocus)
{
    const Pid mail = world->start("Mail", "Inbox");
    const Window inbox = onlyWindow(mail);
    world->open(mail, "Draft");
    world->minimize(mail, inbox);
    ASSERT_TRUE(waitFor([&] { return minimized(mail, inbox); }));
    accessibility().set(element(mail, inbox), "AXMinimized", false);
    accessibility().perform(element(mail, inbox), "AXRaise");
    accessibility().set(accessibility().application(mail), "AXFrontmost", true);
    applications().unhide(mail);
    applications().activate(mail, Activate::none);
    EXPECT_TRUE(waitFor([&] { return focused(mail) == inbox && !minimized(mail, inbox); }));
}

TEST_P(AccessibilityContract, TheCloseButtonClosesItsWindow)
{
    const Pid mail = world->start("Mail", "Inbox");
    const Window inbox = onlyWindow(mail), draft = world->open(mail, "Draft");
    const auto button = read<Element>(element(mail, inbox), "AXCloseButton");
    ASSERT_TRUE(button);
    EXPECT_EQ(accessibility().perform(*button, "AXPress"), AxStatus::success);
    EXPECT_TRUE(waitFor([&] { return !element(mail, inbox); }));
    EXPECT_TRUE(element(mail, draft));
}

TEST_P(AccessibilityContract, AWindowMayHaveNoCloseButton)
{
    const Pid mail = world->start("Mail", "Inbox");
    const Window inbox = onlyWindow(mail);
    world->setCloseButton(mail, inbox, false);
    EXPECT_TRUE(waitFor([&] { return !read<Element>(element(mail, inbox), "AXCloseButton"); }));
}

TEST_P(AccessibilityContract, TheElementOfAWindowThatIsGoneFails)
{
    const Pid mail = world->start("Mail", "Inbox");
    const Window draft = world->open(mail, "Draft");
    const Element gone = element(mail, draft);
    world->close(mail, draft);
    ASSERT_TRUE(waitFor([&] { return !element(mail, draft); }));
    Value value;
    EXPECT_NE(accessibility().copy(gone, "AXTitle", value), AxStatus::success);
    EXPECT_NE(accessibility().set(gone, "AXMinimized", true), AxStatus::success);
    EXPECT_NE(accessibility().perform(gone, "AXRaise"), AxStatus::success);
}

TEST_P(AccessibilityContract, TheStampChangesWithWhatItStandsFor)
{
    const Pid mail = world->start("Mail", "Inbox"), editor = world->start("Editor", "Text");
    const Window inbox = onlyWindow(mail);
    world->settle();
    auto last = accessibility().revision(mail);
    if (!last)
        GTEST_SKIP() << "this desktop tells no revisions";
    EXPECT_EQ(accessibility().revision(mail), last);
    const auto changes = [&] {
        const auto before = std::exchange(last, accessibility().revision(mail));
        return last != before;
    };
    world->retitle(mail, inbox, "Inbox (1)");
    EXPECT_TRUE(waitFor(changes)) << "a new title";
    ASSERT_TRUE(waitFor([&] { return titles(mail) == Titles{"Inbox (1)"}; }));
    world->settle();
    last = accessibility().revision(mail);
    world->minimize(mail, inbox);
    EXPECT_TRUE(waitFor(changes)) << "a minimised window";
    world->settle();
    last = accessibility().revision(mail);
    world->open(mail, "Draft");
    EXPECT_TRUE(waitFor(changes)) << "a new window";
    world->settle();
    last = accessibility().revision(mail);
    world->retitle(editor, onlyWindow(editor), "other");
    world->settle();
    EXPECT_FALSE(changes()) << "the title of another application's window";
}

}  // namespace korvane::platform
