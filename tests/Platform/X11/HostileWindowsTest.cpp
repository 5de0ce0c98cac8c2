// Windows that break the rules, by mistake or on purpose.
#include "tests/Platform/X11/X11Test.h"

#include "Platform/X11/PropertyText.h"
#include "Platform/X11/Reply.h"

#include <csignal>
#include <random>
#include <xcb/xcb.h>

namespace korvane::platform {
namespace {

using Names = std::vector<std::string>;
using testing::SampleClient;

class HostileWindows : public X11Test {
protected:
    void SetUp() override { openDesktop(); }
};

TEST_F(HostileWindows, ATitleOfAHundredThousandCharactersIsCut)
{
    SampleClient mail(server, "Mail");
    const auto inbox = mail.create(1, "");
    std::string title;
    for (int i = 0; i < 100'000; ++i)
        title += "\u00e9";
    mail.setBytes(1, "_NET_WM_NAME", "UTF8_STRING", title);
    mail.show(1);
    ASSERT_TRUE(appears(mail.pid(), inbox));
    ASSERT_EQ(titles(mail.pid()).size(), 1U);
    EXPECT_EQ(titles(mail.pid()).front(), title.substr(0, x11::longestText * 2));
}

TEST_F(HostileWindows, BytesThatAreNoTextAreReplaced)
{
    SampleClient mail(server, "Mail");
    const auto inbox = mail.create(1, "");
    mail.setBytes(1, "_NET_WM_NAME", "UTF8_STRING", std::string("a\xff\xc3(\xed\xa0\x80\n\0z", 10));
    mail.show(1);
    ASSERT_TRUE(appears(mail.pid(), inbox));
    EXPECT_EQ(titles(mail.pid()), Names{"a\ufffd\ufffd(\ufffd  z"});
}

TEST_F(HostileWindows, PropertiesOfWrongTypesAndFormatsCountAsAbsent)
{
    SampleClient mail(server, "Mail");
    const auto inbox = mail.create(1, "Inbox");
    mail.setNumbers(1, "_NET_WM_NAME", "CARDINAL", {1, 2, 3});
    mail.setBytes(1, "_NET_WM_STATE", "STRING", "not atoms");
    mail.setBytes(1, "_NET_WM_WINDOW_TYPE", "ATOM", "abc");
    mail.setNumbers(1, "_NET_WM_ICON", "CARDINAL", {0xffffffff, 0xffffffff, 1});
    mail.setNumbers(1, "WM_CLASS", "CARDINAL", {7});
    mail.setNumbers(1, "WM_WINDOW_ROLE", "WINDOW", {7});
    mail.setBytes(1, "_GTK_APPLICATION_ID", "UTF8_STRING", "");
    mail.setBytes(1, "WM_HINTS", "WM_HINTS", "x");
    mail.setBytes(1, "_NET_WM_PID", "CARDINAL", "99");
    mail.show(1);
    ASSERT_TRUE(appears(mail.pid(), inbox));
    // The older title stands in, and the process's name for the missing class.
    EXPECT_EQ(titles(mail.pid()), Names{"Inbox"});
    EXPECT_EQ(applications().find(mail.pid())->localizedName, "korvane_sample_");
    EXPECT_FALSE(minimized(mail.pid(), inbox));
    Value value;
    EXPECT_EQ(accessibility().copy(elementOf(mail.pid(), inbox), "AXIdentifier", value), AxStatus::noValue);
    EXPECT_TRUE(!applications().icon(mail.pid()) || applications().icon(mail.pid())->width <= 64);
}

TEST_F(HostileWindows, TheOlderTitleComesBackWhenTheNewerIsTakenAway)
{
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "new")));
    mail.setBytes(1, "WM_NAME", "STRING", "caf\xe9");
    mail.remove(1, "_NET_WM_NAME");
    EXPECT_TRUE(waitFor([&] { return titles(mail.pid()) == Names{"caf\u00e9"}; }));
}

