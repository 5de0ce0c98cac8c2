#include "Platform/X11/X11HotKeys.h"

#include "Platform/X11/Reply.h"

#include <algorithm>
#include <utility>
#include <xcb/xcb_keysyms.h>

namespace korvane::platform {
namespace {

constexpr xcb_keysym_t escapeSymbol = 0xff1b, numLockSymbol = 0xff7f;
constexpr std::uint16_t matteringModifiers =
    XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;

// A person needs longer than this to press a key again.
constexpr Seconds releaseInterval{0.02};

std::uint16_t modifiersOf(const HotKey &key)
{
    return static_cast<std::uint16_t>((key.modifiers & HotKey::control ? XCB_MOD_MASK_CONTROL : 0)
                                      | (key.modifiers & HotKey::shift ? XCB_MOD_MASK_SHIFT : 0));
}

struct SymbolsFreed {
    void operator()(xcb_key_symbols_t *symbols) const { xcb_key_symbols_free(symbols); }
};

struct Grab {
    HotKey key;
    std::vector<xcb_keycode_t> codes;
};

}  // namespace

// The subscriptions also refer to it, weakly, because they may outlive the backend.
struct X11HotKeys::State {
    explicit State(x11::Connection &server) : connection(server), symbols(xcb_key_symbols_alloc(server))
    {
        findNumLock();
    }

    void findNumLock()
    {
        numLock = 0;
        const x11::Reply<xcb_get_modifier_mapping_reply_t> mapping{
            xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr)};
        const x11::Reply<xcb_keycode_t> codes{xcb_key_symbols_get_keycode(symbols.get(), numLockSymbol)};
        if (!mapping || !codes)
            return;
        const auto *modifiers = xcb_get_modifier_mapping_keycodes(mapping.get());
        for (int bit = 0; bit < 8; ++bit)
            for (int i = 0; i < mapping->keycodes_per_modifier; ++i)
                for (const xcb_keycode_t *code = codes.get(); *code != XCB_NO_SYMBOL; ++code)
                    if (modifiers[bit * mapping->keycodes_per_modifier + i] == *code)
                        numLock = static_cast<std::uint16_t>(1 << bit);
    }

    // All combinations of the locks, because a grab is for exactly the modifiers that it names.
    std::vector<std::uint16_t> lockStates() const
    {
        std::vector<std::uint16_t> states{0, XCB_MOD_MASK_LOCK};
        if (numLock != 0) {
            states.push_back(numLock);
            states.push_back(static_cast<std::uint16_t>(numLock | XCB_MOD_MASK_LOCK));
        }
        return states;
    }

