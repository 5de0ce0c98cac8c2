#include "Platform/X11/X11Events.h"

#include "Platform/X11/Reply.h"
#include "Ports/ObserverList.h"

#include <utility>
#include <xcb/xinput.h>

namespace korvane::platform {
namespace {

// From this version on, raw events also come while another program has grabbed the pointer.
constexpr std::uint16_t majorVersion = 2, minorVersion = 2;

}  // namespace

// The subscriptions share it, because they may outlive the X11Events object.
struct X11Events::Observers {
    explicit Observers(x11::Connection *server) : connection(server) {}

    x11::Connection *connection;  // null when the X11Events object is gone
    ObserverList<> presses;
    std::shared_ptr<ObserverList<>> motions = std::make_shared<ObserverList<>>();  // observers of the next motion
    std::uint32_t selected = 0;

    // Selects only the events that somebody waits for, so that a moving pointer does not wake the program without need.
    void select()
    {
        std::uint32_t wanted = 0;
        if (presses.count() > 0)
            wanted |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
        if (motions->count() > 0)
            wanted |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
        if (!connection || wanted == selected)
            return;
        selected = wanted;
        struct {
            xcb_input_event_mask_t head;
            std::uint32_t mask;
        } request{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, wanted};
        xcb_input_xi_select_events(*connection, connection->root(), 1, &request.head);
        xcb_flush(*connection);
    }
};

class X11Events::Observation final : public SubscriptionBase {
public:
    Observation(std::shared_ptr<Observers> list, Subscription inList)
        : observers(std::move(list)), subscription(std::move(inList))
    {}
    ~Observation() override
    {
        subscription.reset();
        observers->select();
    }

private:
    std::shared_ptr<Observers> observers;
    Subscription subscription;
};

X11Events::X11Events(x11::Connection &server) : connection(server), observers(std::make_shared<Observers>(&server))
{
    const auto *data = xcb_get_extension_data(connection, &xcb_input_id);
    if (data && data->present) {
        const x11::Reply<xcb_input_xi_query_version_reply_t> version{xcb_input_xi_query_version_reply(
            connection, xcb_input_xi_query_version(connection, majorVersion, minorVersion), nullptr)};
        if (version && version->major_version >= majorVersion)
            extension = data->major_opcode;
    }
    if (extension == 0)
        observers->connection = nullptr;
    connection.join(*this);
}

X11Events::~X11Events()
{
    connection.leave(*this);
    observers->connection = nullptr;
}

Subscription X11Events::observePresses(std::function<void()> callback)
{
    auto subscription = observers->presses.add(std::move(callback));
    observers->select();
    return std::make_unique<Observation>(observers, std::move(subscription));
}

Subscription X11Events::nextMotion(std::function<void()> callback)
{
    if (extension == 0)
        return nullptr;
    auto subscription = observers->motions->add(std::move(callback));
    observers->select();
    return std::make_unique<Observation>(observers, std::move(subscription));
}

void X11Events::handle(const xcb_generic_event_t &event)
{
    if (extension == 0 || x11::typeOf(event) != XCB_GE_GENERIC)
        return;
    const auto &generic = reinterpret_cast<const xcb_ge_generic_event_t &>(event);
    if (generic.extension != extension)
        return;
    const auto list = observers;  // an observer may destroy the X11Events object
    if (generic.event_type == XCB_INPUT_RAW_BUTTON_PRESS)
        list->presses.notify();
    else if (generic.event_type == XCB_INPUT_RAW_MOTION)
        std::exchange(list->motions, std::make_shared<ObserverList<>>())->notify();
    list->select();
}

}  // namespace korvane::platform