TEST_F(HostileWindows, WindowsThatAreTransientForThemselvesOrEachOtherAreStillThere)
{
    SampleClient mail(server, "Mail");
    const auto first = mail.open(1, "first"), second = mail.open(2, "second");
    ASSERT_TRUE(appears(mail.pid(), first));
    ASSERT_TRUE(appears(mail.pid(), second));
    mail.setNumbers(1, "WM_TRANSIENT_FOR", "WINDOW", {second});
    mail.setNumbers(2, "WM_TRANSIENT_FOR", "WINDOW", {first});
    const auto third = mail.create(3, "third");
    mail.setNumbers(3, "WM_TRANSIENT_FOR", "WINDOW", {third});
    mail.setAtoms(3, "_NET_WM_STATE", {"_NET_WM_STATE_MODAL"});
    mail.show(3);
    EXPECT_TRUE(appears(mail.pid(), third));
    EXPECT_TRUE(elementOf(mail.pid(), first));
    EXPECT_TRUE(elementOf(mail.pid(), second));
}

TEST_F(HostileWindows, RandomPropertiesLeaveTheOtherWindowsAlone)
{
    SampleClient wild(server, "Wild"), mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    std::mt19937 random(1);
    const Names properties{"_NET_WM_NAME",     "WM_NAME",      "WM_WINDOW_ROLE", "WM_CLASS",
                           "WM_TRANSIENT_FOR", "WM_PROTOCOLS", "_NET_WM_ICON",   "_GTK_APPLICATION_ID",
                           "WM_HINTS",         "_NET_WM_PID",  "_NET_WM_STATE",  "_NET_WM_WINDOW_TYPE"};
    const Names types{"UTF8_STRING", "STRING", "COMPOUND_TEXT", "ATOM", "WINDOW", "CARDINAL"};
    for (int window = 0; window < 40; ++window) {
        wild.create(window, "wild");
        for (int i = 0; i < 6; ++i) {
            const auto &property = properties[random() % properties.size()];
            const auto &type = types[random() % types.size()];
            std::string bytes;
            for (auto left = random() % 64; left > 0; --left)
                bytes += static_cast<char>(random());
            if (random() % 2 == 0)
                wild.setBytes(window, property, type, bytes);
            else
                wild.setNumbers(window, property, type,
                                std::vector<std::uint32_t>(random() % 16, static_cast<std::uint32_t>(random())));
        }
        wild.show(window);
        if (window % 2 == 0)
            wild.destroy(window);
    }
    mail.retitle(1, "still here");
    EXPECT_TRUE(waitFor([&] { return titles(mail.pid()) == Names{"still here"}; }));
    for (const Application &application : applications().running())
        applications().icon(application.pid);
}

// The windows that report to us what everything rests on, named among those of other programs.
class ForgedWindows : public HostileWindows {
protected:
    void SetUp() override
    {
        HostileWindows::SetUp();
        mail = std::make_unique<SampleClient>(server, "Mail");
        inbox = mail->open(1, "Inbox");
        ASSERT_TRUE(appears(mail->pid(), inbox));
        other.reset(xcb_connect(server.display().c_str(), nullptr));
        root = xcb_setup_roots_iterator(xcb_get_setup(other.get())).data->root;
        helper = helperWindow();
        ASSERT_NE(helper, XCB_NONE);
    }
    // Of one pixel, and outside of the screen.
    xcb_window_t helperWindow()
    {
        const x11::Reply<xcb_query_tree_reply_t> tree{
            xcb_query_tree_reply(other.get(), xcb_query_tree(other.get(), root), nullptr)};
        for (int i = 0; tree && i < xcb_query_tree_children_length(tree.get()); ++i) {
            const xcb_window_t window = xcb_query_tree_children(tree.get())[i];
            const x11::Reply<xcb_get_geometry_reply_t> place{
                xcb_get_geometry_reply(other.get(), xcb_get_geometry(other.get(), window), nullptr)};
            if (place && place->x == -10 && place->y == -10 && place->width == 1)
                return window;
        }
        return XCB_NONE;
    }
    void forge(const std::string &property, const std::vector<std::uint32_t> &windows)
    {
        const x11::Reply<xcb_intern_atom_reply_t> atom{xcb_intern_atom_reply(
            other.get(), xcb_intern_atom(other.get(), 0, static_cast<std::uint16_t>(property.size()), property.c_str()),
            nullptr)};
        xcb_change_property(other.get(), XCB_PROP_MODE_REPLACE, root, atom->atom, XCB_ATOM_WINDOW, 32,
                            static_cast<std::uint32_t>(windows.size()), windows.data());
        xcb_flush(other.get());
        loop.turnFor(Seconds(0.1));
    }

