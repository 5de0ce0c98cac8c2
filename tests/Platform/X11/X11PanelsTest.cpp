#include "tests/Platform/X11/X11Test.h"

#include "Platform/X11/Atoms.h"
#include "Platform/X11/Reply.h"

#include <xcb/shape.h>
#include <xcb/xcb.h>

namespace korvane::platform {
namespace {

using testing::SampleClient;

// The windows are another client's, as those of a view toolkit are.
class PanelsOnX11 : public X11Test {
protected:
    void SetUp() override
    {
        openDesktop();
        views = xcb_connect(server.display().c_str(), nullptr);
        ASSERT_FALSE(xcb_connection_has_error(views));
        platform = X11Platform::open({server.display(), 1, views}, loop, catalogue, {});
    }
    void TearDown() override { xcb_disconnect(views); }

    xcb_window_t makeWindow()
    {
        const auto *screen = xcb_setup_roots_iterator(xcb_get_setup(views)).data;
        const auto window = xcb_generate_id(views);
        xcb_create_window(views, XCB_COPY_FROM_PARENT, window, screen->root, 0, 980, 1280, 44, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        return window;
    }
    xcb_atom_t atom(x11::Atom which)
    {
        const auto name = x11::atomName(which);
        const x11::Reply<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(
            views, xcb_intern_atom(views, 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr)};
        return reply ? reply->atom : 0U;
    }
    std::vector<std::uint32_t> numbers(xcb_window_t window, x11::Atom property)
    {
        const x11::Reply<xcb_get_property_reply_t> reply{xcb_get_property_reply(
            views, xcb_get_property(views, 0, window, atom(property), XCB_ATOM_ANY, 0, 100), nullptr)};
        if (!reply || reply->format != 32)
            return {};
        const auto *values = static_cast<const std::uint32_t *>(xcb_get_property_value(reply.get()));
        return {values, values + xcb_get_property_value_length(reply.get()) / 4};
    }
    bool has(xcb_window_t window, x11::Atom property, x11::Atom value)
    {
        const auto list = numbers(window, property);
        return std::find(list.begin(), list.end(), atom(value)) != list.end();
    }
    bool stacked(std::vector<xcb_window_t> bottomToTop)
    {
        const auto *screen = xcb_setup_roots_iterator(xcb_get_setup(views)).data;
        return waitFor([&] { return numbers(screen->root, x11::Atom::netClientListStacking) == bottomToTop; });
    }

    // What is left of the window, as x, y, width and height of its parts.
    std::vector<std::vector<int>> shape(xcb_window_t window)
    {
        const x11::Reply<xcb_shape_get_rectangles_reply_t> reply{xcb_shape_get_rectangles_reply(
            views, xcb_shape_get_rectangles(views, window, XCB_SHAPE_SK_BOUNDING), nullptr)};
        std::vector<std::vector<int>> parts;
        for (int i = 0; reply && i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i) {
            const auto &part = xcb_shape_get_rectangles_rectangles(reply.get())[i];
            parts.push_back({part.x, part.y, part.width, part.height});
        }
        return parts;
    }

    xcb_connection_t *views = nullptr;
};

TEST_F(PanelsOnX11, APanelIsADockOnAllDesktopsAboveAndLeftOutOfLists)
{
    const auto window = makeWindow();
    PanelTraits traits;
    traits.nonActivating = true;
    platform->panels().apply(window, traits);
    xcb_map_window(views, window);
    xcb_flush(views);
    using x11::Atom;
    EXPECT_TRUE(waitFor([&] { return has(window, Atom::netWmState, Atom::netWmStateAbove); }));
    EXPECT_TRUE(has(window, Atom::netWmState, Atom::netWmStateSkipTaskbar));
    EXPECT_TRUE(has(window, Atom::netWmState, Atom::netWmStateSkipPager));
    EXPECT_TRUE(has(window, Atom::netWmWindowType, Atom::netWmWindowTypeDock));
    EXPECT_EQ(numbers(window, Atom::netWmDesktop), std::vector<std::uint32_t>{0xFFFFFFFF});
    // The manager has taken it in, and it is nobody's task.
    ASSERT_TRUE(stacked({window}));
    EXPECT_TRUE(titles(applications().self()).empty());
}

TEST_F(PanelsOnX11, APanelThatTakesTheKeyboardIsNoDock)
{
    const auto window = makeWindow();
    PanelTraits traits;
    traits.canBecomeKey = true;
    traits.allSpaces = false;
    platform->panels().apply(window, traits);
    xcb_map_window(views, window);
    xcb_flush(views);
    using x11::Atom;
    ASSERT_TRUE(stacked({window}));
    EXPECT_FALSE(has(window, Atom::netWmWindowType, Atom::netWmWindowTypeDock));
    EXPECT_TRUE(has(window, Atom::netWmState, Atom::netWmStateSkipTaskbar));
}

TEST_F(PanelsOnX11, AnOrderedPanelComesToTheFrontOfItsLevel)
{
    PanelTraits traits;
    traits.nonActivating = true;
    const auto first = makeWindow(), second = makeWindow();
    for (const auto window : {first, second}) {
        platform->panels().apply(window, traits);
        xcb_map_window(views, window);
        xcb_flush(views);
    }
    SampleClient mail(server, "Mail");
    const auto inbox = mail.open(1, "Inbox");
    ASSERT_TRUE(appears(mail.pid(), inbox));
    ASSERT_TRUE(stacked({inbox, first, second}));
    platform->panels().orderFrontRegardless(first);
    EXPECT_TRUE(stacked({inbox, second, first}));
}

TEST_F(PanelsOnX11, APanelIsWhereItsShapeIs)
{
    const auto window = makeWindow();
    EXPECT_EQ(shape(window), (std::vector<std::vector<int>>{{0, 0, 1280, 44}}));
    platform->panels().setShape(window, {{0, 10, 1280, 34}, {40.5, 0, 100, 10}});
    EXPECT_EQ(shape(window), (std::vector<std::vector<int>>{{40, 0, 101, 10}, {0, 10, 1280, 34}}));
}

TEST_F(PanelsOnX11, APanelThatIgnoresTheMouseIsNowhereAndComesBackInItsShape)
{
    const auto window = makeWindow();
    platform->panels().setIgnoresMouse(window, true);
    EXPECT_TRUE(shape(window).empty());
    platform->panels().setIgnoresMouse(window, false);
    EXPECT_EQ(shape(window), (std::vector<std::vector<int>>{{0, 0, 1280, 44}}));
    platform->panels().setShape(window, {{0, 10, 1280, 34}});
    platform->panels().setIgnoresMouse(window, true);
    // What it shows may change meanwhile.
    platform->panels().setShape(window, {{0, 20, 1280, 24}});
    EXPECT_TRUE(shape(window).empty());
    platform->panels().setIgnoresMouse(window, false);
    EXPECT_EQ(shape(window), (std::vector<std::vector<int>>{{0, 20, 1280, 24}}));
}

TEST_F(PanelsOnX11, AShapeIsInPointsAndCutsNoPixelOff)
{
    platform = X11Platform::open({server.display(), 2, views}, loop, catalogue, {});
    const auto window = makeWindow();
    platform->panels().setShape(window, {{0, 5, 640, 17}, {10.25, 0, 10, 5}});
    EXPECT_EQ(shape(window), (std::vector<std::vector<int>>{{20, 0, 21, 10}, {0, 10, 1280, 34}}));
}

// A desktop of 1280 by 1024 pixels, cut into monitors.
class StripsOnX11 : public PanelsOnX11 {
protected:
    using Numbers = std::vector<std::uint32_t>;