    void grab(Grab &one)
    {
        one.codes.clear();
        if (one.key.keyCode != HotKey::escape)
            return;
        const x11::Reply<xcb_keycode_t> codes{xcb_key_symbols_get_keycode(symbols.get(), escapeSymbol)};
        for (const xcb_keycode_t *code = codes.get(); code && *code != XCB_NO_SYMBOL; ++code)
            one.codes.push_back(*code);
        // If another program holds the key, the error comes as an event that is ignored.
        for (const xcb_keycode_t code : one.codes)
            for (const std::uint16_t locks : lockStates())
                xcb_grab_key(connection, 1, connection.root(), static_cast<std::uint16_t>(modifiersOf(one.key) | locks),
                             code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        xcb_flush(connection);
    }

    void release(const Grab &one)
    {
        for (const xcb_keycode_t code : one.codes)
            for (const std::uint16_t locks : lockStates())
                xcb_ungrab_key(connection, code, connection.root(),
                               static_cast<std::uint16_t>(modifiersOf(one.key) | locks));
        xcb_flush(connection);
    }

    x11::Connection &connection;
    std::unique_ptr<xcb_key_symbols_t, SymbolsFreed> symbols;
    std::uint16_t numLock = 0;
    std::vector<std::shared_ptr<Grab>> grabs;
    std::shared_ptr<std::function<void(std::uint32_t)>> handler;
};

class X11HotKeys::Handler final : public SubscriptionBase {
public:
    Handler(const std::shared_ptr<State> &keys, std::shared_ptr<std::function<void(std::uint32_t)>> function)
        : state(keys), mine(std::move(function))
    {}
    ~Handler() override
    {
        if (const auto keys = state.lock(); keys && keys->handler == mine)
            keys->handler.reset();
    }

private:
    std::weak_ptr<State> state;
    std::shared_ptr<std::function<void(std::uint32_t)>> mine;
};

class X11HotKeys::Key final : public SubscriptionBase {
public:
    Key(const std::shared_ptr<State> &keys, std::shared_ptr<Grab> grab) : state(keys), mine(std::move(grab)) {}
    ~Key() override
    {
        const auto keys = state.lock();
        if (!keys)
            return;
        keys->release(*mine);
        std::erase(keys->grabs, mine);
    }

private:
    std::weak_ptr<State> state;
    std::shared_ptr<Grab> mine;
};

X11HotKeys::X11HotKeys(x11::Connection &server, MainLoop &mainLoop)
    : connection(server), loop(mainLoop), state(std::make_shared<State>(server))
{
    connection.join(*this);
}

X11HotKeys::~X11HotKeys()
{
    connection.leave(*this);
}

Subscription X11HotKeys::install(std::function<void(std::uint32_t)> handler)
{
    state->handler = std::make_shared<std::function<void(std::uint32_t)>>(std::move(handler));
    return std::make_unique<Handler>(state, state->handler);
}

Subscription X11HotKeys::add(const HotKey &key)
{
    state->grabs.push_back(std::make_shared<Grab>(Grab{key, {}}));
    state->grab(*state->grabs.back());
    return std::make_unique<Key>(state, state->grabs.back());
}

void X11HotKeys::handle(const xcb_generic_event_t &event)
{
    if (x11::typeOf(event) == XCB_KEY_PRESS) {
        press(reinterpret_cast<const xcb_key_press_event_t &>(event));
    } else if (x11::typeOf(event) == XCB_MAPPING_NOTIFY) {
        // In another keyboard layout the key may be elsewhere.
        for (const auto &grab : state->grabs)
            state->release(*grab);
        xcb_refresh_keyboard_mapping(
            state->symbols.get(),
            const_cast<xcb_mapping_notify_event_t *>(reinterpret_cast<const xcb_mapping_notify_event_t *>(&event)));
        state->findNumLock();
        for (const auto &grab : state->grabs)
            state->grab(*grab);
    }
}

void X11HotKeys::press(const xcb_key_press_event_t &event)
{
    const auto modifiers = static_cast<std::uint16_t>(event.state & matteringModifiers & ~state->numLock);
    const auto pressed = std::find_if(state->grabs.begin(), state->grabs.end(), [&](const auto &grab) {
        return modifiersOf(grab->key) == modifiers
               && std::find(grab->codes.begin(), grab->codes.end(), event.detail) != grab->codes.end();
    });
    if (pressed == state->grabs.end())
        return;
    if (event.detail == held)
        return;
    held = event.detail;
    awaitRelease();
    const std::uint32_t id = (*pressed)->key.id;
    // While the key is down, the grab keeps the keyboard from others. A menu that the handler opens must be able to
    // take it.
    xcb_ungrab_keyboard(connection, XCB_CURRENT_TIME);
    connection.finish();
    if (const auto handler = state->handler)
        (*handler)(id);
}

// While a key is held down, the server repeats the press, and the release goes to the program that has the keyboard. So
// this checks the keyboard's state for as long as the key is down.
void X11HotKeys::awaitRelease()
{
    releaseCheck = loop.after(releaseInterval, [this] {
        const x11::Reply<xcb_query_keymap_reply_t> keys{
            xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr)};
        if (keys && (keys->keys[held / 8] & (1 << held % 8)))
            awaitRelease();
        else
            held = 0;
    });
}

}  // namespace korvane::platform