    // A manager that has just started gives the focus to whom it likes, also after it was asked.
    bool comesForward(Pid pid)
    {
        for (int click = 0; click < 5 && !isActive(pid); ++click) {
            applications().activate(pid, Activate::none);
            loop.turnUntil([&] { return isActive(pid); }, Seconds(0.5));
        }
        return isActive(pid);
    }

    struct Disconnect {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };
    std::unique_ptr<xcb_connection_t, Disconnect> other;
    xcb_window_t root = XCB_NONE, helper = XCB_NONE;
    std::unique_ptr<SampleClient> mail;
    std::uint32_t inbox = 0;
};

class ForgedRootProperties : public ForgedWindows, public ::testing::WithParamInterface<const char *> {};

INSTANTIATE_TEST_SUITE_P(Properties, ForgedRootProperties,
                         ::testing::Values("_NET_CLIENT_LIST", "_NET_CLIENT_LIST_STACKING", "_NET_ACTIVE_WINDOW",
                                           "_NET_SUPPORTING_WM_CHECK"));

TEST_P(ForgedRootProperties, LeaveTheBarItsEarsAndItsHands)
{
    for (const xcb_window_t first : {root, helper}) {
        forge(GetParam(), {first, helper, root, inbox});
        forge(GetParam(), {inbox});
    }
    // A manager started anew says the truth again.
    startManager("openbox --sm-disable");
    SampleClient editor(server, "Editor");
    const auto text = editor.open(1, "Text");
    ASSERT_TRUE(appears(editor.pid(), text));
    ASSERT_TRUE(appears(editor.pid(), editor.open(2, "Letter")));
    for (const Pid pid : {editor.pid(), mail->pid()})
        EXPECT_TRUE(comesForward(pid));
}

TEST_F(ForgedWindows, AListThatNamesThemIsReadAndWhatComesLaterToo)
{
    forge("_NET_CLIENT_LIST", {root, helper, inbox});
    // The manager writes its own list again.
    SampleClient editor(server, "Editor");
    ASSERT_TRUE(appears(editor.pid(), editor.open(1, "Text")));
    ASSERT_TRUE(appears(editor.pid(), editor.open(2, "Letter")));
    EXPECT_TRUE(applications().activate(mail->pid(), Activate::none));
    EXPECT_TRUE(waitFor([&] { return isActive(mail->pid()); }));
}

TEST_F(ForgedWindows, WithoutItsHelperWindowAClickStillActivates)
{
    SampleClient editor(server, "Editor");
    ASSERT_TRUE(appears(editor.pid(), editor.open(1, "Text")));
    ASSERT_TRUE(waitFor([&] { return isActive(editor.pid()); }));
    xcb_destroy_window(other.get(), helper);
    xcb_flush(other.get());
    EXPECT_TRUE(applications().activate(mail->pid(), Activate::none));
    EXPECT_TRUE(loop.turnUntil([&] { return isActive(mail->pid()); }, Seconds(2)));
}

TEST_F(HostileWindows, AProgramThatIsKilledTakesItsWindowsWithIt)
{
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    const Pid pid = mail.pid();
    mail.signal(SIGKILL);
    EXPECT_TRUE(waitFor([&] { return !applications().find(pid); }));
}

// Without the server's knowledge of processes.
class WindowsWithoutProcess : public X11Test {
protected:
    WindowsWithoutProcess() : X11Test("1280x1024", {"-extension", "X-Resource"}) {}
};

TEST_F(WindowsWithoutProcess, TheWindowsOwnWordCountsElseTheClient)
{
    openDesktop();
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    for (int window = 1; window <= 2; ++window) {
        editor.create(window, "Text " + std::to_string(window));
        editor.remove(window, "_NET_WM_PID");
        editor.show(window);
    }
    ASSERT_TRUE(waitFor([&] {
        const auto &all = applications().running();
        return std::any_of(all.begin(), all.end(),
                           [&](const auto &one) { return one.pid < -2 && titles(one.pid).size() == 2; });
    }));
    EXPECT_FALSE(applications().find(editor.pid()));
    editor.create(3, "elsewhere");
    editor.setBytes(3, "WM_CLIENT_MACHINE", "STRING", "another.example.org");
    editor.show(3);
    EXPECT_TRUE(waitFor([&] {
        const auto &all = applications().running();
        return std::any_of(all.begin(), all.end(),
                           [&](const auto &one) { return one.pid < -2 && titles(one.pid).size() == 3; });
    }));
}

}  // namespace
}  // namespace korvane::platform