    // The first one takes the place of the server's own.
    void cut(const std::vector<std::string> &monitors)
    {
        for (std::size_t i = 0; i < monitors.size(); ++i)
            server.run({"xrandr", "--setmonitor", (i == 0 ? "*" : "") + std::string("part") + std::to_string(i),
                        monitors[i], i == 0 ? "screen" : "none"});
        ASSERT_TRUE(waitFor([&] { return platform->screens().all().size() == monitors.size(); }));
        loop.turnFor(Seconds(0.1));
    }
    Numbers reserved(std::size_t screen)
    {
        const auto window = makeWindow();
        Rect strip = platform->screens().all().at(screen).frame;
        strip.height = 34;
        platform->panels().reserveStrip(window, strip);
        const Numbers partial = numbers(window, x11::Atom::netWmStrutPartial);
        // Managers that know the older property only read the same four.
        EXPECT_EQ(numbers(window, x11::Atom::netWmStrut),
                  Numbers(partial.begin(), partial.begin() + (partial.empty() ? 0 : 4)));
        platform->panels().reserveStrip(window, std::nullopt);
        EXPECT_TRUE(numbers(window, x11::Atom::netWmStrutPartial).empty());
        EXPECT_TRUE(numbers(window, x11::Atom::netWmStrut).empty());
        return partial;
    }
};

TEST_F(StripsOnX11, TheStripIsAsHighAsTheBarAndAsWideAsTheScreen)
{
    EXPECT_EQ(reserved(0), (Numbers{0, 0, 0, 34, 0, 0, 0, 0, 0, 0, 0, 1279}));
    platform = X11Platform::open({server.display(), 2, views}, loop, catalogue, {});
    EXPECT_EQ(reserved(0), (Numbers{0, 0, 0, 68, 0, 0, 0, 0, 0, 0, 0, 1279}));
}

TEST_F(StripsOnX11, AScreenThatEndsHigherReservesAlsoWhatNobodySeesBelowIt)
{
    cut({"800/200x1024/300+0+0", "480/100x600/200+800+0"});
    EXPECT_EQ(reserved(0), (Numbers{0, 0, 0, 34, 0, 0, 0, 0, 0, 0, 0, 799}));
    EXPECT_EQ(reserved(1), (Numbers{0, 0, 0, 458, 0, 0, 0, 0, 0, 0, 800, 1279}));
}

TEST_F(StripsOnX11, AScreenAboveAnotherReservesNothingOfIt)
{
    cut({"1280/300x500/150+0+0", "1000/300x524/150+100+500"});
    EXPECT_EQ(reserved(0), Numbers());
    EXPECT_EQ(reserved(1), (Numbers{0, 0, 0, 34, 0, 0, 0, 0, 0, 0, 100, 1099}));
}

TEST_F(PanelsOnX11, ACompositorThatComesAndGoesIsNoticed)
{
    EXPECT_FALSE(platform->panels().translucencyAvailable());
    int told = 0;
    const auto subscription = platform->panels().observeTranslucency([&] { ++told; });
    const auto compositor = server.start({"picom", "--backend", "xrender", "--config", "/dev/null"});
    ASSERT_TRUE(waitFor([&] { return platform->panels().translucencyAvailable(); }));
    EXPECT_EQ(told, 1);
    // One that starts later is asked.
    EXPECT_TRUE(
        X11Platform::open({server.display(), 1, nullptr}, loop, catalogue, {})->panels().translucencyAvailable());
    compositor->end();
    EXPECT_TRUE(waitFor([&] { return !platform->panels().translucencyAvailable(); }));
    EXPECT_EQ(told, 2);
}

}  // namespace
}  // namespace korvane::platform
